#include "ui/frame/ScreenFitter.h"

#include "core/forms/ScreenFit.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QStyle>
#include <QWidget>

namespace {

bool IsFittedKind(const QWidget& Widget)
{
    if (!Widget.isWindow() || Widget.isMaximized() || Widget.isFullScreen())
        return false;
    // Menus, lists of combo boxes and tooltips place themselves.
    switch (Widget.windowType()) {
    case Qt::Window:
    case Qt::Dialog:
    case Qt::Sheet:
    case Qt::Tool:
    case Qt::SplashScreen:
        return true;
    default:
        return false;
    }
}

// The window manager's frame: known once the window has been shown, estimated before.
QMargins Decoration(const QWidget& Window)
{
    const QRect inner = Window.geometry();
    const QRect outer = Window.frameGeometry();
    const QMargins known(inner.left() - outer.left(), inner.top() - outer.top(),
                         outer.right() - inner.right(), outer.bottom() - inner.bottom());
    if (!known.isNull() || Window.windowFlags().testFlag(Qt::FramelessWindowHint) ||
        Window.windowType() == Qt::SplashScreen)
        return known;
    const int border = Window.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &Window);
    const int title = Window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &Window);
    return QMargins(border, title + border, border, border);
}

} // namespace

ScreenFitter::ScreenFitter(QObject* parent) : QObject(parent) {}

void ScreenFitter::Fit(QWidget& Window)
{
    QScreen* screen = QGuiApplication::screenAt(Window.geometry().center());
    if (screen == nullptr)
        screen = Window.screen();
    if (screen == nullptr)
        return;
    const QSize minimum = Window.minimumSize().expandedTo(Window.minimumSizeHint());
    const QRect placed = ScreenFit::Place(screen->availableGeometry(), Window.geometry(),
                                          Decoration(Window), minimum);
    if (placed == Window.geometry())
        return;
    // A dialog nobody has placed yet is put over its parent as it shows; only its size is
    // fitted here, or it would stay wherever it was made, at the top-left corner.
    const bool unplaced = !Window.testAttribute(Qt::WA_Moved);
    Window.setGeometry(placed);
    if (unplaced && Window.inherits("QDialog"))
        Window.setAttribute(Qt::WA_Moved, false);
}

bool ScreenFitter::eventFilter(QObject* watched, QEvent* event)
{
    // Shown by the program, not restored by the window system: a window the user has
    // dragged half off the screen comes back from the task bar where it was.
    if (event->type() == QEvent::Show && !event->spontaneous() && watched->isWidgetType()) {
        auto* widget = static_cast<QWidget*>(watched);
        if (IsFittedKind(*widget))
            Fit(*widget);
    }
    return QObject::eventFilter(watched, event);
}
