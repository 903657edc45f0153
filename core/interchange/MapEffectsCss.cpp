#include "core/interchange/MapEffectsCss.h"

#include "core/base/Module1.h"
#include "core/document/MapDocument.h"

namespace {

// The same intent as the old filters, indexed like MapStyle and MapOnClick: grey, faded,
// blurred, inverted, x-ray.
const char* const Filters[] = {
    "",          "grayscale(100%)", "opacity(60%)",
    "blur(4px)", "invert(100%)",    "grayscale(100%) invert(100%)",
};

QString Filter(std::int16_t index)
{
    return QLatin1String(index >= 1 && index <= 5 ? Filters[index] : "");
}

QString Joined(const QString& a, const QString& b)
{
    if (a.isEmpty())
        return b.isEmpty() ? QStringLiteral("none") : b;
    return b.isEmpty() ? a : a + QLatin1Char(' ') + b;
}

} // namespace

QString MapEffectsCss::Rules(const MapDocument& d, const QString& ClassName)
{
    const QString hover = Filter(d.MapStyle);
    const QString press = Filter(d.MapOnClick);
    QString border;
    const QString colour = QLatin1Char('#') + Module1::ColorToHex(d.BorderColor);
    if (d.MapBorder == 1)
        border = QStringLiteral("drop-shadow(5px 5px 0 %1)").arg(colour);
    else if (d.MapBorder == 2)
        border = QStringLiteral("drop-shadow(0 0 5px %1)").arg(colour);
    if (hover.isEmpty() && press.isEmpty() && border.isEmpty())
        return QString();

    const QString scope = QLatin1Char('.') + ClassName;
    const QLatin1String crlf("\r\n");
    QString css;
    // The wrapper hugs the picture, so hovering beside it changes nothing.
    css += scope + QLatin1String(" { display: inline-block; }") + crlf;
    css += scope + QLatin1String(" img { filter: ") + Joined(hover, border) + QLatin1String("; }") +
           crlf;
    if (!hover.isEmpty()) {
        css += scope + QLatin1String(":hover img { filter: ") + Joined(QString(), border) +
               QLatin1String("; }") + crlf;
    }
    if (!press.isEmpty()) {
        css += scope + QLatin1String(":active img { filter: ") + Joined(press, border) +
               QLatin1String("; }") + crlf;
    }
    return css;
}
