#include "core/document/MapChange.h"

#include "core/document/MapDocument.h"
#include "core/shape/ShapeSurface.h"

#include <algorithm>
#include <exception>

namespace {

std::size_t ShapeCost(const PatShape& s)
{
    const auto text = [](const QString& t) {
        return static_cast<std::size_t>(t.capacity()) * sizeof(QChar);
    };
    return sizeof(PatShape) + s.Points().capacity() * sizeof(ShapePoint) + text(s.URL) +
           text(s.Comment) + text(s.Target) + text(s.AlertString) + text(s.StatusString);
}

} // namespace

MapChange::MapChange(const MapDocument& Before, bool WithProperties)
    : m_countBefore(Before.Shapes().size()), m_orderBefore(Before.ShapeOrder()),
      m_touched(Before.Shapes().size(), false)
{
    if (WithProperties)
        m_propertiesBefore = MapProperties::Of(Before);
    if (!m_orderBefore.empty())
        Touch(Before, m_orderBefore.front());
}

void MapChange::Touch(const MapDocument& Document, std::int16_t Index)
{
    if (m_finished || Index < 0 || static_cast<std::size_t>(Index) >= m_touched.size() ||
        m_touched[static_cast<std::size_t>(Index)] || Index > Document.ItemCount())
        return;
    m_touched[static_cast<std::size_t>(Index)] = true;
    m_shapes.push_back({Index, Document.Shape(Index), PatShape{}});
}

void MapChange::TouchAll(const MapDocument& Document)
{
    m_shapes.reserve(m_touched.size());
    for (std::int16_t i = 0; i <= Document.ItemCount(); ++i)
        Touch(Document, i);
}

void MapChange::Finish(const MapDocument& After)
{
    m_finished = true;
    m_countAfter = After.Shapes().size();
    m_order = OrderChange(m_orderBefore, After.ShapeOrder());
    m_orderBefore = {};
    m_touched = {};
    if (m_propertiesBefore) {
        MapProperties after = MapProperties::Of(After);
        if (after == *m_propertiesBefore)
            m_propertiesBefore.reset();
        else
            m_propertiesAfter = std::move(after);
    }
    for (std::size_t i = m_countBefore; i < m_countAfter; ++i)
        m_added.push_back(After.Shapes()[i]);
    // Shapes removed from the end keep only their before state; the others only when
    // they changed.
    std::sort(m_shapes.begin(), m_shapes.end(),
              [](const ShapeState& a, const ShapeState& b) { return a.Index < b.Index; });
    std::vector<ShapeState> changed;
    for (ShapeState& s : m_shapes) {
        const auto index = static_cast<std::size_t>(s.Index);
        if (index >= m_countAfter) {
            m_removed.push_back(std::move(s.Before));
            continue;
        }
        const PatShape& now = After.Shapes()[index];
        // A shape only recoloured by restacking is kept too, so that its area is
        // repainted when the step is applied.
        if (SameShape(s.Before, now) && s.Before.ShapeColor == now.ShapeColor)
            continue;
        s.After = now;
        changed.push_back(std::move(s));
    }
    m_shapes = std::move(changed);
    m_shapes.shrink_to_fit();
}

bool MapChange::IsEmpty() const
{
    if (m_countBefore != m_countAfter || !m_order.IsEmpty() || m_propertiesAfter)
        return false;
    return std::all_of(m_shapes.begin(), m_shapes.end(),
                       [](const ShapeState& s) { return SameShape(s.Before, s.After); });
}

bool MapChange::OnlyRestacks() const
{
    return m_countBefore == m_countAfter && !m_order.IsEmpty() && !m_propertiesAfter &&
           std::all_of(m_shapes.begin(), m_shapes.end(),
                       [](const ShapeState& s) { return SameShape(s.Before, s.After); });
}

bool MapChange::ChangesView() const
{
    return m_propertiesAfter && m_propertiesBefore->ViewDiffers(*m_propertiesAfter);
}

std::int16_t MapChange::SoleShape() const
{
    if (m_countBefore != m_countAfter || !m_order.IsEmpty() || m_propertiesAfter ||
        m_shapes.size() != 1)
        return -1;
    return m_shapes.front().Index;
}

void MapChange::Absorb(const MapChange& Later)
{
    // Only used for changes of one and the same shape (merged nudges).
    for (ShapeState& mine : m_shapes) {
        for (const ShapeState& theirs : Later.m_shapes) {
            if (theirs.Index == mine.Index)
                mine.After = theirs.After;
        }
    }
}

