#pragma once

#include "core/document/MapDocument.h"

#include <QString>

// The HTML of a map: <map> with one <area> per shape (and the default area), then the
// <img> that uses it, optionally wrapped for a glow or shadow border.
class MapCodeGenerator
{
public:
    enum class Form { Viewing, Test };
    // Empty when the map has no shapes (the caller shows NoShapesMessage()).
    // Shape points are rescaled to zoom 1.0 and back, as GenerateHTML does.
    static QString GenerateMapCode(MapDocument& Document, Form form);
    static QString NoShapesMessage() { return QStringLiteral("No shape areas have been created."); }
};
