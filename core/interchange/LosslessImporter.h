#pragma once

#include "core/document/MapDocument.h"
#include "core/interchange/HtmlImporter.h"
#include "core/interchange/HtmlMapReader.h"

#include <QString>
#include <vector>

// "Keep text as written": map code read as a browser reads it, so letter case, entities,
// any quoting, titles and scripts' status and alert texts all come through.
class LosslessImporter
{
public:
    struct Result
    {
        bool ok = false;
        QString message; // for the user when !ok
        QString detail;  // why, when known; shown beside the message
        QString MapName;
        std::vector<PatShape> shapes;
        bool hasDefaultArea = false;
        QString DefURL;
        QString DefComment;
        QString DefTarget;
        QString DefStatus;
        QString DefAlert;
        std::int16_t DefAlertVal = 0;
    };

    // Converts map number MapIndex of Maps (from HtmlMapReader) against Document's
    // colours, zoom and surface; Document is unchanged. An empty Maps gives the classic
    // "Map tag not found." message.
    static Result Convert(const std::vector<HtmlMapReader::Map>& Maps, std::size_t MapIndex,
                          const MapDocument& Document);
    // A classic conversion in this form, for the add option; the map keeps MapName. The
    // code had a default area when any of its texts came through.
    static Result FromClassic(const HtmlImporter::Result& Classic, const QString& MapName);
    // Reads and converts the first map of Text.
    static Result Convert(const QString& Text, const MapDocument& Document);

    // The message when adding Result's shapes to Document would pass the 16-bit shape
    // limit; empty when they fit.
    static QString AddLimitMessage(const Result& result, const MapDocument& Document);
    // Replaces Document's shapes, name and default area with a successful result, or with
    // Add appends the shapes below the current ones and takes the default area only when
    // the code has one. Does nothing when the shapes would not fit.
    static bool Apply(const Result& result, MapDocument& Document, bool Add);
};
