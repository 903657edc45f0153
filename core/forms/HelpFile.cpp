#include "core/forms/HelpFile.h"

#include "core/base/ModalUi.h"
#include "core/base/Module1.h"

#include <QDir>
#include <QFileInfo>

QStringList HelpFile::Candidates()
{
    const QString programFolder = Module1::ApplicationFolder();
    QStringList places{programFolder + FileName};
    // An installed program: bin/ beside share/vantrel/, wherever the prefix is.
    places.append(QDir::cleanPath(programFolder + QStringLiteral("../share/vantrel/") + FileName));
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

bool HelpFile::ShowManual(ModalUi& Ui)
{
    const QString path = Path();
    if (Ui.OpenWithDesktop(path))
        return true;
    Ui.DetailedMessage(LoadError, ModalUi::Icon::Critical,
                       ManualDetail(QDir::toNativeSeparators(path), QFileInfo::exists(path)));
    return false;
}

bool HelpFile::ShowOnline(ModalUi& Ui)
{
    if (Ui.OpenWithDesktop(OnlineAddress))
        return true;
    Ui.Message(BrowserError, ModalUi::Icon::Critical);
    return false;
}
