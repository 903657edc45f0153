#pragma once

#include <QUndoCommand>
#include <cstddef>

class StepTarget;

// One named step of a map's history. Steps are pushed after their change has been made
// (the window edits the map, then records what changed), so the first redo, which
// QUndoStack runs on push, does nothing.
class MapStep : public QUndoCommand
{
public:
    MapStep(StepTarget& Target, const QString& Text);

    void undo() final;
    void redo() final;
    // Bytes the step holds.
    virtual std::size_t Cost() const = 0;
    // Frees what the step holds to keep the history within its budget; the stack then
    // drops the step when it is reached.
    void Drop();

protected:
    StepTarget& m_target;

    virtual void Undo() = 0;
    virtual void Redo() = 0;
    virtual void Release() = 0;

private:
    bool m_pending = true;
};
