#include "cli/CliRequest.h"
#include "cli/CliRunner.h"

#include <QCoreApplication>
#include <QFile>
#include <QLoggingCategory>
#include <cstdio>

// vantrel-cli: the editor's file and code operations without a screen.
int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    // Standard error carries the program's own messages only; Qt's notes about a picture
    // it refuses would come before them.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.gui.imageio.warning=false"));
    QFile out;
    QFile err;
    out.open(stdout, QIODevice::WriteOnly);
    err.open(stderr, QIODevice::WriteOnly);

    QString why;
    const std::optional<CliRequest> request = CliRequest::Parse(app.arguments().mid(1), &why);
    if (!request) {
        // What is wrong comes last, right above the prompt.
        err.write((CliRequest::Usage() + QStringLiteral("vantrel-cli: %1\n").arg(why)).toUtf8());
        return 2;
    }
    return CliRunner(out, err).Run(*request);
}
