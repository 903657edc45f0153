#pragma once

#include "core/interchange/MapCodeGenerator.h"
#include "core/interchange/MapFormat.h"

#include <QString>

// A map's code in one of the formats, as its users need it: the code window and the
// command line show Text; a page puts Head in its head and Body in its body.
struct FormattedMapCode
{
    QString Head;
    QString Body;
    QString Text;

    // Empty when the map has no shapes. The classic form is MapCodeGenerator's, exactly.
    static FormattedMapCode Generate(MapDocument& Document, MapFormat Format,
                                     MapCodeGenerator::Form TheForm);
    // The whole test page: the classic four lines, or an HTML5 document.
    QString TestPageText(MapFormat Format) const;
};
