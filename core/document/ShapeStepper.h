#pragma once

#include <cstdint>

class MapDocument;

// Tab and Shift+Tab: the next or previous shape by number becomes the top shape, its
// body grabbed as if clicked, so that a shape lying under another can be reached and
// nudged from the keyboard.
class ShapeStepper
{
public:
    // Forward to the next number, else back; wraps around. Does nothing on an empty
    // map or while a polygon is being drawn. Returns the new top shape or -1.
    static std::int16_t Step(MapDocument& Document, bool Forward);
    // The shape Step would bring to the top, or -1.
    static std::int16_t Next(const MapDocument& Document, bool Forward);
    // Brings Index to the top and grabs its body, repainting what changed.
    static void Select(MapDocument& Document, std::int16_t Index);
};
