#pragma once

#include "core/shape/ShapeGeometry.h"

#include <QRegion>

// Where a shape reports the areas its changes touched. The canvas accumulates them
// and repaints just those; tests record them.
class ShapeSurface
{
public:
    virtual ~ShapeSurface() = default;
    virtual void InvalidateRect(const ShapeRect& rect) = 0;
    virtual void InvalidateRegion(const QRegion& region) = 0;
    // Takes an area back out of what is waiting to be repainted.
    virtual void ValidateRect(const ShapeRect& rect) = 0;
    virtual void ValidateRegion(const QRegion& region) = 0;
    // Everything on the surface needs repainting (picture cleared and redrawn).
    virtual void InvalidateAll() = 0;
    // Repaint what is waiting, before returning.
    virtual void RepaintNow() = 0;
};
