#include "core/document/MapPainter.h"

#include "core/document/MapDocument.h"
#include "core/shape/HandleSprites.h"
#include "core/shape/ShapePainter.h"

#include <QImage>
#include <QPainter>
#include <QRegion>
#include <numeric>
#include <vector>

namespace {

void PaintBackground(QPainter& painter, const QImage& Background, const QRegion& Region)
{
    const QRect picture = Background.rect();
    for (const QRect& r : Region) {
        const QRect covered = r.intersected(picture);
        if (covered != r)
            painter.fillRect(r, Qt::white);
        if (!covered.isEmpty())
            painter.drawImage(covered.topLeft(), Background, covered);
    }
}

bool Touches(const QRegion& Region, const QRect& Bounds, const QRect& RegionBounds)
{
    if (!Bounds.intersects(RegionBounds))
        return false;
    return Region.rectCount() == 1 || Region.intersects(Bounds);
}

template <class Indices>
void PaintShapes(QPainter& painter, const MapDocument& Document, const QRegion& Region,
                 const Indices& Candidates)
{
    const QRect regionBounds = Region.boundingRect();
    HandleSprites sprites;
    const auto& shapes = Document.Shapes();
    for (const auto index : Candidates) {
        const PatShape& shape = shapes[static_cast<std::size_t>(index)];
        if (Touches(Region, shape.PaintBounds().toQRect(), regionBounds))
            ShapePainter::ReDrawShape(painter, shape, &sprites);
    }
    if (Document.ItemCount() >= 0) {
        const PatShape& top = Document.Shape(Document.ShapeOrder().front());
        if (Touches(Region, top.PaintBounds().toQRect(), regionBounds))
            ShapePainter::ReDrawShape(painter, top, &sprites);
    }
}

} // namespace

void MapPainter::Paint(QPainter& painter, const MapDocument& Document, const QImage& Background,
                       const QRegion& Region)
{
    if (Region.isEmpty())
        return;
    painter.save();
    painter.setClipRegion(Region);
    PaintBackground(painter, Background, Region);
    std::vector<std::size_t> all(Document.Shapes().size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    PaintShapes(painter, Document, Region, all);
    painter.restore();
    PaintRubberBand(painter, Document, Region);
}

void MapPainter::PaintIndexed(QPainter& painter, const MapDocument& Document,
                              const QImage& Background, const QRegion& Region)
{
    if (Region.isEmpty())
        return;
    PaintBackground(painter, Background, Region);
    PaintShapes(painter, Document, Region, Document.ShapesMeeting(Region.boundingRect()));
}

void MapPainter::PaintRubberBand(QPainter& painter, const MapDocument& Document,
                                 const QRegion& Region)
{
    const std::int16_t current = Document.CurrentShape;
    if (Region.isEmpty() || !Document.PolygonInProgress || current < 0 ||
        current > Document.ItemCount())
        return;
    painter.save();
    painter.setClipRegion(Region);
    ShapePainter::DrawRubberBand(painter, Document.Shape(current));
    painter.restore();
}
