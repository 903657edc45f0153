#pragma once

#include "core/document/MapStep.h"
#include "core/shape/PatShape.h"

#include <cstdint>

class MapDocument;

// Delete or Cut of the top shape. Holds the one shape it removed and where it was;
// undo puts it back on top at its old index.
class DeleteShapeCommand : public MapStep
{
public:
    // Records Document's top shape; call before MapDocument::DeleteShape.
    DeleteShapeCommand(StepTarget& Target, const QString& Text, const MapDocument& Document);
    std::size_t Cost() const override;

protected:
    void Undo() override;
    void Redo() override;
    void Release() override;

private:
    std::int16_t m_index;
    PatShape m_shape;
};
