#pragma once

#include "core/document/CanvasHost.h"
#include "core/shape/PatShape.h"

#include <cstdint>
#include <functional>

class MapDocument;

// What the mouse and the keyboard do to a map: creating rectangles, circles and
// polygons, picking the topmost shape, dragging a body or a vertex (snapped to the
// grid when asked), nudging with the arrow keys and deleting. Positions are surface
// pixels at the document's zoom. Works on the document alone, so it runs without a
// screen.
class CanvasEditor
{
public:
    explicit CanvasEditor(MapDocument& Document);

    void Press(std::int32_t x, std::int32_t y, CanvasHost::DrawingMode Mode);
    // LeftAlone: the left button and no other is held; AnyButton: some button is held.
    void Move(std::int32_t x, std::int32_t y, bool LeftAlone, bool AnyButton);
    void Release();
    // The properties tab a double click opens (1 the map, 2.. the shapes, last the
    // default area); 0 while a polygon is being built, when it is ignored.
    int DoubleClickTab() const;
    // Qt key codes: Delete and the four arrows; Escape, Backspace and Enter while a
    // polygon is drawn; Tab and Backtab step through the shapes. Others are ignored.
    void KeyDown(int Key);

    // How near a vertex a press must be, in surface pixels (PatShape::VertexReach
    // unless a view scale asks for the same reach on screen).
    void SetVertexReach(std::int32_t Reach) { m_vertexReach = Reach; }
    std::int32_t VertexReach() const { return m_vertexReach; }
    // Called with a shape's index just before a press changes that shape (other than
    // the top shape), so that the change can be recorded for undo.
    void SetBeforeChange(std::function<void(std::int16_t)> Hook)
    {
        m_beforeChange = std::move(Hook);
    }

    // Where a body was grabbed, in whole grid steps from the shape's top-left corner.
    std::int32_t GrabOffsetX() const { return m_grabOffsetX; }
    std::int32_t GrabOffsetY() const { return m_grabOffsetY; }

private:
    MapDocument& m_document;
    std::int32_t m_grabOffsetX = 0;
    std::int32_t m_grabOffsetY = 0;
    std::int32_t m_vertexReach = PatShape::VertexReach;
    std::function<void(std::int16_t)> m_beforeChange;

    void BeforeChange(std::int16_t Index) const;

    double GridStep() const;
    void SnapIfAsked(std::int32_t& x, std::int32_t& y) const;
    // The topmost shape under (x, y) is brought to the top and grabbed.
    void Pick(std::int32_t x, std::int32_t y);
    void CreateShape(std::int32_t x, std::int32_t y, std::int16_t Type);
    void ContinuePolygon(std::int32_t x, std::int32_t y);
    // Repaints the shapes whose colour or stacking a press may have changed.
    void RefreshShapes(std::int16_t OldTop) const;
    bool IsShapeIndex(std::int16_t Index) const;
};
