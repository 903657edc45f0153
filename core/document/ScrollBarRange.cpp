#include "core/document/ScrollBarRange.h"

#include "core/base/Numeric.h"

ScrollBarRange ScrollBarRange::For(double Surface, double Viewport)
{
    ScrollBarRange range;
    if (Surface <= Viewport)
        return range;
    range.Visible = true;
    range.Maximum = RoundToInt32(Surface - Viewport);
    // The + 1 keeps both steps at least one pixel for tiny ranges.
    range.LargeChange = range.Maximum / 25 + 1;
    range.SmallChange = range.Maximum / 200 + 1;
    return range;
}
