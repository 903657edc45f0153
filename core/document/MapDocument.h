#pragma once

#include "core/document/ShapeIndex.h"
#include "core/shape/PatShape.h"

#include <QImage>
#include <QString>
#include <cstdint>
#include <vector>

class ShapeSurface;

// Colours are 0x00BBGGRR.
constexpr std::int32_t RGBColor(int red, int green, int blue)
{
    return red | (green << 8) | (blue << 16);
}

// One map: its shapes with their stacking order, the map-level and default-area
// properties, the picture and the grid settings. A plain value: copying it takes a
// whole-document snapshot.
//
// Invariants kept by the operations below: Shapes() and ShapeOrder() both hold
// ItemCount() + 1 entries, ShapeOrder() is a permutation of 0..ItemCount() with the top
// (focused) shape first, and after any restacking the top shape is in FocusColor and
// every other shape in NonFocusColor.
class MapDocument
{
public:
    MapDocument();

    // ---- map properties (read and written directly by dialogs and files) --------
    std::int32_t FocusColor = RGBColor(0, 120, 180);
    std::int32_t NonFocusColor = RGBColor(120, 120, 120);
    std::int32_t BorderColor = 0;
    double GridSpacing = 20.0;
    std::int32_t GridColor = 0;
    std::int32_t GridStyle = 0; // 0 solid, 1 dashed, 2 dotted
    std::int16_t GridColorNum = 1;
    bool ShouldDrawGrid = false;
    bool GridSnap = false;
    std::int32_t RealWidth = 0;
    std::int32_t RealHeight = 0;
    std::int32_t SWidth = 0;
    std::int32_t SHeight = 0;
    QImage OrigPic;
    double ZoomLevel = 1.0;
    QString DefURL;
    QString DefComment;
    QString DefTarget;
    QString DefStatus;
    QString DefAlert;
    std::int16_t DefAlertVal = 0;
    QString MapName = QStringLiteral("MyMap");
    std::int16_t MapStyle = 0;
    QString Target;
    std::int16_t MapOnClick = 0;
    std::int16_t MapBorder = 0;
    QString ImageName;
    QString ImagePath;

    // ---- interaction state (written by the canvas's mouse handling) -------------
    // What the last press grabbed: a vertex index, -1 a body, -2 nothing.
    std::int16_t HitState = -2;
    std::int16_t CurrentShape = 0;
    bool PolygonInProgress = false;

    // ---- the shape list ----------------------------------------------------------
    const std::vector<PatShape>& Shapes() const { return m_shapes; }
    const std::vector<std::int16_t>& ShapeOrder() const { return m_shapeOrder; }
    std::int16_t ItemCount() const { return m_itemCount; }
    // Throws IndexOutOfRangeError for an index outside 0..ItemCount(). The writable
    // access counts as a possible change of that shape (see ShapesMeeting).
    PatShape& Shape(std::int16_t Index);
    const PatShape& Shape(std::int16_t Index) const;
    // The shape on top of the stack (ShapeOrder()[0]); throws when the map is empty.
    PatShape& TopShape();

    QString GetURL(std::int16_t Index) const { return Shape(Index).URL; }
    QString GetComment(std::int16_t Index) const { return Shape(Index).Comment; }
    QString GetTarget(std::int16_t Index) const { return Shape(Index).Target; }
    QString GetStatus(std::int16_t Index) const { return Shape(Index).StatusString; }
    QString GetAlert(std::int16_t Index) const { return Shape(Index).AlertString; }
    std::int16_t GetAlertVal(std::int16_t Index) const { return Shape(Index).AlertBox; }
    void SetURL(std::int16_t Index, const QString& NewVal) { Shape(Index).URL = NewVal; }
    void SetComment(std::int16_t Index, const QString& NewVal) { Shape(Index).Comment = NewVal; }
    void SetTarget(std::int16_t Index, const QString& NewVal) { Shape(Index).Target = NewVal; }
    void SetStatus(std::int16_t Index, const QString& NewVal)
    {
        Shape(Index).StatusString = NewVal;
    }
    void SetAlert(std::int16_t Index, const QString& NewVal) { Shape(Index).AlertString = NewVal; }
    void SetAlertVal(std::int16_t Index, std::int16_t NewVal) { Shape(Index).AlertBox = NewVal; }

