#include "core/interchange/RecoveryWriter.h"

#include "core/interchange/WholeFile.h"

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
        // The description goes first: a map file without one would never be offered.
        WholeFile::Result written = WholeFile::Replace(InfoPath, Info);
        if (written.ok)
            written = WholeFile::Replace(MapPath, Map);
        QMetaObject::invokeMethod(
            this, [this, Id, written] { emit Written(Id, written.ok, written.detail); },
            Qt::QueuedConnection);
    });
}

void RecoveryWriter::Wait() const
{
    m_pool.waitForDone();
}
