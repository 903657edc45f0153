#include "ui/frame/RecoveryKeeper.h"

#include "ui/canvas/ShapeCanvas.h"

#include <QUndoStack>

RecoveryKeeper::RecoveryKeeper(const QString& Folder, QObject* parent)
    : QObject(parent), m_store(Folder)
{
}

void RecoveryKeeper::Track(ShapeCanvas& Map)
{
    if (m_ids.contains(&Map))
        return;
    RecoveryStore::Source source;
    source.document = [&Map]() -> const MapDocument& { return Map.Document(); };
    source.caption = [&Map] { return Map.windowTitle(); };
    source.fileName = [&Map] { return Map.FileName(); };
    source.modified = [&Map] { return Map.IsModified(); };
    source.busy = [&Map] { return Map.History().GestureOpen(); };
    const int id = m_store.Track(std::move(source));
    m_ids.insert(&Map, id);
    if (Map.IsModified())
        m_store.MapChanged(id);
    connect(&Map.UndoStack(), &QUndoStack::indexChanged, this,
            [this, id] { m_store.MapChanged(id); });
    connect(&Map.UndoStack(), &QUndoStack::cleanChanged, this, [this, id](bool clean) {
        if (clean)
            m_store.MapSaved(id);
        else
            m_store.MapChanged(id);
    });
    connect(&Map, &ShapeCanvas::CloseConfirmed, this, [this, id] { m_store.Forget(id); });
    // The map's own parts are gone by then; only its id is used.
    const ShapeCanvas* key = &Map;
    connect(&Map, &QObject::destroyed, this, [this, id, key] {
        m_ids.remove(key);
        m_store.Drop(id);
    });
}

QString RecoveryKeeper::FileOf(const ShapeCanvas& Map) const
{
    const auto found = m_ids.constFind(&Map);
    return found == m_ids.constEnd() ? QString() : m_store.FileOf(*found);
}
