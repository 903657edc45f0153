#include "core/shape/ShapePainter.h"

#include "core/shape/HandleSprites.h"
#include "core/shape/PatShape.h"

#include <QPainter>
#include <QPolygon>
#include <algorithm>

namespace {

QPolygon ToPolygon(const std::vector<ShapePoint>& points)
{
    QPolygon polygon(static_cast<int>(points.size()));
    for (std::size_t i = 0; i < points.size(); ++i)
        polygon.setPoint(static_cast<int>(i), points[i].x, points[i].y);
    return polygon;
}

} // namespace

QColor ShapePainter::ToQColor(std::int32_t colour)
{
    return QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

void ShapePainter::ReDrawShape(QPainter& painter, const PatShape& shape, HandleSprites* Sprites)
{
    const auto& points = shape.Points();
    if (points.empty())
        return;
    const QColor colour = ToQColor(shape.ShapeColor);
    const QPen solid(colour, 0, Qt::SolidLine);
    const QBrush hatch(colour, Qt::DiagCrossPattern);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    if (shape.GetShapeType() == Circle) {
        // Frame and circle cover width x height and d x d pixels: a one-pixel pen adds
        // one to the size Qt is given, so it is given one less.
        const ShapeRect b = PatShape::BoundingRect(points, false);
        const int w = b.right - b.left;
        const int h = b.bottom - b.top;
        const int d = std::min(w, h);
        if (d > 0) {
            painter.setPen(QPen(colour, 0, Qt::DashLine));
            painter.setBrush(Qt::NoBrush);
            painter.drawRect(b.left, b.top, w - 1, h - 1);
            painter.setPen(solid);
            painter.setBrush(hatch);
            painter.drawEllipse(b.left, b.top, d - 1, d - 1);
        }
    } else if (shape.GetShapeType() == Rectangle || shape.GetShapeType() == Polygon) {
        painter.setPen(solid);
        painter.setBrush(hatch);
        const QPolygon polygon = ToPolygon(points);
        if (shape.ShapeBuildingFinished)
            painter.drawPolygon(polygon, Qt::OddEvenFill);
        else
            painter.drawPolyline(polygon);
    }
    painter.restore();
    DrawHandles(painter, shape, Sprites);
}

void ShapePainter::DrawHandles(QPainter& painter, const PatShape& shape, HandleSprites* Sprites)
{
    // A view scale enlarges the picture, not the handles: they are drawn unscaled at
    // the place their vertex is shown.
    const QTransform view = painter.transform();
    if (view.type() == QTransform::TxScale) {
        painter.save();
        painter.resetTransform();
        DrawHandlesAt(painter, shape, Sprites, [&view](const ShapePoint& p) {
            const QPointF shown = view.map(QPointF(p.x, p.y));
            return ShapePoint{qRound(shown.x()), qRound(shown.y())};
        });
        painter.restore();
        return;
    }
    DrawHandlesAt(painter, shape, Sprites, [](const ShapePoint& p) { return p; });
}

template <class Place>
void ShapePainter::DrawHandlesAt(QPainter& painter, const PatShape& shape, HandleSprites* Sprites,
                                 Place&& place)
{
    // Pictures land on whole pixels only without scaling or rotation.
    if (Sprites != nullptr && painter.transform().type() == QTransform::TxNone) {
        const QImage& sprite = Sprites->For(ToQColor(shape.ShapeColor));
        for (const ShapePoint& p : shape.Points()) {
            const ShapeRect h = PatShape::HandleRect(place(p));
            painter.drawImage(h.left, h.top, sprite);
        }
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(Qt::white, 0));
    painter.setBrush(ToQColor(shape.ShapeColor));
    for (const ShapePoint& p : shape.Points()) {
        const ShapeRect h = PatShape::HandleRect(place(p));
        painter.drawEllipse(h.left, h.top, h.right - h.left, h.bottom - h.top);
    }
    painter.restore();
}

void ShapePainter::DrawRubberBand(QPainter& painter, const PatShape& shape)
{
    if (shape.ShapeBuildingFinished || shape.Points().empty() || shape.LastLineX() == -1 ||
        shape.LastLineY() == -1)
        return;
    const ShapePoint last = shape.Points().back();
    painter.save();
    painter.setPen(QPen(ToQColor(shape.ShapeColor), 0));
    painter.drawLine(last.x, last.y, shape.LastLineX(), shape.LastLineY());
    painter.restore();
}
