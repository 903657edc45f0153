#pragma once

#include <QString>
#include <QStringList>

class QSettings;

// The last maps opened or saved, newest first, kept in the user's settings for
// File > Open Recent. At most Capacity entries; a path appears once.
class RecentFiles
{
public:
    static constexpr int Capacity = 8;

    explicit RecentFiles(QSettings& Settings);

    QStringList Paths() const;
    void Add(const QString& Path);
    void Remove(const QString& Path);
    void Clear();
    // Said when a listed map no longer exists and leaves the list.
    static QString MissingMessage(const QString& Path);
    // What the menu shows for each path: the file name, and its folder (the home folder
    // as "~") where two maps of the same name would otherwise look alike.
    static QStringList Labels(const QStringList& Paths, const QString& Home);

private:
    QSettings& m_settings;

    void Store(const QStringList& Paths);
};
