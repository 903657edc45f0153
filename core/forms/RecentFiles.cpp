#include "core/forms/RecentFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

namespace {

const QString Key = QStringLiteral("RecentMaps");

// One spelling per file, so that the same map opened twice is listed once.
QString Normal(const QString& Path)
{
    return QDir::cleanPath(QFileInfo(Path).absoluteFilePath());
}

} // namespace

RecentFiles::RecentFiles(QSettings& Settings) : m_settings(Settings) {}

QStringList RecentFiles::Paths() const
{
    QStringList paths = m_settings.value(Key).toStringList();
    paths.removeAll(QString());
    return paths.mid(0, Capacity);
}

void RecentFiles::Add(const QString& Path)
{
    if (Path.isEmpty())
        return;
    const QString path = Normal(Path);
    QStringList paths = Paths();
    paths.removeAll(path);
    paths.prepend(path);
    Store(paths.mid(0, Capacity));
}

void RecentFiles::Remove(const QString& Path)
{
    QStringList paths = Paths();
    paths.removeAll(Path);
    paths.removeAll(Normal(Path));
    Store(paths);
}

void RecentFiles::Clear()
{
    Store({});
}

QString RecentFiles::MissingMessage(const QString& Path)
{
    return QStringLiteral("The map \"%1\" no longer exists; it has been removed from the list of "
                          "recent maps.")
        .arg(QDir::toNativeSeparators(Path));
}

void RecentFiles::Store(const QStringList& Paths)
{
    m_settings.setValue(Key, Paths);
}

QStringList RecentFiles::Labels(const QStringList& Paths, const QString& Home)
{
    QStringList names;
    for (const QString& path : Paths)
        names << QFileInfo(path).fileName();
    QStringList labels;
    for (qsizetype i = 0; i < Paths.size(); ++i) {
        if (names.count(names.at(i)) == 1) {
            labels << names.at(i);
            continue;
        }
        QString folder = QFileInfo(Paths.at(i)).absolutePath();
        const QString home = QDir::cleanPath(Home);
        if (!home.isEmpty() && home != QLatin1String("/") &&
            (folder == home || folder.startsWith(home + QLatin1Char('/'))))
            folder = QLatin1Char('~') + folder.mid(home.size());
        labels << QStringLiteral("%1 (%2)").arg(names.at(i), QDir::toNativeSeparators(folder));
    }
    return labels;
}
