#include "ui/frame/WindowArranger.h"

#include <QMdiArea>
#include <QMdiSubWindow>

namespace {

QList<QMdiSubWindow*> Windows(QMdiArea& Area, bool Minimised)
{
    QList<QMdiSubWindow*> found;
    for (QMdiSubWindow* window : Area.subWindowList(QMdiArea::CreationOrder)) {
        if (window->isVisible() && window->isMinimized() == Minimised)
            found.append(window);
    }
    return found;
}

} // namespace

void WindowArranger::Cascade(QMdiArea& Area)
{
    Area.cascadeSubWindows();
}

void WindowArranger::TileHorizontally(QMdiArea& Area)
{
    const QList<QMdiSubWindow*> windows = Windows(Area, false);
    if (windows.isEmpty())
        return;
    const QRect area = Area.viewport()->rect();
    const int count = static_cast<int>(windows.size());
    int top = 0;
    for (int i = 0; i < count; ++i) {
        const int bottom = area.height() * (i + 1) / count;
        QMdiSubWindow* window = windows.at(i);
        if (window->isMaximized())
            window->showNormal();
        window->setGeometry(0, top, area.width(), bottom - top);
        top = bottom;
    }
}

void WindowArranger::ArrangeIcons(QMdiArea& Area)
{
    const QRect area = Area.viewport()->rect();
    int x = 0;
    int y = -1;
    for (QMdiSubWindow* window : Windows(Area, true)) {
        const QSize size = window->size();
        if (y < 0) {
            y = area.height() - size.height();
        } else if (x > 0 && x + size.width() > area.width()) {
            x = 0;
            y -= size.height();
        }
        window->move(x, y);
        x += size.width();
    }
}
