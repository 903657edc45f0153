#pragma once

#include <QObject>

// Ends the program once a map window's drawing surface has been painted for the first
// time, so that start-up to a painted map can be timed from outside.
class QuitAfterFirstPaint : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool m_quitting = false;
};
