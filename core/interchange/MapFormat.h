#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// The kinds of HTML the map can be written as. Classic is the exact historic output
// and the default everywhere.
enum class MapFormat { Classic, Html5, Svg };

class MapFormats
{
public:
    // "classic", "html5", "svg": the names the command line and the settings use.
    static QString Name(MapFormat Format);
    static std::optional<MapFormat> FromName(const QString& Name);
    // "Classic", "HTML5", "SVG overlay": what the code window offers.
    static QString Label(MapFormat Format);
    static QStringList Names();
};
