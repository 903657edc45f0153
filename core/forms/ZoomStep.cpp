#include "core/forms/ZoomStep.h"

#include "core/base/Numeric.h"
#include "core/forms/ZoomRules.h"

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
    // Both sides and their product are 32-bit values: leaving that range is an error.
    RoundToInt32(TheLevel * SWidth);
    RoundToInt32(TheLevel * SHeight);
    ToInt32(ZoomRules::ZoomedPixels(TheLevel, SWidth, SHeight));
    return ZoomRules::Fits(TheLevel, SWidth, SHeight);
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
