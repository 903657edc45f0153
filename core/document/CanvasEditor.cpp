#include "core/document/CanvasEditor.h"

#include "core/base/Numeric.h"
#include "core/document/CanvasGrid.h"
#include "core/document/MapDocument.h"
#include "core/document/PolygonKeys.h"
#include "core/document/ShapeStepper.h"
#include "core/shape/ShapeSurface.h"

#include <Qt>

CanvasEditor::CanvasEditor(MapDocument& Document) : m_document(Document) {}

double CanvasEditor::GridStep() const
{
    return m_document.GridSpacing * m_document.ZoomLevel;
}

bool CanvasEditor::IsShapeIndex(std::int16_t Index) const
{
    return Index >= 0 && Index <= m_document.ItemCount();
}

void CanvasEditor::BeforeChange(std::int16_t Index) const
{
    if (m_beforeChange)
        m_beforeChange(Index);
}

void CanvasEditor::SnapIfAsked(std::int32_t& x, std::int32_t& y) const
{
    if (m_document.GridSnap)
        CanvasGrid::SnapToGrid(x, y, GridStep());
}

void CanvasEditor::Press(std::int32_t x, std::int32_t y, CanvasHost::DrawingMode Mode)
{
    const std::int16_t oldTop =
        m_document.ItemCount() >= 0 ? m_document.ShapeOrder().front() : std::int16_t{-1};
    // A polygon being built takes every press until it is closed, whatever the mode.
    if (m_document.PolygonInProgress) {
        const std::int16_t current = m_document.CurrentShape;
        if (IsShapeIndex(current) && !m_document.Shape(current).IsShapeDone()) {
            ContinuePolygon(x, y);
            RefreshShapes(oldTop);
            return;
        }
        m_document.PolygonInProgress = false;
    }
    if (Mode != CanvasHost::DrawingMode::Pointer || m_document.ItemCount() >= 0) {
        if (m_document.ItemCount() >= 0)
            Pick(x, y);
        else
            m_document.HitState = -2;
        if (m_document.HitState == -2) {
            switch (Mode) {
            case CanvasHost::DrawingMode::Rectangle:
                CreateShape(x, y, Rectangle);
                break;
            case CanvasHost::DrawingMode::Circle:
                CreateShape(x, y, Circle);
                break;
            case CanvasHost::DrawingMode::Polygon:
                CreateShape(x, y, Polygon);
                break;
            case CanvasHost::DrawingMode::Pointer:
                break;
            }
        }
    }
    RefreshShapes(oldTop);
}

void CanvasEditor::Pick(std::int32_t x, std::int32_t y)
{
    const MapDocument::Hit found = m_document.ShapeAt(x, y, m_vertexReach);
    m_document.HitState = found.State;
    if (found.State == -2)
        return;
    const std::int16_t index = found.Index;
    const std::int16_t hit = found.State;
    BeforeChange(index);
    m_document.CurrentShape = index;
    m_document.BringToTop(index);
    PatShape& shape = m_document.Shape(index);
    if (hit == -1) {
        if (ShapeSurface* surface = m_document.Surface())
            surface->RepaintNow();
        std::int32_t left = 0;
        std::int32_t top = 0;
        shape.TopAndLeftOfShape(left, top);
        const double s = GridStep();
        // Only grid drags use the offsets; without a usable pitch they stay 0.
        if (s > 0.0) {
            m_grabOffsetX = RoundToInt32(s * RoundHalfEven((left - x) / s));
            m_grabOffsetY = RoundToInt32(s * RoundHalfEven((top - y) / s));
        } else {
            m_grabOffsetX = 0;
            m_grabOffsetY = 0;
        }
        // A nudge by the keyboard leaves the last position behind; a new drag
        // starts from the press.
        shape.ResetForNextMove();
        shape.MoveShape(x, y, false, 0, 0);
    } else {
        shape.MoveVertex(hit, x, y);
    }
}

void CanvasEditor::CreateShape(std::int32_t x, std::int32_t y, std::int16_t Type)
{
    // Snap before growing the list, so that an overflow leaves no empty shape behind.
    SnapIfAsked(x, y);
    const std::int16_t index = m_document.AddShape();
    PatShape& shape = m_document.Shape(index);
    shape.SetInfo(m_document.Surface(), m_document.FocusColor, Type, m_document.ZoomLevel, x, y);
    m_document.CurrentShape = index;
    if (Type == Polygon) {
        shape.AddPointToShape(x, y);
        m_document.PolygonInProgress = true;
        m_document.HitState = 0;
        return;
    }
    m_document.BringToTop(index);
    // The drag that follows moves the corner opposite the anchor.
    m_document.HitState = 2;
}

