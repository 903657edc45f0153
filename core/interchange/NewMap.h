#pragma once

#include "core/document/MapDocument.h"

#include <QImage>
#include <QString>

// A new map made from a picture, as "New Map" makes it: the picture shown at its own
// size at zoom 1.0, with the defaults of a new map window for everything else.
class NewMap
{
public:
    struct Result
    {
        bool ok = false;
        MapDocument document;
        // For the user when !ok.
        QString message;
        QString detail; // why, shown beside the message
    };

    // Loads the picture at PicturePath; a picture that cannot be read, or is too large
    // for a map, makes no map.
    static Result FromPicture(const QString& PicturePath);
    // Why a picture of Size cannot be a new map's picture, or empty when it can: beyond
    // 32,767 pixels a side, positions on it no longer fit the map's coordinates.
    static QString TooLargeDetail(QSize Size);
    // Gives Document the picture: OrigPic, RealWidth/RealHeight and SWidth/SHeight =
    // the picture's size, ZoomLevel 1.0, ImageName and ImagePath (ending with the
    // separator) from the absolute form of PicturePath.
    static void SetPicture(MapDocument& Document, const QImage& Picture,
                           const QString& PicturePath);
};
