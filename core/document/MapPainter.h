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
    // The picture under Region and, whole and unclipped, the shapes that meet it (found
    // through the document's index), without the rubber band: the pixels inside Region
    // are those of Paint, the caller keeps only those. Unclipped, because a clip moves
    // where a long line's pixels fall.
    static void PaintIndexed(QPainter& painter, const MapDocument& Document,
                             const QImage& Background, const QRegion& Region);
    static void PaintRubberBand(QPainter& painter, const MapDocument& Document,
                                const QRegion& Region);
};
