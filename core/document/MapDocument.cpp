#include "core/document/MapDocument.h"

#include "core/base/Numeric.h"
#include "core/shape/ShapeSurface.h"

#include <algorithm>
#include <numeric>

MapDocument::MapDocument() = default;

PatShape& MapDocument::Shape(std::int16_t Index)
{
    if (Index < 0 || Index > m_itemCount)
        throw IndexOutOfRangeError();
    m_index.Touched(static_cast<std::size_t>(Index));
    return m_shapes[static_cast<std::size_t>(Index)];
}

const PatShape& MapDocument::Shape(std::int16_t Index) const
{
    if (Index < 0 || Index > m_itemCount)
        throw IndexOutOfRangeError();
    return m_shapes[static_cast<std::size_t>(Index)];
}

PatShape& MapDocument::TopShape()
{
    if (m_itemCount < 0)
        throw IndexOutOfRangeError();
    return Shape(m_shapeOrder.front());
}

std::int16_t MapDocument::AddShape()
{
    const std::int16_t index = ToInt16(static_cast<std::int64_t>(m_itemCount) + 1);
    m_shapes.emplace_back();
    m_shapeOrder.push_back(index);
    m_index.Appended();
    m_itemCount = index;
    return index;
}

void MapDocument::BringToTop(std::int16_t NewTopIndex)
{
    if (NewTopIndex < 0 || NewTopIndex > m_itemCount)
        throw IndexOutOfRangeError();
    if (m_shapeOrder.front() == NewTopIndex)
        return;
    Shape(m_shapeOrder.front()).ShapeColor = NonFocusColor;
    const auto found = std::find(m_shapeOrder.begin(), m_shapeOrder.end(), NewTopIndex);
    const auto p = found == m_shapeOrder.end() ? m_shapeOrder.begin() : found;
    std::move_backward(m_shapeOrder.begin(), p, p + 1);
    m_shapeOrder.front() = NewTopIndex;
    Shape(NewTopIndex).ShapeColor = FocusColor;
}

void MapDocument::DeleteShape()
{
    if (m_itemCount == -1)
        return;
    const std::int16_t d = m_shapeOrder.front();
    m_shapes.erase(m_shapes.begin() + d);
    m_index.Erased(static_cast<std::size_t>(d));
    m_shapeOrder.erase(m_shapeOrder.begin());
    for (std::int16_t& entry : m_shapeOrder) {
        if (entry >= d)
            --entry;
    }
    HitState = -2;
    --m_itemCount;
    ClearCanvas();
    if (m_itemCount == -1)
        return;
    CurrentShape = m_shapeOrder.front();
    SetShapeColors();
    DrawShapes();
}

void MapDocument::InsertTopShape(std::int16_t Index, const PatShape& Shape)
{
    if (Index < 0 || Index > m_itemCount + 1)
        throw IndexOutOfRangeError();
    const std::int16_t count = ToInt16(static_cast<std::int64_t>(m_itemCount) + 2);
    PatShape shape = Shape;
    const double zoom = shape.Zoom();
    shape.SetOpenGeneralInfo(m_surface, zoom);
    if (zoom != 0.0 && zoom != ZoomLevel)
        shape.ResetPointsToZoom(ZoomLevel);
    for (std::int16_t& entry : m_shapeOrder) {
        if (entry >= Index)
            ++entry;
    }
    m_shapeOrder.insert(m_shapeOrder.begin(), Index);
    m_shapes.insert(m_shapes.begin() + Index, std::move(shape));
    m_index.Inserted(static_cast<std::size_t>(Index));
    m_itemCount = static_cast<std::int16_t>(count - 1);
    CurrentShape = Index;
    HitState = -2;
    PolygonInProgress = false;
    SetShapeColors();
    ClearCanvas();
}

void MapDocument::DrawShapes()
{
    if (m_itemCount == -1 || PolygonInProgress || m_surface == nullptr)
        return;
    m_surface->InvalidateAll();
    m_surface->RepaintNow();
}

void MapDocument::SetShapeColors()
{
    if (m_itemCount == -1)
        return;
    // Only the shapes whose colour changes count as changed: big maps repaint little.
    for (std::size_t i = 0; i < m_shapes.size(); ++i) {
        if (m_shapes[i].ShapeColor != NonFocusColor) {
            m_shapes[i].ShapeColor = NonFocusColor;
            m_index.Touched(i);
        }
    }
    TopShape().ShapeColor = FocusColor;
}

bool MapDocument::SetShapeEqualToTopShape(PatShape& CopyOfShape) const
{
    if (m_itemCount == -1)
        return false;
    Shape(m_shapeOrder.front()).MakeACopy(CopyOfShape);
    return true;
}

void MapDocument::SetNewShape(const PatShape& NewShape)
{
    // NewShape may be one of our own shapes, which the growing list would move away.
    const PatShape source = NewShape;
    const std::int16_t index = AddShape();
    PatShape& shape = m_shapes.back();
    shape.SetInfo(m_surface, FocusColor, Rectangle, ZoomLevel, 0, 0);
    CurrentShape = index;
    source.MakeACopy(shape);
    BringToTop(index);
    DrawShapes();
}