void MapChange::Repaint(const MapDocument& Document) const
{
    ShapeSurface* surface = Document.Surface();
    if (surface == nullptr)
        return;
    const auto count = Document.Shapes().size();
    for (const ShapeState& s : m_shapes) {
        if (static_cast<std::size_t>(s.Index) < count)
            surface->InvalidateRect(
                Document.Shapes()[static_cast<std::size_t>(s.Index)].PaintBounds());
    }
    const std::size_t shared = std::min(m_countBefore, m_countAfter);
    for (std::size_t i = shared; i < count; ++i)
        surface->InvalidateRect(Document.Shapes()[i].PaintBounds());
    // The top shape is drawn last and in its own colour.
    if (!Document.ShapeOrder().empty())
        surface->InvalidateRect(Document.Shapes()[Document.ShapeOrder().front()].PaintBounds());
}

void MapChange::Apply(MapDocument& Document, bool ToAfter) const
{
    Repaint(Document);
    std::vector<PatShape>& shapes = Document.m_shapes;
    const std::size_t to = ToAfter ? m_countAfter : m_countBefore;
    const std::size_t shared = std::min(m_countBefore, m_countAfter);
    // The document's spatial index follows every shape put back.
    for (std::size_t i = shapes.size(); i > shared; --i)
        Document.m_index.Erased(i - 1);
    shapes.resize(shared);
    const std::vector<PatShape>& tail = ToAfter ? m_added : m_removed;
    shapes.insert(shapes.end(), tail.begin(), tail.end());
    for (std::size_t i = shared; i < shapes.size(); ++i)
        Document.m_index.Appended();
    for (const ShapeState& s : m_shapes) {
        shapes[static_cast<std::size_t>(s.Index)] = ToAfter ? s.After : s.Before;
        Document.m_index.Touched(static_cast<std::size_t>(s.Index));
    }
    m_order.Apply(Document.m_shapeOrder, ToAfter);
    Document.m_itemCount = static_cast<std::int16_t>(static_cast<std::int32_t>(to) - 1);
    if (const auto& properties = ToAfter ? m_propertiesAfter : m_propertiesBefore)
        properties->ApplyTo(Document);

    // Steps recorded at another zoom are shown at the present one.
    const auto restore = [&Document](PatShape& shape) {
        const double zoom = shape.Zoom();
        shape.SetOpenGeneralInfo(Document.Surface(), zoom);
        if (zoom != 0.0 && zoom != Document.ZoomLevel)
            shape.ResetPointsToZoom(Document.ZoomLevel);
    };
    for (const ShapeState& s : m_shapes)
        restore(shapes[static_cast<std::size_t>(s.Index)]);
    for (std::size_t i = shared; i < to; ++i)
        restore(shapes[i]);

    Document.PolygonInProgress = false;
    Document.SetShapeColors();
    if (Document.ItemCount() < 0) {
        Document.HitState = -2;
        Document.CurrentShape = 0;
    } else if (!Document.Shapes().back().IsShapeDone()) {
        // A step taken while a polygon was being drawn brings the drawing back.
        Document.PolygonInProgress = true;
        Document.CurrentShape = Document.ItemCount();
        Document.HitState = 0;
    } else {
        Document.CurrentShape = Document.ShapeOrder().front();
        if (Document.HitState > Document.TopShape().NumOfPoints())
            Document.HitState = -2;
    }
    Repaint(Document);
    if (ShapeSurface* surface = Document.Surface())
        surface->RepaintNow();
}

std::size_t MapChange::Cost() const
{
    std::size_t cost = sizeof(MapChange) + m_order.Cost();
    for (const ShapeState& s : m_shapes)
        cost += ShapeCost(s.Before) + ShapeCost(s.After);
    for (const PatShape& s : m_added)
        cost += ShapeCost(s);
    for (const PatShape& s : m_removed)
        cost += ShapeCost(s);
    if (m_propertiesAfter)
        cost += m_propertiesBefore->Cost() + m_propertiesAfter->Cost();
    return cost;
}

bool MapChange::SameShape(const PatShape& a, const PatShape& b)
{
    if (a.Zoom() != b.Zoom() && a.Zoom() != 0.0 && b.Zoom() != 0.0) {
        // Seen at the same zoom, a shape only rescaled by a zoom change is the same.
        PatShape scaled = a;
        scaled.SetOpenGeneralInfo(nullptr, a.Zoom());
        try {
            scaled.ResetPointsToZoom(b.Zoom());
        } catch (const std::exception&) {
            return false;
        }
        return SameShape(scaled, b);
    }
    return a.GetShapeType() == b.GetShapeType() && a.Points() == b.Points() &&
           a.Zoom() == b.Zoom() && a.ShapeBuildingFinished == b.ShapeBuildingFinished &&
           a.URL == b.URL && a.Comment == b.Comment && a.Target == b.Target &&
           a.AlertBox == b.AlertBox && a.AlertString == b.AlertString &&
           a.StatusString == b.StatusString;
}
