#include "core/document/EditShapesCommand.h"

#include "core/document/MapDocument.h"
#include "core/document/StepTarget.h"

EditShapesCommand::EditShapesCommand(StepTarget& Target, const QString& Text, MapChange Change)
    : MapStep(Target, Text), m_change(std::move(Change))
{
}

std::size_t EditShapesCommand::Cost() const
{
    return sizeof(EditShapesCommand) + m_change.Cost();
}

void EditShapesCommand::Undo()
{
    Apply(false);
}

void EditShapesCommand::Redo()
{
    Apply(true);
}

void EditShapesCommand::Apply(bool ToAfter)
{
    m_change.Apply(m_target.StepDocument(), ToAfter);
    if (m_change.ChangesView())
        m_target.StepChangedView();
}

void EditShapesCommand::Release()
{
    m_change = MapChange(MapDocument(), false);
}
