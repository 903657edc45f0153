#pragma once

#include <cstdint>

// One step of the View menu's zoom: 0.1 up or down between 1.0 and 2.0, refused when the
// zoomed picture would exceed 4,000,000 pixels.
class ZoomStep
{
public:
    enum class Outcome {
        Unchanged, // out of the 1.0 to 2.0 range: the command does nothing
        Refused,   // too many pixels: the user is told, the level stays
        Zoomed     // apply NewLevel
    };
    struct Result
    {
        Outcome outcome = Outcome::Unchanged;
        double NewLevel = 1.0;
    };

    // Throws OverflowError when the zoomed pixel count leaves 32 bits.
    static Result In(double ZoomLevel, std::int32_t SWidth, std::int32_t SHeight);
    static Result Out(double ZoomLevel, std::int32_t SWidth, std::int32_t SHeight);
    // Whether a picture of SWidth x SHeight may be shown at TheLevel (ZoomRules), the
    // pixel count held in 32 bits.
    static bool Fits(double TheLevel, std::int32_t SWidth, std::int32_t SHeight);
};
