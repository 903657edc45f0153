#pragma once

#include "core/document/MapDocument.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

class ShapeSurface;

// The Image Map File (.imp): one value per line in a fixed order, CR LF line ends.
class MapFile
{
public:
    struct ReadResult
    {
        bool ok = false;
        // Filled only when ok; nothing half-read ever reaches the caller.
        MapDocument document;
        // The document's file name: the path stored in the file, or the path it was
        // opened from when the stored folder does not exist here.
        QString fileName;
        // Messages for the user, in order, when !ok.
        QStringList messages;
    };

    struct WriteResult
    {
        bool ok = false;
        QString message;
    };

    static QString PictureNotFoundMessage() { return QStringLiteral("Image for map not found."); }
    static QString CannotLoadMessage() { return QStringLiteral("Error, map cannot be loaded."); }
    static QString SaveErrorMessage()
    {
        return QStringLiteral("There was an error while trying to save the file.");
    }

    // Reads FileNameToOpen; shapes are bound to Surface at the file's zoom.
    // Loads the picture into OrigPic (looked for beside the map file too).
    static ReadResult OpenMapFile(const QString& FileNameToOpen, ShapeSurface* Surface = nullptr);
    // Reads Bytes as the content of a map file at FileNameToOpen (which need not exist;
    // it decides where else the picture is looked for and the fallback file name).
    static ReadResult ReadMap(const QByteArray& Bytes, const QString& FileNameToOpen,
                              ShapeSurface* Surface = nullptr);
    // Writes the document atomically; a failed save leaves any previous file whole.
    // FileName is also what line 2 records.
    static WriteResult SaveMap(const MapDocument& Document, const QString& FileName);
    // The exact text SaveMap writes, before encoding.
    static QString MapText(const MapDocument& Document, const QString& FileName);
    // The bytes SaveMap writes.
    static QByteArray MapBytes(const MapDocument& Document, const QString& FileName);
};