void CanvasEditor::ContinuePolygon(std::int32_t x, std::int32_t y)
{
    SnapIfAsked(x, y);
    BeforeChange(m_document.CurrentShape);
    PatShape& shape = m_document.Shape(m_document.CurrentShape);
    shape.AddPointToShape(x, y, m_vertexReach);
    if (shape.IsShapeDone()) {
        m_document.PolygonInProgress = false;
        m_document.BringToTop(m_document.CurrentShape);
    }
}

void CanvasEditor::RefreshShapes(std::int16_t OldTop) const
{
    ShapeSurface* surface = m_document.Surface();
    if (surface == nullptr || m_document.ItemCount() < 0)
        return;
    // Drawing is retained: only the old and the new top shape (and the one being
    // built) changed colour or stacking, so only their areas are repainted.
    for (const std::int16_t index :
         {OldTop, m_document.ShapeOrder().front(), m_document.CurrentShape}) {
        if (IsShapeIndex(index))
            surface->InvalidateRect(m_document.Shape(index).PaintBounds());
    }
    surface->RepaintNow();
}

void CanvasEditor::Move(std::int32_t x, std::int32_t y, bool LeftAlone, bool AnyButton)
{
    if (m_document.HitState == -2 || !IsShapeIndex(m_document.CurrentShape))
        return;
    PatShape& shape = m_document.Shape(m_document.CurrentShape);
    if (!shape.IsShapeDone()) {
        if (AnyButton || !shape.BeingWorkedOn())
            return;
        shape.DrawShape();
        std::int32_t lastX = 0;
        std::int32_t lastY = 0;
        shape.GetLastPoint(lastX, lastY);
        SnapIfAsked(x, y);
        shape.DrawLine(lastX, lastY, x, y);
        return;
    }
    if (!LeftAlone)
        return;
    if (m_document.HitState == -1) {
        if (m_document.GridSnap) {
            SnapIfAsked(x, y);
            shape.MoveShape(m_grabOffsetX, m_grabOffsetY, true, x, y);
        } else {
            shape.MoveShape(x, y, false, 0, 0);
        }
    } else if (m_document.HitState >= 0) {
        SnapIfAsked(x, y);
        shape.MoveVertex(m_document.HitState, x, y);
    }
}

void CanvasEditor::Release()
{
    if (m_document.PolygonInProgress || m_document.ItemCount() < 0 ||
        !IsShapeIndex(m_document.CurrentShape))
        return;
    m_document.Shape(m_document.CurrentShape).ResetForNextMove();
}

int CanvasEditor::DoubleClickTab() const
{
    if (m_document.PolygonInProgress)
        return 0;
    if (m_document.HitState != -2 && m_document.ItemCount() >= 0)
        return m_document.ShapeOrder().front() + 2;
    if (m_document.ItemCount() == -1)
        return 2;
    return m_document.ItemCount() + 3;
}

void CanvasEditor::KeyDown(int Key)
{
    if (PolygonKeys::KeyDown(m_document, Key))
        return;
    if (Key == Qt::Key_Tab || Key == Qt::Key_Backtab) {
        // In the middle of a drag the drag goes on with the shape stepped to.
        BeforeChange(ShapeStepper::Next(m_document, Key == Qt::Key_Tab));
        ShapeStepper::Step(m_document, Key == Qt::Key_Tab);
        return;
    }
    if (m_document.PolygonInProgress || m_document.ItemCount() == -1)
        return;
    if (Key == Qt::Key_Delete) {
        m_document.DeleteShape();
        return;
    }
    std::int32_t dx = 0;
    std::int32_t dy = 0;
    switch (Key) {
    case Qt::Key_Left:
        dx = -1;
        break;
    case Qt::Key_Up:
        dy = -1;
        break;
    case Qt::Key_Right:
        dx = 1;
        break;
    case Qt::Key_Down:
        dy = 1;
        break;
    default:
        return;
    }
    PatShape& shape = m_document.TopShape();
    const std::int16_t hit = m_document.HitState;
    std::int32_t x = 0;
    std::int32_t y = 0;
    if (hit == -1) {
        shape.TopAndLeftOfShape(x, y);
        // Start afresh so that the first call only records and the shape ends exactly
        // one pixel further.
        shape.ResetForNextMove();
        shape.MoveShape(x, y, false, 0, 0);
        shape.MoveShape(ToInt32(std::int64_t{x} + dx), ToInt32(std::int64_t{y} + dy), false, 0, 0);
    } else if (hit >= 0) {
        shape.GetPoint(hit, x, y);
        shape.MoveVertex(hit, x, y);
        shape.MoveVertex(hit, ToInt32(std::int64_t{x} + dx), ToInt32(std::int64_t{y} + dy));
    }
}
