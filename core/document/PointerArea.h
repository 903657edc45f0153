#pragma once

#include "core/shape/ShapeGeometry.h"

#include <QPoint>
#include <QRect>
#include <QString>

// The part of the drawing surface the user can see, in screen pixels, and the pointer
// position shown in the status bar.
class PointerArea
{
public:
    // The viewport less 4 pixels on the right and at the bottom, intersected with the
    // surface. Right and bottom are one past the last pixel, as window rectangles are;
    // Contains() counts both edges as inside.
    static ShapeRect VisibleArea(const QRect& ViewportOnScreen, const QRect& SurfaceOnScreen);
    static bool Contains(const ShapeRect& Area, const QPoint& Point);
    // The point of Area nearest to Point.
    static QPoint Nearest(const ShapeRect& Area, const QPoint& Point);
    // "X:50 Y:20": surface pixels divided by the zoom, in picture pixels. Throws
    // OverflowError past the 16-bit range.
    static QString StatusText(double X, double Y, double ZoomLevel);
};
