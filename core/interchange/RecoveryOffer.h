#pragma once

#include "core/interchange/RecoveryStore.h"

#include <QString>
#include <QStringList>
#include <vector>

// What the "Recover Maps" dialog offers at start-up: the maps left by runs that ended
// without closing them, each recovered or discarded by the user, and the files that
// could not be read (already set aside), each with the reader's reason.
class RecoveryOffer
{
public:
    explicit RecoveryOffer(RecoveryStore& Store);
    // Releases the store's hold on the runs it found.
    ~RecoveryOffer();
    RecoveryOffer(const RecoveryOffer&) = delete;
    RecoveryOffer& operator=(const RecoveryOffer&) = delete;

    // Nothing to offer and nothing to tell.
    bool IsEmpty() const { return m_maps.empty() && m_problems.isEmpty(); }
    int Count() const { return static_cast<int>(m_maps.size()); }
    const RecoveryStore::Found& At(int Row) const { return m_maps.at(std::size_t(Row)); }
    // The row's picture file name and time of its last change, as the dialog shows them.
    static QString PictureText(const RecoveryStore::Found& Map);
    static QString ChangedText(const RecoveryStore::Found& Map);
    // One line per unreadable file: which map, why, and where it was kept.
    const QStringList& Problems() const { return m_problems; }

    // The row leaves the list; its map is handed out by TakeRecovered.
    void Recover(int Row);
    // The row leaves the list and its files are removed.
    void Discard(int Row);
    // The maps chosen for recovery, to open as modified maps. Their recovery files stay
    // until Adopted: the run that opens them must have written them first.
    std::vector<RecoveryStore::Found> TakeRecovered();
    void Adopted(const RecoveryStore::Found& Map);

private:
    RecoveryStore& m_store;
    std::vector<RecoveryStore::Found> m_maps;
    std::vector<RecoveryStore::Found> m_recovered;
    QStringList m_problems;
};
