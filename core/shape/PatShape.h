#pragma once

#include "core/shape/ShapeGeometry.h"

#include <QString>
#include <cstdint>
#include <vector>

class QRegion;
class ShapeSurface;

// One area of an image map: a circle, rectangle or polygon held as integer points in
// surface pixels at the zoom it was last drawn at, with its link attributes and colour.
//
// A shape never paints itself; it reports the areas its changes touch to its surface
// (PicBoxDC) and ShapePainter draws it when the surface repaints.
class PatShape
{
public:
    // Colour of the outline, hatch and vertex handles (0x00BBGGRR).
    std::int32_t ShapeColor = 0;
    bool ShapeBuildingFinished = false;
    QString URL;
    QString Comment;
    QString Target;
    std::int16_t AlertBox = 0;
    QString AlertString;
    QString StatusString;

    // Construction and rebuilding
    void SetInfo(ShapeSurface* ThePicBox, std::int32_t TheShapeColor, std::int16_t TheShapeType,
                 double TheZoomLevel, std::int32_t x, std::int32_t y);
    // How far from a vertex, in surface pixels, a press still takes it; a view scale
    // passes its own reach so that the distance stays the same on screen.
    static constexpr std::int32_t VertexReach = 4;

    // Adds a polygon vertex, or closes the polygon when (x, y) is on the first vertex
    // and at least three vertices exist.
    void AddPointToShape(std::int32_t x, std::int32_t y, std::int32_t Reach = VertexReach);
    void ResetInfo(std::int16_t TheShapeType, bool IsFinished, std::int32_t TheColor,
                   const QString& TheURL, const QString& TheComment, const QString& TheTarget,
                   const QString& TheStatusString, std::int16_t TheAlertBox,
                   const QString& TheAlertBoxString);
    // Sizes the points to indices 0..PCount, all (0, 0).
    void ResetPoints(std::int16_t PCount);
    void SetPoint(std::int16_t Index, std::int32_t x, std::int32_t y);
    // A vertex more before Index (Index = count appends), or one fewer; both repaint
    // the shape. Throws IndexOutOfRangeError for a bad index, OverflowError past 32,767.
    void InsertPoint(std::int16_t Index, std::int32_t x, std::int32_t y);
    void RemovePoint(std::int16_t Index);
    // All points at once, as a map file holds them.
    void SetPoints(std::vector<ShapePoint> NewPoints) { m_points = std::move(NewPoints); }
    void GetPoint(std::int16_t Index, std::int32_t& x, std::int32_t& y) const;
    ShapePoint GetPoint(std::int16_t Index) const;
    void SetOpenGeneralInfo(ShapeSurface* ThePicBox, double NewZoomLevel);
    // A finished copy translated so that its bounding box starts at (0, 0).
    void MakeACopy(PatShape& Copyshape) const;

    // Queries
    bool IsShapeDone() const { return ShapeBuildingFinished; }
    bool BeingWorkedOn() const { return m_beingWorked; }
    std::int16_t GetShapeType() const { return static_cast<std::int16_t>(m_shapeKind); }
    // Highest point index; 0 for a shape whose points were never sized.
    std::int16_t NumOfPoints() const;
    void GetLastPoint(std::int32_t& LastX, std::int32_t& LastY) const;
    void TopAndLeftOfShape(std::int32_t& LeftX, std::int32_t& TopY) const;
    const std::vector<ShapePoint>& Points() const { return m_points; }
    double Zoom() const { return m_shapeZoom; }
    ShapeSurface* Surface() const { return m_picBoxDC; }
    std::int32_t LastLineX() const { return m_lastLineX; }
    std::int32_t LastLineY() const { return m_lastLineY; }
    // The circle inscribed in the top-left square of the points' extent.
    void CircleGeometry(std::int32_t& cx, std::int32_t& cy, std::int32_t& radius) const;
    // Everything the shape's drawing covers: outline, hatch and handles.
    ShapeRect PaintBounds() const;

    // Geometry and HTML
    void MorphTo(std::int16_t NewType);
    void ResetPointsToZoom(double NewZoomLevel);
    // The <area> element at zoom 1.0; the points are rescaled there and back.
    QString GenerateHTML();

    // Hit-testing and mouse editing
    // A vertex index, -1 inside, -2 outside.
    std::int16_t IsCursorOnShape(std::int32_t x, std::int32_t y,
                                 std::int32_t Reach = VertexReach) const;
    void MoveShape(std::int32_t x, std::int32_t y, bool UsingGrid, std::int32_t SnapX,
                   std::int32_t SnapY);
    void MoveVertex(std::int16_t VertexToMove, std::int32_t x, std::int32_t y);
    void ResetForNextMove();

    // Drawing requests (the surface repaints; see ShapePainter)
    // Brings this shape's current drawing onto the surface.
    void DrawShape();
    // Rubber-band line of a polygon under construction.
    void DrawLine(std::int32_t X1, std::int32_t Y1, std::int32_t X2, std::int32_t Y2);

    // Helpers shared with the painter and the canvas
    static ShapeRect BoundingRect(const std::vector<ShapePoint>& points, bool Inflate);
    static ShapeRect HandleRect(const ShapePoint& p);
    static bool IsPointInRect(const ShapePoint& p, const ShapeRect& r);
    static bool IsNearVertex(const ShapePoint& p, const ShapePoint& vertex,
                             std::int32_t Reach = VertexReach);
    static std::int32_t ToShapeKind(std::int16_t value);
    static ShapeRect NormalizeRect(ShapeRect r, bool MakeSquare);

private:
    std::int32_t m_shapeKind = Circle;
    std::vector<ShapePoint> m_points;
    std::int16_t m_pointCount = 0;
    bool m_beingWorked = false;
    double m_shapeZoom = 0.0;
    std::int32_t m_lastLineX = 0;
    std::int32_t m_lastLineY = 0;
    ShapeSurface* m_picBoxDC = nullptr;

    void CheckIndex(std::int16_t Index) const;
    void Invalidate(const ShapeRect& r) const;
    void InvalidateRegion(const QRegion& r) const;
    void InvalidateBand() const;
    void Validate(const ShapeRect& r) const;
    void ValidateRegion(const QRegion& r) const;
    void RepaintNow() const;
};
