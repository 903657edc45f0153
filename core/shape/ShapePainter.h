#pragma once

#include <QColor>
#include <cstdint>

class HandleSprites;
class PatShape;
class QPainter;

// Draws shapes as the map window shows them: outline and diagonal cross-hatch in the
// shape's colour, circles as a dashed frame around the inscribed circle, unfinished
// polygons as an open chain, and a white-rimmed handle on every vertex.
class ShapePainter
{
public:
    static QColor ToQColor(std::int32_t colour);
    // The shape itself and its vertex handles. With Sprites, handles are blitted from
    // ready-drawn pictures (same pixels, much faster on large maps).
    static void ReDrawShape(QPainter& painter, const PatShape& shape,
                            HandleSprites* Sprites = nullptr);
    static void DrawHandles(QPainter& painter, const PatShape& shape,
                            HandleSprites* Sprites = nullptr);
    // The rubber-band line of a polygon under construction, if one is showing.
    static void DrawRubberBand(QPainter& painter, const PatShape& shape);

private:
    // Handles centred on place(vertex), in the painter's current coordinates.
    template <class Place>
    static void DrawHandlesAt(QPainter& painter, const PatShape& shape, HandleSprites* Sprites,
                              Place&& place);
};
