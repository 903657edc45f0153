#pragma once

#include "canvas/MapDocument.h"

#include <QString>
#include <QStringList>

class ShapeSurface;

// The Image Map File (.imp): one value per line in a fixed order, CR LF line ends.
class MapFile {
public:
    struct ReadResult {
        bool ok = false;
        // Filled only when ok; nothing half-read ever reaches the caller.
        MapDocument document;
        // The document's file name: the path stored in the file, or the path it was
        // opened from when the stored folder does not exist here.
        QString fileName;
        // Messages for the user, in order, when !ok.
        QStringList messages;
    };

    struct WriteResult {
        bool ok = false;
        QString message;
    };

    // Reads FileNameToOpen; shapes are bound to Surface at the file's zoom.
    // Loads the picture into OrigPic (looked for beside the map file too).
    static ReadResult OpenMapFile(const QString& FileNameToOpen, ShapeSurface* Surface = nullptr);
    // Writes the document atomically; a failed save leaves any previous file whole.
    static WriteResult SaveMap(const MapDocument& Document, const QString& FileName);
    // The exact text SaveMap writes, before encoding.
    static QString MapText(const MapDocument& Document, const QString& FileName);
};
