#include "core/forms/ZoomRules.h"

#include "core/base/Numeric.h"
#include "core/forms/LeadingNumber.h"

double ZoomRules::LevelFromPercentText(const QString& Text)
{
    return double(RoundHalfEven(LeadingNumber::Of(Text) / 10.0)) / 10.0;
}

std::int64_t ZoomRules::ZoomedPixels(double Level, std::int32_t SWidth, std::int32_t SHeight)
{
    return RoundHalfEven(Level * SWidth) * RoundHalfEven(Level * SHeight);
}

bool ZoomRules::Fits(double Level, std::int32_t SWidth, std::int32_t SHeight)
{
    return ZoomedPixels(Level, SWidth, SHeight) < 4000001;
}
