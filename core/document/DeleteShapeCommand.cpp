#include "core/document/DeleteShapeCommand.h"

#include "core/document/MapDocument.h"
#include "core/document/StepTarget.h"

DeleteShapeCommand::DeleteShapeCommand(StepTarget& Target, const QString& Text,
                                       const MapDocument& Document)
    : MapStep(Target, Text), m_index(Document.ShapeOrder().front()),
      m_shape(Document.Shape(m_index))
{
}

std::size_t DeleteShapeCommand::Cost() const
{
    return sizeof(DeleteShapeCommand) + m_shape.Points().capacity() * sizeof(ShapePoint) +
           static_cast<std::size_t>(m_shape.URL.capacity() + m_shape.Comment.capacity() +
                                    m_shape.Target.capacity() + m_shape.StatusString.capacity() +
                                    m_shape.AlertString.capacity()) *
               sizeof(QChar);
}

void DeleteShapeCommand::Undo()
{
    m_target.StepDocument().InsertTopShape(m_index, m_shape);
}

void DeleteShapeCommand::Redo()
{
    MapDocument& document = m_target.StepDocument();
    document.PolygonInProgress = false;
    document.ReStackArrayFromOptions(m_index);
    document.DeleteShape();
}

void DeleteShapeCommand::Release()
{
    m_shape = PatShape();
}