    // Appends an empty shape at the bottom of the stack and returns its index; the
    // caller starts it (SetInfo) and brings it to the top. Throws OverflowError at the
    // 16-bit limit, leaving the list unchanged.
    std::int16_t AddShape();
    // Brings shape NewTopIndex to the top and recolours the old and new top shapes.
    void BringToTop(std::int16_t NewTopIndex);
    void ReStackArrayFromOptions(std::int16_t NewTopIndex) { BringToTop(NewTopIndex); }
    // Deletes the top shape; the one below it becomes the top.
    void DeleteShape();
    void DrawShapes();
    void SetShapeColors();
    // Copies the top shape, moved to (0, 0), into CopyOfShape. False on an empty map.
    bool SetShapeEqualToTopShape(PatShape& CopyOfShape) const;
    // Appends a copy of NewShape as the new top shape.
    void SetNewShape(const PatShape& NewShape);
    void MorphShape(std::int16_t SType);
    void ResizeShapeArray(std::int16_t newsize, bool KillAll);
    // Puts Shape back on top at index Index, the later shapes moving up one: the
    // reverse of DeleteShape. The shape is shown at the present zoom.
    void InsertTopShape(std::int16_t Index, const PatShape& Shape);
    // Replaces the list with NewShapes[0..N] in creation order, shape 0 on top.
    void ReSetShapeArray(const std::vector<PatShape>& NewShapes, std::int16_t N);
    // Replaces the list as read from a file: ShapeOrder = Order. Throws
    // IndexOutOfRangeError, leaving the document as it was, when Order is not a
    // permutation of 0..Shapes.size() - 1.
    void AdoptShapes(std::vector<PatShape> NewShapes, std::vector<std::int16_t> Order);
    // As AdoptShapes, for shapes already shown on this document's surface at their zoom:
    // a map file's reader sets that as it reads, and one more pass over tens of thousands
    // of shapes would cost a twentieth of the whole open.
    void AdoptShownShapes(std::vector<PatShape> NewShapes, std::vector<std::int16_t> Order);

    // ---- finding shapes by place ------------------------------------------------------
    // The shapes whose drawing meets Area, in index order (what a repaint of Area draws).
    std::vector<std::int16_t> ShapesMeeting(const QRect& Area) const;
    struct Hit
    {
        std::int16_t Index = -1;
        std::int16_t State = -2; // a vertex index, -1 the body, -2 no shape
    };
    // The topmost shape under (x, y) and what of it is there, a vertex counting within
    // Reach (PatShape::IsCursorOnShape).
    Hit ShapeAt(std::int32_t x, std::int32_t y, std::int32_t Reach = PatShape::VertexReach) const;
    // What may look different since the last call; All when that is the whole map.
    QRegion TakeChangedArea(bool& All) const;

    // ---- the surface the shapes are shown on -------------------------------------
    // Binds every shape (present and future) to Surface; null for a headless document.
    void SetSurface(ShapeSurface* Surface);
    ShapeSurface* Surface() const { return m_surface; }
    // Clears everything drawn and shows the bare picture again.
    void ClearCanvas();

private:
    // Undo steps put recorded shapes and orders back without going through the
    // editing operations.
    friend class MapChange;

    std::vector<PatShape> m_shapes;
    std::vector<std::int16_t> m_shapeOrder;
    std::int16_t m_itemCount = -1;
    ShapeSurface* m_surface = nullptr;
    // Kept up to date lazily by the queries above, so it may change in const calls.
    mutable ShapeIndex m_index;

    std::int16_t TopIndex() const;
};
