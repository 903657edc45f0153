#pragma once

class MapDocument;
class QImage;
class QPainter;
class QRegion;

// Paints a map as its window shows it, limited to a region: the zoomed picture, every
// shape in index order, the top shape once more so that it lies above the others, and
// the rubber band of a polygon being built. Shapes outside the region are skipped.
class MapPainter
{
public:
    // Visits every shape: the reference the faster paths must match pixel for pixel.
    static void Paint(QPainter& painter, const MapDocument& Document, const QImage& Background,
                      const QRegion& Region);
    // The picture and the shapes, without the rubber band, asking the document's
    // index for the shapes that meet Region.
    static void PaintIndexed(QPainter& painter, const MapDocument& Document,
                             const QImage& Background, const QRegion& Region);
    static void PaintRubberBand(QPainter& painter, const MapDocument& Document,
                                const QRegion& Region);
};
