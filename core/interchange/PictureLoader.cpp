#include "core/interchange/PictureLoader.h"

#include <QDir>
#include <QImageReader>

PictureLoader::Result PictureLoader::Load(const QString& Path)
{
    Result result;
    QImageReader reader(Path);
    result.image = reader.read();
    result.ok = !result.image.isNull();
    if (!result.ok) {
        result.image = QImage();
        result.message = CannotReadMessage(Path);
    }
    return result;
}

QString PictureLoader::CannotReadMessage(const QString& Path)
{
    return QStringLiteral("The picture \"%1\" cannot be loaded.")
        .arg(QDir::toNativeSeparators(Path));
}
