#include "core/document/MapStep.h"

#include "core/document/StepTarget.h"

MapStep::MapStep(StepTarget& Target, const QString& Text) : QUndoCommand(Text), m_target(Target) {}

void MapStep::undo()
{
    if (isObsolete())
        return;
    Undo();
    m_target.StepApplied();
}

void MapStep::redo()
{
    if (m_pending) {
        m_pending = false;
        return;
    }
    if (isObsolete())
        return;
    Redo();
    m_target.StepApplied();
}

void MapStep::Drop()
{
    Release();
    setObsolete(true);
}
