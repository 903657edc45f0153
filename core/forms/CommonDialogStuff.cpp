#include "core/forms/CommonDialogStuff.h"

#include "core/base/Module1.h"

#include <QFileInfo>
#include <QImageReader>

namespace CommonDialogStuff {

QStringList PictureFilters()
{
    // The three classic formats first; whatever else this Qt build reads comes second,
    // so PNG or WebP pictures can start a map too.
    QStringList others;
    for (const QByteArray& format : QImageReader::supportedImageFormats()) {
        const QString pattern = QStringLiteral("*.") + QString::fromLatin1(format).toLower();
        if (!others.contains(pattern))
            others.append(pattern);
    }
    // Qt takes the patterns from the last parentheses and the dialog hides them, so
    // the caption keeps its classic ";" form while the patterns still match.
    return {QStringLiteral("Picture Files (*.jpg;*.gif;*.bmp) (*.jpg *.jpeg *.gif *.bmp)"),
            QStringLiteral("All Pictures (%1)").arg(others.join(QLatin1Char(' ')))};
}

QStringList MapFilters()
{
    return {QStringLiteral("Image Map Files (*.imp)")};
}

QString WithMapExtension(const QString& FileName)
{
    if (FileName.toLower().contains(QStringLiteral(".imp")))
        return FileName;
    return Module1::CutAtNul(FileName) + QStringLiteral(".imp");
}

QString ReplaceQuestion(const QString& ChosenName)
{
    const QString name = WithMapExtension(ChosenName);
    if (name == ChosenName || !QFileInfo::exists(name))
        return QString();
    return QStringLiteral("%1 already exists.\nDo you want to replace it?")
        .arg(QFileInfo(name).fileName());
}

} // namespace CommonDialogStuff
