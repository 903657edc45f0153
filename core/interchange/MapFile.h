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
        // The document's file name: the absolute path it was opened from (line 2 of the
        // file is only a record of where it was last saved).
        QString fileName;
        // Messages for the user, in order, when !ok.
        QStringList messages;
        // Why, when it is known: shown beside the last message.
        QString detail;
        // The picture that was looked for, when it was not found.
        QString missingPicture;
    };

    struct WriteResult
    {
        bool ok = false;
        QString message;
        // Why, shown beside the message: the system's error text or the read-only file.
        QString detail;
    };

    static QString PictureNotFoundMessage() { return QStringLiteral("Image for map not found."); }
    static QString CannotLoadMessage() { return QStringLiteral("Error, map cannot be loaded."); }
    static QString SaveErrorMessage()
    {
        return QStringLiteral("There was an error while trying to save the file.");
    }
    static QString ReadOnlyDetail(const QString& FileName)
    {
        return QStringLiteral("\"%1\" is read-only.").arg(FileName);
    }
    static QString TooManyShapesDetail()
    {
        return QStringLiteral("A map holds at most 32,768 shapes.");
    }
    static QString PictureMissingDetail(const QString& Picture)
    {
        return QStringLiteral("\"%1\" is not there, nor beside the map file.").arg(Picture);
    }
    static QString NotTextDetail() { return QStringLiteral("The file is not a text file."); }
    static QString EmptyDetail() { return QStringLiteral("The file is empty."); }
    static QString EndsEarlyDetail(int Lines)
    {
        return QStringLiteral("The file ends after line %1, before the map is complete.")
            .arg(Lines);
    }
    static QString BadLineDetail(int Line, const QString& Text)
    {
        return QStringLiteral("Line %1, \"%2\", is not a value a map file can hold there.")
            .arg(Line)
            .arg(Text);
    }
    // The zoom levels a map file may hold.
    static constexpr double LeastZoom = 0.01;
    static constexpr double GreatestZoom = 100.0;
    static QString UnviewableZoomDetail(double ZoomLevel)
    {
        return QStringLiteral("The zoom level %1 is outside the range a map can be shown at "
                              "(0.01 to 100).")
            .arg(ZoomLevel);
    }

    // Reads FileNameToOpen; shapes are bound to Surface at the file's zoom.
    // Loads the picture into OrigPic (looked for beside the map file too).
    static ReadResult OpenMapFile(const QString& FileNameToOpen, ShapeSurface* Surface = nullptr);
    // Reads Bytes as the content of a map file at FileNameToOpen (which need not exist;
    // it decides where else the picture is looked for and the fallback file name).
    static ReadResult ReadMap(const QByteArray& Bytes, const QString& FileNameToOpen,
                              ShapeSurface* Surface = nullptr);
    // Writes the document atomically; a failed save leaves any previous file whole. The
    // new file keeps the old one's permissions; a read-only file is refused.
    // FileName is also what line 2 records.
    static WriteResult SaveMap(const MapDocument& Document, const QString& FileName);
    // The exact text SaveMap writes, before encoding.
    static QString MapText(const MapDocument& Document, const QString& FileName);
    // The same with ShapeOrder written in place of the document's own order (as many
    // entries as shapes).
    static QString MapText(const MapDocument& Document, const QString& FileName,
                           const std::vector<std::int16_t>& ShapeOrder);
    // The bytes SaveMap writes.
    static QByteArray MapBytes(const MapDocument& Document, const QString& FileName);
    static QByteArray MapBytes(const MapDocument& Document, const QString& FileName,
                               const std::vector<std::int16_t>& ShapeOrder);
};
