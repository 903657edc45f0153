#pragma once

#include <QPainterPath>
#include <QRect>

struct MapArea;

// The region an area covers in a browser, in picture pixels.
class AreaGeometry
{
public:
    // Rectangles from their corners in any order, circles from centre and radius,
    // polygons closed; the default area is the whole picture (Width x Height).
    static QPainterPath PathOf(const MapArea& Area, int Width, int Height);
    // The bounding box, edges included.
    static QRect BoundsOf(const MapArea& Area, int Width, int Height);
};
