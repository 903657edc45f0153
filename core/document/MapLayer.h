#pragma once

#include <QImage>
#include <QRegion>

class MapDocument;
class QPainter;

// The map as its window shows it (picture, grid and shapes), kept as one picture so
// that a repaint copies pixels. Only where the document reports a change, or where
// nothing was drawn yet, is the map drawn again, and there only with the shapes that
// meet that area. The rubber band of a polygon being built is drawn on top each time.
// Through a scaled painter the map is drawn directly, the index still choosing shapes.
class MapLayer
{
public:
    // Forgets everything drawn: the picture changed.
    void Reset();
    void Paint(QPainter& painter, const MapDocument& Document, const QImage& Background,
               const QRegion& Region);

private:
    QImage m_layer;
    QRegion m_valid;
    // Where changed parts are drawn unclipped before their pixels are copied over.
    QImage m_scratch;
};
