#include "ui/frame/WindowArranger.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStyle>

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
    // The area's own cascade sizes each window to its hint, which for a map is only a
    // title bar. Here all take one size, as large as leaves every title bar in sight.
    QList<QMdiSubWindow*> windows = Windows(Area, false);
    if (windows.isEmpty())
        return;
    // The active window ends on top of the pile.
    QMdiSubWindow* active = Area.activeSubWindow();
    if (windows.removeOne(active))
        windows.append(active);
    const QRect area = Area.viewport()->rect();
    const QMdiSubWindow* first = windows.first();
    const int step = first->style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, first) + 4;
    const int stack = step * (static_cast<int>(windows.size()) - 1);
    const QSize size(qMax(area.width() - stack, area.width() * 2 / 3),
                     qMax(area.height() - stack, area.height() * 2 / 3));
    int k = 0;
    for (QMdiSubWindow* window : windows) {
        QPoint at(k * step, k * step);
        // Past the edge the pile starts again from the corner.
        if (at.x() + size.width() > area.width() || at.y() + size.height() > area.height()) {
            k = 0;
            at = QPoint(0, 0);
        }
        if (window->isMaximized())
            window->showNormal();
        window->setGeometry(QRect(at, size));
        window->raise();
        ++k;
    }
    if (active != nullptr)
        Area.setActiveSubWindow(active);
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
