#include "core/interchange/WholeFile.h"

#include <QSaveFile>
#include <cerrno>

WholeFile::Result WholeFile::Replace(const QString& Path, const QByteArray& Bytes,
                                     std::optional<QFileDevice::Permissions> Mode)
{
    Result result;
    QSaveFile file(Path);
    // Unbuffered, so that a short write (disk full) shows in write()'s count: a buffered
    // flush does not report it and commit() would keep the truncated file.
    errno = 0;
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
        (!Mode || file.setPermissions(*Mode)) && file.write(Bytes) == Bytes.size() &&
        file.commit()) {
        result.ok = true;
        return result;
    }
    // The system's own words: a short write leaves only "Unknown error" in the device.
    const int cause = errno;
    result.detail = cause != 0 ? qt_error_string(cause) : file.errorString();
    file.cancelWriting();
    return result;
}
