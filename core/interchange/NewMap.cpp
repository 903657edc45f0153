#include "core/interchange/NewMap.h"

#include "core/base/Module1.h"
#include "core/interchange/PictureLoader.h"

#include <QDir>
#include <QFileInfo>

NewMap::Result NewMap::FromPicture(const QString& PicturePath)
{
    Result result;
    PictureLoader::Result picture = PictureLoader::Load(PicturePath);
    if (!picture.ok) {
        result.message = picture.message;
        result.detail = picture.detail;
        return result;
    }
    SetPicture(result.document, picture.image, PicturePath);
    result.ok = true;
    return result;
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
