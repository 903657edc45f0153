#include "core/interchange/PictureLoader.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QLocale>

namespace {

// Why Reader could not read its picture of Size (as its header says): too large to
// load, or the reader's own words.
QString Cause(const QImageReader& Reader, QSize size)
{
    const qint64 limitBytes = qint64(QImageReader::allocationLimit()) * 1024 * 1024;
    // Every picture is held at four bytes a pixel whatever its file's depth.
    const qint64 mostPixels = limitBytes / 4;
    if (limitBytes > 0 && size.isValid() && qint64(size.width()) * size.height() > mostPixels) {
        const QLocale english(QLocale::English);
        return QStringLiteral("The picture is %1 \u00d7 %2 pixels; this program loads pictures "
                              "of up to %3 pixels.")
            .arg(english.toString(size.width()), english.toString(size.height()),
                 english.toString(mostPixels));
    }
    return Reader.errorString();
}

} // namespace

PictureLoader::Result PictureLoader::Load(const QString& Path)
{
    Result result;
    // The reader would only say "File not found" of a folder, which is there.
    if (QFileInfo(Path).isDir()) {
        result.message = CannotReadMessage(Path);
        result.detail = QStringLiteral("It is a folder, not a picture.");
        return result;
    }
    QImageReader reader(Path);
    const QSize size = reader.size();
    result.image = reader.read();
    result.ok = !result.image.isNull();
    if (!result.ok) {
        result.image = QImage();
        result.message = CannotReadMessage(Path);
        result.detail = Cause(reader, size);
    }
    return result;
}

QString PictureLoader::CannotReadMessage(const QString& Path)
{
    return QStringLiteral("The picture \"%1\" cannot be loaded.")
        .arg(QDir::toNativeSeparators(Path));
}
