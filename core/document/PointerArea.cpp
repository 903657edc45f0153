#include "core/document/PointerArea.h"

#include "core/base/Module1.h"
#include "core/base/Numeric.h"

#include <algorithm>

ShapeRect PointerArea::VisibleArea(const QRect& ViewportOnScreen, const QRect& SurfaceOnScreen)
{
    const ShapeRect viewport{ViewportOnScreen.left(), ViewportOnScreen.top(),
                             ViewportOnScreen.left() + ViewportOnScreen.width() - 4,
                             ViewportOnScreen.top() + ViewportOnScreen.height() - 4};
    const ShapeRect surface{SurfaceOnScreen.left(), SurfaceOnScreen.top(),
                            SurfaceOnScreen.left() + SurfaceOnScreen.width(),
                            SurfaceOnScreen.top() + SurfaceOnScreen.height()};
    ShapeRect area{std::max(viewport.left, surface.left), std::max(viewport.top, surface.top),
                   std::min(viewport.right, surface.right),
                   std::min(viewport.bottom, surface.bottom)};
    // No overlap is an empty rectangle, as the platform's intersection gives.
    if (area.left >= area.right || area.top >= area.bottom)
        area = {0, 0, 0, 0};
    return area;
}

bool PointerArea::Contains(const ShapeRect& Area, const QPoint& Point)
{
    return Module1::PointInRect(Point.x(), Point.y(), Area.left, Area.top, Area.right, Area.bottom);
}

QPoint PointerArea::Nearest(const ShapeRect& Area, const QPoint& Point)
{
    return {std::clamp(Point.x(), Area.left, std::max(Area.left, Area.right)),
            std::clamp(Point.y(), Area.top, std::max(Area.top, Area.bottom))};
}

QString PointerArea::StatusText(double X, double Y, double ZoomLevel)
{
    if (ZoomLevel == 0.0)
        throw DivisionByZeroError();
    const std::int16_t x = RoundToInt16(X / ZoomLevel);
    const std::int16_t y = RoundToInt16(Y / ZoomLevel);
    return QStringLiteral("X:") + QString::number(x) + QStringLiteral(" Y:") + QString::number(y);
}
