#pragma once

#include <QPen>
#include <cstdint>

class QImage;

// The grid laid over a map's picture: drawn into the zoomed picture buffer, with its
// origin at the picture's top-left corner; presses and drags may snap to its crossings.
class CanvasGrid
{
public:
    // 0 solid, 1 dashed, 2 dotted; anything else draws solid lines.
    static Qt::PenStyle PenStyleOf(std::int32_t GridStyle);
    // The finest pitch on screen, in pixels, that is still drawn.
    static constexpr double FinestPitch = 2.0;
    // Lines every Step pixels from the left and top edges; positions accumulate in
    // floating point, and no line is drawn on the right or bottom edge. Nothing is drawn
    // for a pitch under FinestPitch.
    static void DrawGridLines(QImage& Buffer, double Step, std::int32_t GridStyle,
                              std::int32_t GridColor);
    // Moves (X, Y) to the nearest crossing of a grid of pitch Step; an exact half-way
    // position goes to the even multiple. Throws OverflowError when X / Step leaves
    // the 16-bit range and DivisionByZeroError for a zero pitch.
    static void SnapToGrid(std::int32_t& X, std::int32_t& Y, double Step);
    static std::int32_t SnapOne(std::int32_t Value, double Step);
};
