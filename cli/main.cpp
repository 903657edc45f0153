#include "cli/CliRequest.h"
#include "cli/CliRunner.h"

#include <QCoreApplication>
#include <QFile>
#include <cstdio>

// vantrel-cli: the editor's file and code operations without a screen.
int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QFile out;
    QFile err;
    out.open(stdout, QIODevice::WriteOnly);
    err.open(stderr, QIODevice::WriteOnly);

    const std::optional<CliRequest> request = CliRequest::Parse(app.arguments().mid(1));
    if (!request) {
        err.write(CliRequest::Usage().toUtf8());
        return 2;
    }
    return CliRunner(out, err).Run(*request);
}
