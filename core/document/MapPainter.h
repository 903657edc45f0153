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
    static void Paint(QPainter& painter, const MapDocument& Document, const QImage& Background,
                      const QRegion& Region);
};
