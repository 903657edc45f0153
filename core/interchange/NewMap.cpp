#include "core/interchange/NewMap.h"

#include "core/base/Module1.h"
#include "core/interchange/PictureLoader.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <cstdint>
#include <limits>

NewMap::Result NewMap::FromPicture(const QString& PicturePath)
{
    Result result;
    PictureLoader::Result picture = PictureLoader::Load(PicturePath);
    if (!picture.ok) {
        result.message = picture.message;
        result.detail = picture.detail;
        return result;
    }
    result.detail = TooLargeDetail(picture.image.size());
    if (!result.detail.isEmpty()) {
        result.message = PictureLoader::CannotReadMessage(PicturePath);
        return result;
    }
    SetPicture(result.document, picture.image, PicturePath);
    result.ok = true;
    return result;
}

QString NewMap::TooLargeDetail(QSize Size)
{
    const int most = std::numeric_limits<std::int16_t>::max();
    if (Size.width() <= most && Size.height() <= most)
        return QString();
    const QLocale english(QLocale::English);
    return QStringLiteral("The picture is %1 \u00d7 %2 pixels; a map's picture may be at most "
                          "%3 pixels wide and %3 pixels high.")
        .arg(english.toString(Size.width()), english.toString(Size.height()),
             english.toString(most));
}

void NewMap::SetPicture(MapDocument& Document, const QImage& Picture, const QString& PicturePath)
{
    const QString path = QDir::toNativeSeparators(QFileInfo(PicturePath).absoluteFilePath());
    Document.OrigPic = Picture;
    Document.RealWidth = Picture.width();
    Document.RealHeight = Picture.height();
    Document.SWidth = Document.RealWidth;
    Document.SHeight = Document.RealHeight;
    Document.ZoomLevel = 1.0;
    Document.ImageName = Module1::FileNameOfPath(path);
    Document.ImagePath = Module1::FolderOfPath(path);
}
