#pragma once

#include <QString>
#include <cstdint>
#include <vector>

class MapDocument;
class PatShape;

// One area of a map as the modern writers and the map check see it: picture pixels
// (zoom 1.0), the shape untouched. Index is the shape's array index, -1 for the
// default area.
struct MapArea
{
    enum class Kind { Rect, Circle, Poly, Default };

    Kind kind = Kind::Rect;
    int Index = -1;
    // rect: left, top, right, bottom; circle: cx, cy, r; poly: x, y pairs; default: none.
    std::vector<std::int32_t> coords;
    QString URL;
    QString Comment;
    QString Target;
    QString Status;
    // Empty unless the alert switch is on.
    QString Alert;

    static MapArea FromShape(const PatShape& Shape, int Index);
    static MapArea DefaultOf(const MapDocument& Document);
    // Whether the map writes a default area: any of its URL, comment, status or alert set.
    static bool HasDefaultArea(const MapDocument& Document);
};
