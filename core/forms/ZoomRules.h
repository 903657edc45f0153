#pragma once

#include <QString>
#include <cstdint>

// The zoom levels a map may be shown at: the zoomed picture may hold at most
// 4,000,000 pixels.
class ZoomRules
{
public:
    // A typed percentage rounded to a multiple of ten: "155" gives 1.6, "145" 1.4.
    static double LevelFromPercentText(const QString& Text);
    // Pixels of the picture at Level: each side rounded half to even first.
    static std::int64_t ZoomedPixels(double Level, std::int32_t SWidth, std::int32_t SHeight);
    static bool Fits(double Level, std::int32_t SWidth, std::int32_t SHeight);
    static QString TooGreatMessage()
    {
        return QStringLiteral("Zoom level is too great for an image of this size.");
    }
};
