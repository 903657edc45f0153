#include "core/document/NudgeShapeCommand.h"

bool NudgeShapeCommand::mergeWith(const QUndoCommand* Other)
{
    // Only the same kind of nudge (whole shape, or vertex) of the same shape merges.
    const auto* other = dynamic_cast<const NudgeShapeCommand*>(Other);
    if (other == nullptr || other->text() != text() || isObsolete())
        return false;
    const std::int16_t shape = m_change.SoleShape();
    if (shape < 0 || other->m_change.SoleShape() != shape)
        return false;
    m_change.Absorb(other->m_change);
    return true;
}
