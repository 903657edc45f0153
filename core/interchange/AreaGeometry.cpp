#include "core/interchange/AreaGeometry.h"

#include "core/interchange/MapArea.h"

#include <QPolygonF>
#include <algorithm>
#include <climits>
#include <cstdint>

QPainterPath AreaGeometry::PathOf(const MapArea& a, int Width, int Height)
{
    QPainterPath path;
    const auto& c = a.coords;
    switch (a.kind) {
    case MapArea::Kind::Rect:
        path.addRect(QRectF(QPointF(c[0], c[1]), QPointF(c[2], c[3])).normalized());
        break;
    case MapArea::Kind::Circle:
        path.addEllipse(QPointF(c[0], c[1]), std::abs(double(c[2])), std::abs(double(c[2])));
        break;
    case MapArea::Kind::Poly: {
        QPolygonF polygon;
        polygon.reserve(static_cast<qsizetype>(c.size() / 2));
        for (std::size_t i = 0; i + 1 < c.size(); i += 2)
            polygon << QPointF(c[i], c[i + 1]);
        path.addPolygon(polygon);
        path.closeSubpath();
        break;
    }
    case MapArea::Kind::Default:
        path.addRect(0, 0, Width, Height);
        break;
    }
    return path;
}

QRect AreaGeometry::BoundsOf(const MapArea& a, int Width, int Height)
{
    const auto& c = a.coords;
    switch (a.kind) {
    case MapArea::Kind::Rect:
        return QRect(QPoint(std::min(c[0], c[2]), std::min(c[1], c[3])),
                     QPoint(std::max(c[0], c[2]), std::max(c[1], c[3])));
    case MapArea::Kind::Circle: {
        const std::int64_t r = std::abs(std::int64_t(c[2]));
        const auto clamp = [](std::int64_t v) {
            return int(std::clamp<std::int64_t>(v, INT_MIN / 2, INT_MAX / 2));
        };
        return QRect(QPoint(clamp(c[0] - r), clamp(c[1] - r)),
                     QPoint(clamp(c[0] + r), clamp(c[1] + r)));
    }
    case MapArea::Kind::Poly: {
        if (c.size() < 2)
            return QRect();
        int left = c[0], right = c[0], top = c[1], bottom = c[1];
        for (std::size_t i = 0; i + 1 < c.size(); i += 2) {
            left = std::min(left, c[i]);
            right = std::max(right, c[i]);
            top = std::min(top, c[i + 1]);
            bottom = std::max(bottom, c[i + 1]);
        }
        return QRect(QPoint(left, top), QPoint(right, bottom));
    }
    case MapArea::Kind::Default:
        break;
    }
    return QRect(0, 0, Width, Height);
}
