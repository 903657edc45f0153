#pragma once

#include "core/document/CanvasHost.h"

#include <Qt>
#include <cstdint>

class MapDocument;

// The pointer's shape over a map before a press, showing what the press would do there:
// take a handle, move a shape, draw a new one, or nothing.
class HoverCursor
{
public:
    static Qt::CursorShape For(const MapDocument& Document, std::int32_t x, std::int32_t y,
                               std::int32_t Reach, CanvasHost::DrawingMode Mode);
};
