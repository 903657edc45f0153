#include "core/forms/LeadingNumber.h"

double LeadingNumber::Of(const QString& Text)
{
    int i = 0;
    const int n = Text.size();
    while (i < n && (Text[i] == QLatin1Char(' ') || Text[i] == QLatin1Char('\t')))
        ++i;
    QString number;
    if (i < n && (Text[i] == QLatin1Char('+') || Text[i] == QLatin1Char('-')))
        number += Text[i++];
    bool seenPoint = false;
    bool seenDigit = false;
    for (; i < n; ++i) {
        const QChar c = Text[i];
        if (c >= QLatin1Char('0') && c <= QLatin1Char('9')) {
            seenDigit = true;
            number += c;
        } else if (c == QLatin1Char('.') && !seenPoint) {
            seenPoint = true;
            number += c;
        } else {
            break;
        }
    }
    if (!seenDigit)
        return 0.0;
    return number.toDouble();
}
