#include "core/forms/SteppedNumberEntry.h"

#include "core/base/Numeric.h"
#include "core/forms/LeadingNumber.h"

SteppedNumberEntry::SteppedNumberEntry(int Minimum, int Maximum)
    : m_minimum(Minimum), m_maximum(Maximum)
{
}

std::optional<int> SteppedNumberEntry::ScrollValueFor(const QString& Text) const
{
    const double value = LeadingNumber::Of(Text);
    if (!InRange(value))
        return std::nullopt;
    return static_cast<int>(RoundHalfEven(value));
}

QString SteppedNumberEntry::TextOnLeave(const QString& Text, int ScrollValue) const
{
    if (InRange(LeadingNumber::Of(Text)))
        return Text;
    return TextFor(ScrollValue);
}
