#pragma once

#include <QString>

// The number written at the start of a text box's text, as the number boxes of the
// dialogs read it: leading blanks skipped, an optional sign, digits and one decimal
// point. A text that starts with no number reads as 0.
class LeadingNumber
{
public:
    static double Of(const QString& Text);
};
