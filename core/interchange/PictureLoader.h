#pragma once

#include <QImage>
#include <QString>

// Loads the picture of a map from a file: JPEG, GIF, BMP and whatever else Qt reads.
class PictureLoader
{
public:
    struct Result
    {
        bool ok = false;
        QImage image;
        // For the user when !ok; names the file.
        QString message;
        // Why it cannot be loaded, shown beside the message.
        QString detail;
    };

    static Result Load(const QString& Path);
    static QString CannotReadMessage(const QString& Path);
};
