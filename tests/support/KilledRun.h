#pragma once

#include <QFile>
#include <QProcess>
#include <QString>

// What an editor killed in the middle of editing leaves in the recovery folder: the
// map's recovery file and its description, and a lock naming a process that is gone.
// Returns the new map file's path.
inline QString LeaveAsKilled(const QString& Folder, const QString& MapFile)
{
    // The process id of a program that has ended.
    QProcess process;
    process.start(QStringLiteral("true"), {});
    process.waitForStarted();
    const qint64 pid = process.processId();
    process.waitForFinished();
    const QString session = QStringLiteral("%1-1").arg(pid);
    const QString base = Folder + QLatin1Char('/') + session + QStringLiteral("-0");
    QFile::copy(MapFile, base + QStringLiteral(".imp"));
    QFile::copy(MapFile.left(MapFile.size() - 4) + QStringLiteral(".json"),
                base + QStringLiteral(".json"));
    QFile lock(Folder + QLatin1Char('/') + session + QStringLiteral(".lock"));
    lock.open(QIODevice::WriteOnly);
    lock.write(QByteArray::number(pid) + "\nvantrel\n\n");
    return base + QStringLiteral(".imp");
}
