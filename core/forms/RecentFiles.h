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

private:
    QSettings& m_settings;

    void Store(const QStringList& Paths);
};
