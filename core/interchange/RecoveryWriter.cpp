#include "core/interchange/RecoveryWriter.h"

#include <QSaveFile>
#include <cerrno>

namespace {

// Writes Bytes to Path atomically; the system's words in Detail when that fails.
bool Commit(const QString& Path, const QByteArray& Bytes, QString& Detail)
{
    QSaveFile file(Path);
    // Unbuffered, so that a short write (disk full) shows in write()'s count.
    errno = 0;
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
        file.write(Bytes) == Bytes.size() && file.commit())
        return true;
    // A short write leaves only "Unknown error" in the device.
    const int cause = errno;
    Detail = cause != 0 ? qt_error_string(cause) : file.errorString();
    file.cancelWriting();
    return false;
}

} // namespace

RecoveryWriter::RecoveryWriter(QObject* parent) : QObject(parent)
{
    // One thread: the queue's order is the order on disk.
    m_pool.setMaxThreadCount(1);
    m_pool.setExpiryTimeout(-1);
}

RecoveryWriter::~RecoveryWriter()
{
    m_pool.waitForDone();
}

void RecoveryWriter::Write(int Id, const QString& InfoPath, const QByteArray& Info,
                           const QString& MapPath, const QByteArray& Map)
{
    m_pool.start([this, Id, InfoPath, Info, MapPath, Map] {
        QString detail;
        // The description goes first: a map file without one would never be offered.
        const bool ok = Commit(InfoPath, Info, detail) && Commit(MapPath, Map, detail);
        QMetaObject::invokeMethod(
            this, [this, Id, ok, detail] { emit Written(Id, ok, detail); }, Qt::QueuedConnection);
    });
}

void RecoveryWriter::Wait() const
{
    m_pool.waitForDone();
}
