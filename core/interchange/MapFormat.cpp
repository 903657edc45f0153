#include "core/interchange/MapFormat.h"

namespace {

constexpr MapFormat All[] = {MapFormat::Classic, MapFormat::Html5, MapFormat::Svg};

} // namespace

QString MapFormats::Name(MapFormat Format)
{
    switch (Format) {
    case MapFormat::Html5:
        return QStringLiteral("html5");
    case MapFormat::Svg:
        return QStringLiteral("svg");
    case MapFormat::Classic:
        break;
    }
    return QStringLiteral("classic");
}

std::optional<MapFormat> MapFormats::FromName(const QString& Name)
{
    for (MapFormat format : All) {
        if (MapFormats::Name(format) == Name)
            return format;
    }
    return std::nullopt;
}

QString MapFormats::Label(MapFormat Format)
{
    switch (Format) {
    case MapFormat::Html5:
        return QStringLiteral("HTML5");
    case MapFormat::Svg:
        return QStringLiteral("SVG overlay");
    case MapFormat::Classic:
        break;
    }
    return QStringLiteral("Classic");
}

QStringList MapFormats::Names()
{
    QStringList names;
    for (MapFormat format : All)
        names << Name(format);
    return names;
}
