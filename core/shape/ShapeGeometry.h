#pragma once

#include <QRect>
#include <cstdint>

enum ShapeType : std::int16_t { Circle = 0, Rectangle = 1, Polygon = 2 };

// A vertex in surface pixels at the shape's zoom.
struct ShapePoint
{
    std::int32_t x = 0;
    std::int32_t y = 0;
    bool operator==(const ShapePoint& o) const { return x == o.x && y == o.y; }
    bool operator!=(const ShapePoint& o) const { return !(*this == o); }
};

// left, top, right, bottom; both edges inclusive for the shape's own tests.
struct ShapeRect
{
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
    bool operator==(const ShapeRect& o) const
    {
        return left == o.left && top == o.top && right == o.right && bottom == o.bottom;
    }
    bool operator!=(const ShapeRect& o) const { return !(*this == o); }
    // The pixels a painter touches when it strokes this rectangle's outline.
    QRect toQRect() const { return QRect(QPoint(left, top), QPoint(right, bottom)); }
};
