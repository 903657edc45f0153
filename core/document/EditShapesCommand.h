#pragma once

#include "core/document/MapChange.h"
#include "core/document/MapStep.h"

// Any edit recorded as a MapChange: drawing, moving, reshaping, restacking, morphing,
// pasting, the properties dialog, colours, grid, image size and HTML import. Its name
// is what the user did ("Move Shape").
class EditShapesCommand : public MapStep
{
public:
    EditShapesCommand(StepTarget& Target, const QString& Text, MapChange Change);
    std::size_t Cost() const override;

protected:
    MapChange m_change;

    void Undo() override;
    void Redo() override;
    void Release() override;

private:
    void Apply(bool ToAfter);
};
