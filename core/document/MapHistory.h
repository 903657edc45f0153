#pragma once

#include "core/document/MapChange.h"

#include <QUndoStack>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

class MapStep;
class StepTarget;

// A map's undo history: its QUndoStack, kept within a memory budget (oldest steps are
// dropped first), and the ways an edit becomes a step.
//
// To make an edit undoable, run it through Record:
//
//     history.Record(QStringLiteral("Edit URL"), {index}, false, [&] { doc.SetURL(index, url); });
//
// Indices names the existing shapes the edit may change (the top shape is always
// recorded); WithProperties records the map's own fields (name, colours, grid, image
// size, default area) too. Shapes appended at the end of the list are recorded
// without being named. Nothing is pushed when nothing changed; when the edit throws,
// the recorded shapes are put back and the exception goes on.
class MapHistory
{
public:
    static constexpr std::size_t DefaultBudget = std::size_t{64} << 20;

    explicit MapHistory(StepTarget& Target);
    ~MapHistory();

    QUndoStack& Stack() { return m_stack; }
    const QUndoStack& Stack() const { return m_stack; }

    bool Record(const QString& Name, const std::vector<std::int16_t>& Indices, bool WithProperties,
                const std::function<void()>& Edit);
    // The same for an edit that may change every shape (import, properties dialog).
    bool RecordAll(const QString& Name, bool WithProperties, const std::function<void()>& Edit);
    // Runs Edit and returns what it changed, for callers that push their own kind of
    // step; nullopt when nothing changed.
    std::optional<MapChange> Capture(const std::vector<std::int16_t>& Indices, bool WithProperties,
                                     bool AllShapes, const std::function<void()>& Edit);
    // Takes Step, whose change has already been made, onto the stack.
    void Push(MapStep* Step);

    // A mouse gesture (press to release; a polygon from its first vertex to the one
    // that closes it) is one step.
    // AllShapes: the gesture may change any shape, not only the ones it touches.
    void BeginGesture(bool AllShapes = false);
    bool GestureOpen() const { return m_gesture.has_value(); }
    // Records shape Index before the gesture changes it.
    void TouchInGesture(std::int16_t Index);
    // Pushes the gesture as a step named Name (unless nothing changed) and ends it;
    // RestackName names it when it changed only the stacking order.
    bool FinishGesture(const QString& Name, const QString& RestackName);
    // Puts the map back as it was when the gesture began and ends it.
    void CancelGesture();
    // What the open gesture changed so far: whether it added a shape.
    bool GestureAddsShapes() const;

    // Undo and Redo as the user asks for them: an open gesture (an unfinished polygon)
    // is cancelled first and counts as the step undone.
    void Undo();
    void Redo();

    void SetBudget(std::size_t Bytes) { m_budget = Bytes; }
    // Bytes held by the steps on the stack.
    std::size_t Cost() const;

private:
    StepTarget& m_target;
    QUndoStack m_stack;
    std::size_t m_budget = DefaultBudget;
    std::optional<MapChange> m_gesture;

    void KeepWithinBudget();
};
