#include "core/interchange/PictureAddress.h"

#include <QUrl>

QString PictureAddress::ClassicTestSource(const QString& folder, const QString& name)
{
    if (folder.startsWith(QLatin1Char('/'))) {
        const bool slash = folder.endsWith(QLatin1Char('/'));
        return QLatin1String("file://") + folder + (slash ? QString() : QStringLiteral("/")) + name;
    }
    QString p = folder;
    p.replace(QLatin1Char(':'), QLatin1Char('|'));
    return QLatin1String("file:///") + p + name;
}

QString PictureAddress::FileUrl(const QString& Folder, const QString& Name)
{
    // Maps made on Windows keep backslashes in their folder.
    QString path = Folder;
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (!path.isEmpty() && !path.endsWith(QLatin1Char('/')))
        path += QLatin1Char('/');
    path += Name;
    if (path.size() >= 2 && path[1] == QLatin1Char(':'))
        path.prepend(QLatin1Char('/'));
    return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
}
