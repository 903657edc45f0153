#include "core/document/MapLayer.h"

#include "core/document/MapDocument.h"
#include "core/document/MapPainter.h"

#include <QPainter>

namespace {

// A drawn area in more pieces than this is cheaper to draw again than to keep track of.
constexpr int MaxValidPieces = 512;

} // namespace

void MapLayer::Reset()
{
    m_valid = QRegion();
}

void MapLayer::Paint(QPainter& painter, const MapDocument& Document, const QImage& Background,
                     const QRegion& Region)
{
    if (Region.isEmpty())
        return;
    if (painter.transform().type() != QTransform::TxNone) {
        // A scaled view draws outlines and handles at screen size: nothing kept fits.
        // What changes meanwhile stays with the document for the next unscaled paint.
        painter.save();
        painter.setClipRegion(Region);
        MapPainter::PaintIndexed(painter, Document, Background, Region);
        painter.restore();
        MapPainter::PaintRubberBand(painter, Document, Region);
        return;
    }
    bool all = false;
    const QRegion changed = Document.TakeChangedArea(all);
    const QRect needed = QRect(QPoint(0, 0), Region.boundingRect().bottomRight());
    if (m_layer.isNull() || !m_layer.rect().contains(needed.united(Background.rect()))) {
        const QRect size = needed.united(Background.rect()).united(m_layer.rect());
        m_layer = QImage(size.size(), QImage::Format_RGB32);
        m_valid = QRegion();
    }
    if (all || m_valid.rectCount() > MaxValidPieces)
        m_valid = QRegion();
    else if (!changed.isEmpty())
        m_valid -= changed;
    const QRegion stale = Region - m_valid;
    if (!stale.isEmpty()) {
        if (m_scratch.size() != m_layer.size())
            m_scratch = QImage(m_layer.size(), QImage::Format_RGB32);
        QPainter scratch(&m_scratch);
        MapPainter::PaintIndexed(scratch, Document, Background, stale);
        scratch.end();
        QPainter layer(&m_layer);
        layer.setCompositionMode(QPainter::CompositionMode_Source);
        for (const QRect& r : stale)
            layer.drawImage(r.topLeft(), m_scratch, r);
        m_valid += stale;
    }
    for (const QRect& r : Region)
        painter.drawImage(r.topLeft(), m_layer, r);
    MapPainter::PaintRubberBand(painter, Document, Region);
}
