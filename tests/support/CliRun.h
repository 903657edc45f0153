#pragma once

#include "FileBytes.h"

#include <QProcess>
#include <QStringList>

// What a command-line program printed; exitCode stays -1 if it crashed or hung.
struct Run
{
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

inline Run Finish(QProcess& process, const QString& program, const QStringList& arguments)
{
    process.start(program, arguments);
    Run run;
    if (process.waitForFinished(30000) && process.exitStatus() == QProcess::NormalExit)
        run = {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    return run;
}

// vantrel-cli started in a folder.
inline Run RunCli(const QString& folder, const QStringList& arguments)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    return Finish(process, QStringLiteral(VANTREL_CLI), arguments);
}
