#pragma once

#include "core/shape/PatShape.h"

#include <QStringList>
#include <vector>

// A shape rebuilt the way the map file reader does it.
inline PatShape MakeShape(std::int16_t type, const std::vector<ShapePoint>& points,
                          ShapeSurface* surface = nullptr, double zoom = 1.0,
                          std::int32_t colour = 0x0000FF)
{
    PatShape shape;
    shape.ResetInfo(type, true, colour, QStringLiteral("http://"), {}, {}, {}, 0, {});
    shape.ResetPoints(static_cast<std::int16_t>(points.size() - 1));
    for (std::size_t i = 0; i < points.size(); ++i)
        shape.SetPoint(static_cast<std::int16_t>(i), points[i].x, points[i].y);
    shape.SetOpenGeneralInfo(surface, zoom);
    return shape;
}

// The four corners of (left, top)-(right, bottom), clockwise from the top-left.
inline std::vector<ShapePoint> Corners(std::int32_t l, std::int32_t t, std::int32_t r,
                                       std::int32_t b)
{
    return {{l, t}, {r, t}, {r, b}, {l, b}};
}

inline QString PointsText(const std::vector<ShapePoint>& points)
{
    QStringList parts;
    for (const ShapePoint& p : points)
        parts << QStringLiteral("(%1,%2)").arg(p.x).arg(p.y);
    return parts.join(QLatin1Char(' '));
}

inline QString PointsText(const PatShape& shape)
{
    return PointsText(shape.Points());
}
