#pragma once

#include <QString>
#include <QStringList>

class ModalUi;

// Where the user manual is and where "Corvane Online" goes.
class HelpFile
{
public:
    static inline const QString FileName = QStringLiteral("Vantrel Help File.html");
    static inline const QString OnlineAddress = QStringLiteral("https://vantrel.example.org/");
    static inline const QString LoadError =
        QStringLiteral("There was an error while trying to load the file.");
    static inline const QString BrowserError =
        QStringLiteral("There was an error while trying to open the default browser.");

    // Beside the load error: which file, and whether it is there at all.
    static QString ManualDetail(const QString& Path, bool Exists)
    {
        return Exists ? QStringLiteral("The manual is \"%1\"; no program opened it.").arg(Path)
                      : QStringLiteral("The manual \"%1\" is missing.").arg(Path);
    }

    // The places looked in, in order: the program's folder, the data folder beside it,
    // the data folder of the configured install prefix, the source tree (a build run
    // in place).
    static QStringList Candidates();
    // The first candidate that exists; the first candidate when none does, so the
    // desktop reports the missing file.
    static QString Path();

    // Opens the manual (or the web site) in the desktop's browser; tells the user when
    // that fails. True when it opened.
    static bool ShowManual(ModalUi& Ui);
    static bool ShowOnline(ModalUi& Ui);
};
