#include "core/document/MapStep.h"

MapStep::MapStep(StepTarget& Target, const QString& Text) : QUndoCommand(Text), m_target(Target) {}

void MapStep::undo()
{
    if (!isObsolete())
        Undo();
}

void MapStep::redo()
{
    if (m_pending) {
        m_pending = false;
        return;
    }
    if (!isObsolete())
        Redo();
}

void MapStep::Drop()
{
    Release();
    setObsolete(true);
}
