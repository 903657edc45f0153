#include "frame/ZoomStep.h"

#include "shape/Numeric.h"

namespace {

ZoomStep::Result Checked(double NewLevel, std::int32_t SWidth, std::int32_t SHeight)
{
    if (!ZoomStep::Fits(NewLevel, SWidth, SHeight))
        return {ZoomStep::Outcome::Refused, NewLevel};
    return {ZoomStep::Outcome::Zoomed, NewLevel};
}

} // namespace

bool ZoomStep::Fits(double TheLevel, std::int32_t SWidth, std::int32_t SHeight)
{
    const std::int64_t width = RoundToInt32(TheLevel * SWidth);
    const std::int64_t height = RoundToInt32(TheLevel * SHeight);
    return ToInt32(width * height) <= MaxPixels;
}

ZoomStep::Result ZoomStep::In(double ZoomLevel, std::int32_t SWidth, std::int32_t SHeight)
{
    const double level = ZoomLevel + 0.1;
    // 2.01, not 2.0: ten steps of 0.1 from 1.0 land a hair above 2.0.
    if (!(level < 2.01))
        return {Outcome::Unchanged, ZoomLevel};
    return Checked(level, SWidth, SHeight);
}

ZoomStep::Result ZoomStep::Out(double ZoomLevel, std::int32_t SWidth, std::int32_t SHeight)
{
    const double level = ZoomLevel - 0.1;
    if (!(level >= 1.0))
        return {Outcome::Unchanged, ZoomLevel};
    return Checked(level, SWidth, SHeight);
}
