#include "core/document/PolygonKeys.h"

#include "core/document/MapDocument.h"
#include "core/shape/ShapeSurface.h"

#include <Qt>

bool PolygonKeys::KeyDown(MapDocument& Document, int Key)
{
    const std::int16_t current = Document.CurrentShape;
    if (!Document.PolygonInProgress || current < 0 || current > Document.ItemCount() ||
        Document.Shape(current).IsShapeDone())
        return false;
    switch (Key) {
    case Qt::Key_Escape:
        Abandon(Document);
        return true;
    case Qt::Key_Backspace:
        RemoveLastVertex(Document);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Close(Document);
        return true;
    default:
        return false;
    }
}

void PolygonKeys::Abandon(MapDocument& Document)
{
    // The unfinished polygon is the newest shape, at the bottom of the stack; on top it
    // is what DeleteShape removes, and the stack below comes back as it was.
    const std::int16_t current = Document.CurrentShape;
    Document.PolygonInProgress = false;
    Document.BringToTop(current);
    Document.DeleteShape();
    if (ShapeSurface* surface = Document.Surface()) {
        surface->InvalidateAll();
        surface->RepaintNow();
    }
}

void PolygonKeys::RemoveLastVertex(MapDocument& Document)
{
    PatShape& shape = Document.Shape(Document.CurrentShape);
    if (shape.Points().size() <= 1) {
        Abandon(Document);
        return;
    }
    shape.RemovePoint(static_cast<std::int16_t>(shape.Points().size() - 1));
}

void PolygonKeys::Close(MapDocument& Document)
{
    PatShape& shape = Document.Shape(Document.CurrentShape);
    if (shape.Points().size() < 3)
        return;
    // A click on the first vertex closes a polygon; Enter is that click.
    const ShapePoint first = shape.Points().front();
    shape.AddPointToShape(first.x, first.y);
    if (!shape.IsShapeDone())
        return;
    Document.PolygonInProgress = false;
    const std::int16_t oldTop = Document.ShapeOrder().front();
    Document.BringToTop(Document.CurrentShape);
    if (ShapeSurface* surface = Document.Surface()) {
        surface->InvalidateRect(Document.Shape(oldTop).PaintBounds());
        surface->InvalidateRect(shape.PaintBounds());
        surface->RepaintNow();
    }
}
