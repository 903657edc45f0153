#include "frame/HelpFile.h"

#include "frame/Module1.h"

#include <QDir>
#include <QFileInfo>

QStringList HelpFile::Candidates()
{
    QStringList places{Module1::ApplicationFolder() + FileName};
#ifdef VANTREL_DATA_DIR
    places.append(QDir(QStringLiteral(VANTREL_DATA_DIR)).filePath(FileName));
#endif
#ifdef VANTREL_SOURCE_HELP_DIR
    places.append(QDir(QStringLiteral(VANTREL_SOURCE_HELP_DIR)).filePath(FileName));
#endif
    return places;
}

QString HelpFile::Path()
{
    const QStringList places = Candidates();
    for (const QString& place : places) {
        if (QFileInfo::exists(place))
            return place;
    }
    return places.first();
}
