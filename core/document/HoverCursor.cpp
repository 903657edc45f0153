#include "core/document/HoverCursor.h"

#include "core/document/MapDocument.h"

Qt::CursorShape HoverCursor::For(const MapDocument& Document, std::int32_t x, std::int32_t y,
                                 std::int32_t Reach, CanvasHost::DrawingMode Mode)
{
    // A polygon being drawn takes every press as its next corner.
    if (Document.PolygonInProgress)
        return Qt::CrossCursor;
    if (Document.ItemCount() >= 0) {
        const MapDocument::Hit hit = Document.ShapeAt(x, y, Reach);
        if (hit.State >= 0)
            return Qt::PointingHandCursor;
        if (hit.State == -1)
            return Qt::SizeAllCursor;
    }
    return Mode == CanvasHost::DrawingMode::Pointer ? Qt::ArrowCursor : Qt::CrossCursor;
}
