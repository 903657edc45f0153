#include "core/forms/FolderMemory.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

namespace {

QString Key(FolderMemory::Kind Which)
{
    return Which == FolderMemory::Kind::Picture ? QStringLiteral("Folders/Pictures")
                                                : QStringLiteral("Folders/Maps");
}

} // namespace

FolderMemory::FolderMemory(QSettings& Settings) : m_settings(Settings) {}

QString FolderMemory::Folder(Kind Which, const QString& Fallback) const
{
    const QString folder = m_settings.value(Key(Which)).toString();
    if (!folder.isEmpty() && QFileInfo(folder).isDir())
        return folder;
    return Fallback;
}

void FolderMemory::Remember(Kind Which, const QString& FilePath)
{
    if (FilePath.isEmpty())
        return;
    m_settings.setValue(Key(Which), QFileInfo(FilePath).absolutePath());
}
