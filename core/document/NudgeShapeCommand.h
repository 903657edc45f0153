#pragma once

#include "core/document/EditShapesCommand.h"

// An arrow key moving a shape or one of its vertices by a pixel. Consecutive nudges of
// the same shape are one step.
class NudgeShapeCommand : public EditShapesCommand
{
public:
    static constexpr int Id = 1001;

    using EditShapesCommand::EditShapesCommand;
    int id() const override { return Id; }
    bool mergeWith(const QUndoCommand* Other) override;
};
