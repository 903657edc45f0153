#pragma once

#include <QByteArray>

// A quick, forgiving estimate of how deeply a page nests its elements, read before the
// real parser runs: the HTML5 algorithm searches the open elements for every new one,
// so a page nested thousands deep takes the parser time that grows with the square of
// its length. Browsers stop nesting at 512 levels; deeper code is refused.
class HtmlNesting
{
public:
    static constexpr int Limit = 512;
    // The deepest nesting of the page, assuming every element that needs an end tag
    // stays open until it gets one. Linear in the length of the text.
    static int EstimatedDepth(const QByteArray& Utf8);
};
