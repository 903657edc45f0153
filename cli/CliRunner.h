#pragma once

#include "cli/CliRequest.h"

#include <QStringList>
#include <optional>

class MapDocument;
class QIODevice;

// Carries out one vantrel-cli request. What the editor would show in message boxes goes
// to Err, one message per line; results go to Out. Returns the exit status: 0 done,
// 1 failed.
class CliRunner
{
public:
    CliRunner(QIODevice& Out, QIODevice& Err);
    int Run(const CliRequest& Request);

private:
    int Html(const CliRequest& Request);
    int Dump(const CliRequest& Request);
    int Save(const CliRequest& Request);
    int Import(const CliRequest& Request);
    int New(const CliRequest& Request);
    int TestPage(const CliRequest& Request);
    // --format html5|svg (CliWebCommands.cpp)
    int WebHtml(const CliRequest& Request);
    int WebTestPage(const CliRequest& Request);
    // Exit 3 when findings were printed.
    int Lint(const CliRequest& Request);
    // import --keep-text --add --map NAME
    int ImportWithOptions(const CliRequest& Request);

    // The map at Path, or nothing after its messages were printed.
    std::optional<MapDocument> Open(const QString& Path);
    // The code file at Path as text, or nothing after its message was printed.
    std::optional<QString> ReadCode(const QString& Path);
    // Saves under Path's absolute name (which line 2 records).
    int SaveAs(const MapDocument& Document, const QString& Path);
    // Prints Messages, then Detail (the cause) on a line of its own when there is one.
    int Fail(const QStringList& Messages, const QString& Detail = QString());

    QIODevice& m_out;
    QIODevice& m_err;
};
