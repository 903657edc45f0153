#pragma once

#include "core/document/MapDocument.h"

#include <QString>
#include <vector>

// Turns pasted map HTML back into shapes ("Generate" of the import dialog).
class HtmlImporter
{
public:
    struct Result
    {
        bool ok = false;
        QString message; // for the user when !ok
        QString detail;  // why, when known; shown beside the message
        std::vector<PatShape> shapes;
        QString DefURL;
        QString DefComment;
        QString DefTarget;
    };
    // Reads Text against Document's colours, zoom and surface; Document is unchanged.
    // Runs in time linear in the text.
    static Result Convert(const QString& Text, const MapDocument& Document);
    // Replaces Document's shapes and default area with a successful result.
    static void Apply(const Result& result, MapDocument& Document);
};
