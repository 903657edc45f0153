#pragma once

#include <QString>

class QSettings;

// The folder each kind of file was last opened from or saved to, so that the next
// file dialog for that kind starts there. Kept in the user's settings.
class FolderMemory
{
public:
    enum class Kind { Picture, Map };

    explicit FolderMemory(QSettings& Settings);

    // The remembered folder if it still exists, else Fallback.
    QString Folder(Kind Which, const QString& Fallback) const;
    // Remembers the folder of FilePath.
    void Remember(Kind Which, const QString& FilePath);

private:
    QSettings& m_settings;
};
