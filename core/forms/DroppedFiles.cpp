#include "core/forms/DroppedFiles.h"

#include <QMimeData>
#include <QUrl>

QStringList DroppedFiles::Paths(const QMimeData* Data)
{
    QStringList paths;
    if (Data == nullptr || !Data->hasUrls())
        return paths;
    for (const QUrl& url : Data->urls()) {
        if (url.isLocalFile() && !url.toLocalFile().isEmpty())
            paths.append(url.toLocalFile());
    }
    return paths;
}
