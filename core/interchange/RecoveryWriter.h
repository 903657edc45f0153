#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QThreadPool>

// Writes recovery files on a thread of its own, strictly in the order they
// were asked for, so that writing a big map (and waiting for the disk to take it) never
// holds up the editor. Outcomes come back on the thread the writer belongs to.
class RecoveryWriter : public QObject
{
    Q_OBJECT
public:
    explicit RecoveryWriter(QObject* parent = nullptr);
    // Finishes everything asked for first: nothing is lost when the editor ends.
    ~RecoveryWriter() override;

    // Replaces the file at InfoPath with Info, then the one at MapPath with Map; a failed
    // write leaves the earlier file whole and skips the map.
    void Write(int Id, const QString& InfoPath, const QByteArray& Info, const QString& MapPath,
               const QByteArray& Map);
    // Returns when everything asked for so far is done.
    void Wait() const;

signals:
    // The outcome of Write(Id, ...); Detail holds the system's words when it failed.
    void Written(int Id, bool Ok, const QString& Detail);

private:
    mutable QThreadPool m_pool;
};
