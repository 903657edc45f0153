#include "core/document/MapHistory.h"

#include "core/document/EditShapesCommand.h"
#include "core/document/MapDocument.h"
#include "core/document/MapStep.h"
#include "core/document/StepTarget.h"

MapHistory::MapHistory(StepTarget& Target) : m_target(Target) {}

MapHistory::~MapHistory() = default;

std::optional<MapChange> MapHistory::Capture(const std::vector<std::int16_t>& Indices,
                                             bool WithProperties, bool AllShapes,
                                             const std::function<void()>& Edit)
{
    MapDocument& document = m_target.StepDocument();
    MapChange change(document, WithProperties);
    if (AllShapes)
        change.TouchAll(document);
    for (const std::int16_t index : Indices)
        change.Touch(document, index);
    try {
        Edit();
    } catch (...) {
        change.Finish(document);
        change.Apply(document, false);
        throw;
    }
    change.Finish(document);
    if (change.IsEmpty())
        return std::nullopt;
    return change;
}

bool MapHistory::Record(const QString& Name, const std::vector<std::int16_t>& Indices,
                        bool WithProperties, const std::function<void()>& Edit)
{
    std::optional<MapChange> change = Capture(Indices, WithProperties, false, Edit);
    if (!change)
        return false;
    Push(new EditShapesCommand(m_target, Name, std::move(*change)));
    return true;
}

bool MapHistory::RecordAll(const QString& Name, bool WithProperties,
                           const std::function<void()>& Edit)
{
    std::optional<MapChange> change = Capture({}, WithProperties, true, Edit);
    if (!change)
        return false;
    Push(new EditShapesCommand(m_target, Name, std::move(*change)));
    return true;
}

void MapHistory::Push(MapStep* Step)
{
    m_stack.push(Step);
    KeepWithinBudget();
}

void MapHistory::BeginGesture(bool AllShapes)
{
    if (!m_gesture)
        m_gesture.emplace(m_target.StepDocument(), false);
    if (AllShapes)
        m_gesture->TouchAll(m_target.StepDocument());
}

void MapHistory::TouchInGesture(std::int16_t Index)
{
    if (m_gesture)
        m_gesture->Touch(m_target.StepDocument(), Index);
}

bool MapHistory::GestureAddsShapes() const
{
    return m_gesture && m_target.StepDocument().Shapes().size() > m_gesture->CountBefore();
}

bool MapHistory::FinishGesture(const QString& Name, const QString& RestackName)
{
    if (!m_gesture)
        return false;
    MapChange change = std::move(*m_gesture);
    m_gesture.reset();
    change.Finish(m_target.StepDocument());
    if (change.IsEmpty())
        return false;
    const QString& name = change.OnlyRestacks() ? RestackName : Name;
    Push(new EditShapesCommand(m_target, name, std::move(change)));
    return true;
}

void MapHistory::CancelGesture()
{
    if (!m_gesture)
        return;
    MapChange change = std::move(*m_gesture);
    m_gesture.reset();
    MapDocument& document = m_target.StepDocument();
    change.Finish(document);
    change.Apply(document, false);
}

void MapHistory::Undo()
{
    if (m_gesture) {
        CancelGesture();
        return;
    }
    m_stack.undo();
}

void MapHistory::Redo()
{
    // Nothing to redo while something new is being drawn.
    if (!m_gesture)
        m_stack.redo();
}

std::size_t MapHistory::Cost() const
{
    std::size_t cost = 0;
    for (int i = 0; i < m_stack.count(); ++i) {
        if (const auto* step = dynamic_cast<const MapStep*>(m_stack.command(i)))
            cost += step->Cost();
    }
    return cost;
}

void MapHistory::KeepWithinBudget()
{
    std::size_t cost = Cost();
    if (cost <= m_budget)
        return;
    // Drop down to three quarters, so that a long session does not trim at every step;
    // the newest step always stays.
    const std::size_t target = m_budget / 4 * 3;
    for (int i = 0; i + 1 < m_stack.index() && cost > target; ++i) {
        const auto* step = dynamic_cast<const MapStep*>(m_stack.command(i));
        if (step == nullptr || step->isObsolete())
            continue;
        cost -= step->Cost();
        // The stack owns its commands and hands them out const only.
        const_cast<MapStep*>(step)->Drop();
    }
}
