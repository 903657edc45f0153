#pragma once

#include <QObject>

class QWidget;

// Keeps every window of the program on its screen's free area, whatever the scale factor:
// installed on the application, it fits each frame, dialog and floating panel as it shows
// (ScreenFit), so no dialog needs to know the size of the screen it opens on.
class ScreenFitter : public QObject
{
    Q_OBJECT
public:
    explicit ScreenFitter(QObject* parent = nullptr);
    // Fits one window now, to the screen under its centre.
    static void Fit(QWidget& Window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
