#pragma once

#include "core/interchange/RecoveryStore.h"

#include <QObject>

class ShapeCanvas;

// Connects the open map windows to the recovery files: a map's changes, saves and
// closing reach the store.
class RecoveryKeeper : public QObject
{
    Q_OBJECT
public:
    explicit RecoveryKeeper(const QString& Folder, QObject* parent = nullptr);

    RecoveryStore& Store() { return m_store; }
    void Track(ShapeCanvas& Map);
    // The recovery file of Map, empty while it has none.
    QString FileOf(const ShapeCanvas& Map) const;

private:
    RecoveryStore m_store;
    QHash<const ShapeCanvas*, int> m_ids;
};
