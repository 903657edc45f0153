#include "core/base/Numeric.h"

#include <cfenv>
#include <cmath>
#include <limits>

std::int64_t RoundHalfEven(double value)
{
    // nearbyint honours the current rounding mode, which is round-to-nearest-even
    // unless someone changed it; never change it in this program.
    const double r = std::nearbyint(value);
    if (!std::isfinite(r) || r < -9.2e18 || r > 9.2e18)
        throw OverflowError();
    return static_cast<std::int64_t>(r);
}

std::int16_t ToInt16(std::int64_t value)
{
    if (value < std::numeric_limits<std::int16_t>::min() ||
        value > std::numeric_limits<std::int16_t>::max())
        throw OverflowError();
    return static_cast<std::int16_t>(value);
}

std::int16_t RoundToInt16(double value)
{
    return ToInt16(RoundHalfEven(value));
}

std::int32_t ToInt32(std::int64_t value)
{
    if (value < std::numeric_limits<std::int32_t>::min() ||
        value > std::numeric_limits<std::int32_t>::max())
        throw OverflowError();
    return static_cast<std::int32_t>(value);
}

std::int32_t RoundToInt32(double value)
{
    return ToInt32(RoundHalfEven(value));
}
