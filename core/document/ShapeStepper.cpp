#include "core/document/ShapeStepper.h"

#include "core/document/MapDocument.h"
#include "core/shape/ShapeSurface.h"

std::int16_t ShapeStepper::Step(MapDocument& Document, bool Forward)
{
    const std::int16_t next = Next(Document, Forward);
    if (next >= 0)
        Select(Document, next);
    return next;
}

std::int16_t ShapeStepper::Next(const MapDocument& Document, bool Forward)
{
    const std::int16_t count = Document.ItemCount();
    if (count < 0 || Document.PolygonInProgress)
        return -1;
    const int top = Document.ShapeOrder().front();
    return static_cast<std::int16_t>(Forward ? (top + 1) % (count + 1)
                                             : (top + count) % (count + 1));
}

void ShapeStepper::Select(MapDocument& Document, std::int16_t Index)
{
    const std::int16_t oldTop = Document.ShapeOrder().front();
    Document.BringToTop(Index);
    Document.CurrentShape = Index;
    Document.HitState = -1;
    Document.Shape(Index).ResetForNextMove();
    if (ShapeSurface* surface = Document.Surface()) {
        surface->InvalidateRect(Document.Shape(oldTop).PaintBounds());
        surface->InvalidateRect(Document.Shape(Index).PaintBounds());
        surface->RepaintNow();
    }
}