void MapDocument::MorphShape(std::int16_t SType)
{
    if (m_itemCount < 0 || SType < Circle || SType > Polygon)
        return;
    // A polygon still being drawn (on top when it is the map's first shape) stays one: its
    // next vertices would go to a rectangle or circle, which only ever has four corners.
    if (!TopShape().IsShapeDone())
        return;
    TopShape().MorphTo(SType);
}

void MapDocument::ResizeShapeArray(std::int16_t newsize, bool KillAll)
{
    if (newsize < -1)
        throw IndexOutOfRangeError();
    const std::size_t count = static_cast<std::size_t>(newsize + 1);
    if (KillAll) {
        m_shapes.assign(count, PatShape{});
        m_shapeOrder.resize(count);
        std::iota(m_shapeOrder.begin(), m_shapeOrder.end(), std::int16_t{0});
    } else {
        m_shapes.resize(count);
        std::vector<std::int16_t> order;
        std::vector<bool> seen(count, false);
        for (std::int16_t entry : m_shapeOrder) {
            if (static_cast<std::size_t>(entry) < count) {
                order.push_back(entry);
                seen[static_cast<std::size_t>(entry)] = true;
            }
        }
        for (std::size_t i = 0; i < count; ++i) {
            if (!seen[i])
                order.push_back(static_cast<std::int16_t>(i));
        }
        m_shapeOrder = std::move(order);
    }
    m_itemCount = newsize;
    m_index.Replaced(count);
    if (m_itemCount >= 0 && !KillAll)
        SetShapeColors();
}

void MapDocument::ReSetShapeArray(const std::vector<PatShape>& NewShapes, std::int16_t N)
{
    if (N < -1)
        throw IndexOutOfRangeError();
    const std::size_t count = static_cast<std::size_t>(N + 1);
    std::vector<PatShape> shapes(
        NewShapes.begin(),
        NewShapes.begin() + static_cast<std::ptrdiff_t>(std::min(count, NewShapes.size())));
    shapes.resize(count);
    m_shapes = std::move(shapes);
    m_index.Replaced(count);
    m_shapeOrder.resize(count);
    std::iota(m_shapeOrder.begin(), m_shapeOrder.end(), std::int16_t{0});
    m_itemCount = N;
    CurrentShape = 0;
    HitState = -2;
    // A map of exactly one shape keeps the colour that shape brought with it.
    if (N > 0)
        m_shapes.front().ShapeColor = FocusColor;
    ClearCanvas();
}

void MapDocument::AdoptShapes(std::vector<PatShape> NewShapes, std::vector<std::int16_t> Order)
{
    AdoptShownShapes(std::move(NewShapes), std::move(Order));
    for (PatShape& shape : m_shapes)
        shape.SetOpenGeneralInfo(m_surface, shape.Zoom());
}

void MapDocument::AdoptShownShapes(std::vector<PatShape> NewShapes, std::vector<std::int16_t> Order)
{
    const std::size_t count = NewShapes.size();
    if (Order.size() != count || count > 32768)
        throw IndexOutOfRangeError();
    std::vector<bool> seen(count, false);
    for (std::int16_t entry : Order) {
        if (entry < 0 || static_cast<std::size_t>(entry) >= count || seen[entry])
            throw IndexOutOfRangeError();
        seen[static_cast<std::size_t>(entry)] = true;
    }
    m_shapes = std::move(NewShapes);
    m_index.Replaced(count);
    m_shapeOrder = std::move(Order);
    m_itemCount = static_cast<std::int16_t>(static_cast<std::int32_t>(count) - 1);
    CurrentShape = 0;
    HitState = -2;
}

std::int16_t MapDocument::TopIndex() const
{
    return m_itemCount >= 0 ? m_shapeOrder.front() : std::int16_t{-1};
}

std::vector<std::int16_t> MapDocument::ShapesMeeting(const QRect& Area) const
{
    return m_index.Meeting(Area, m_shapes, TopIndex());
}

MapDocument::Hit MapDocument::ShapeAt(std::int32_t x, std::int32_t y, std::int32_t Reach) const
{
    // A shape answers only inside its paint bounds, widened by a reach beyond the
    // handles', so the index's candidates are all the shapes that can answer.
    const std::int32_t wider = Reach > PatShape::VertexReach ? Reach : 0;
    std::vector<Hit> hits;
    for (const std::int16_t index :
         ShapesMeeting(QRect(x - wider, y - wider, 2 * wider + 1, 2 * wider + 1))) {
        const std::int16_t state =
            m_shapes[static_cast<std::size_t>(index)].IsCursorOnShape(x, y, Reach);
        if (state != -2)
            hits.push_back({index, state});
    }
    if (hits.size() <= 1)
        return hits.empty() ? Hit{} : hits.front();
    // Several: the one nearest the top of the stack wins.
    for (const std::int16_t index : m_shapeOrder) {
        for (const Hit& hit : hits) {
            if (hit.Index == index)
                return hit;
        }
    }
    return Hit{};
}

QRegion MapDocument::TakeChangedArea(bool& All) const
{
    return m_index.TakeChangedArea(m_shapes, TopIndex(), All);
}

void MapDocument::SetSurface(ShapeSurface* Surface)
{
    m_surface = Surface;
    for (PatShape& shape : m_shapes)
        shape.SetOpenGeneralInfo(Surface, shape.Zoom());
}

void MapDocument::ClearCanvas()
{
    if (m_surface == nullptr)
        return;
    m_surface->InvalidateAll();
    m_surface->RepaintNow();
}
