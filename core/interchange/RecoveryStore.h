#pragma once

#include "core/document/MapDocument.h"
#include "core/interchange/RecoveryWriter.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <functional>
#include <map>
#include <memory>
#include <vector>

class QLockFile;

// Recovery files of the maps being edited: every modified map is written, with the map
// file writer, to Folder about every Interval milliseconds when it changed since its
// last write, and its file goes when the map is saved, back at its saved state, or
// closed. Each run of the editor holds a lock file in Folder (with its process id);
// files whose run is no longer there are found by Scan, never those of a running one.
class RecoveryStore : public QObject
{
    Q_OBJECT
public:
    static constexpr int DefaultInterval = 30'000;

    // What the store asks of one open map.
    struct Source
    {
        std::function<const MapDocument&()> document;
        // The plain caption and the map's own file (empty when it was never saved).
        std::function<QString()> caption;
        std::function<QString()> fileName;
        std::function<bool()> modified;
        // In the middle of a mouse gesture: written once it ends.
        std::function<bool()> busy;
    };

    // A recovery file a run that ended without closing its map left behind.
    struct Found
    {
        QString caption;
        QString fileName;
        QString picture;
        QDateTime changed;
        QString mapPath;
        QString infoPath;
        bool ok = false;
        // When ok: the map as it was last written.
        MapDocument document;
        // When not: the reader's messages, and where the file was set aside.
        QStringList messages;
        QString keptAs;
    };

    explicit RecoveryStore(const QString& Folder, QObject* parent = nullptr);
    ~RecoveryStore() override;

    // The recovery folder of the user's data.
    static QString DefaultFolder();
    QString Folder() const { return m_folder; }

    // Creates the folder and takes this run's lock; starts the timer. False (and
    // WriteFailed) when the folder cannot be used: editing goes on without recovery.
    bool Start();
    QTimer& Timer() { return m_timer; }

    int Track(Source Map);
    // The map changed (a step done, undone or redone).
    void MapChanged(int Id);
    // The map is at its saved state again: its file goes.
    void MapSaved(int Id);
    // The map was closed by the user: its file goes.
    void Forget(int Id);
    // The map is gone without being closed (the program is ending some other way): its
    // file stays, to be offered at the next start.
    void Drop(int Id);
    // Writes each map that changed since its last write now (what the timer runs). The
    // map's text is made here; the files are written on a thread of their own.
    void WriteDue();
    // The recovery file of map Id once the writes asked for are done, empty while it has
    // none.
    QString FileOf(int Id) const;

    // The recovery files of runs that are gone. Their runs' locks are held from here on
    // until Release, so that another run starting now does not offer them too.
    // Unreadable files are renamed to *.bad, and say why.
    std::vector<Found> Scan();
    // Removes a found map's files (recovered into this run, or discarded).
    void Remove(const Found& Map);
    // Lets go of the runs Scan took over; files still there are offered next time.
    void Release();

signals:
    // Once, when files cannot be written (again after a write succeeded).
    void WriteFailed(const QString& Text);

private:
    struct Slot
    {
        Source source;
        bool dirty = false;
        QDateTime changed;
        QString base;
    };

    QString m_folder;
    QString m_session;
    std::unique_ptr<QLockFile> m_lock;
    std::vector<std::unique_ptr<QLockFile>> m_claimed;
    std::map<int, Slot> m_slots;
    int m_nextId = 0;
    QTimer m_timer;
    bool m_failing = false;
    // Declared after the lock, so that its pending writes finish while the lock is held.
    RecoveryWriter m_writer;

    void Write(int Id, const Slot& Map);
    void WriteDone(int Id, bool Ok, const QString& Detail);
    void RemoveFiles(Slot& Map);
    void Failed(const QString& Detail);
    Found Read(const QString& InfoPath);
};
