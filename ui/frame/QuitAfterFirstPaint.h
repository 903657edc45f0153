#pragma once

#include <QObject>

// Ends the program once a map window's drawing surface has been painted for the first
// time, so that start-up to a painted map can be timed from outside. A paint before the
// event loop runs cannot quit it: main() asks Painted() first.
class QuitAfterFirstPaint : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    bool Painted() const { return m_quitting; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool m_quitting = false;
};
