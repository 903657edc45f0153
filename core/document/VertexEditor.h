#pragma once

#include <QString>
#include <cstdint>

class MapDocument;

// Ctrl+click on a finished polygon: on a vertex it deletes that vertex, on an edge it
// inserts one there. The topmost polygon under the pointer is the one edited; it
// becomes the top shape, and an inserted vertex is grabbed so that the same drag can
// place it.
class VertexEditor
{
public:
    enum class Outcome { NotOnPolygon, Inserted, Deleted, TooFewVertices };

    // Reach: how near a vertex or an edge the press must be, in surface pixels.
    static Outcome Edit(MapDocument& Document, std::int32_t x, std::int32_t y, std::int32_t Reach);
    static QString TooFewVerticesMessage();
    // Nearest edge of the polygon Index within Reach of (x, y): the index of
    // its first vertex, or -1.
    static int EdgeAt(const MapDocument& Document, std::int16_t Index, std::int32_t x,
                      std::int32_t y, std::int32_t Reach);
};
