#include "core/document/VertexEditor.h"

#include "core/document/MapDocument.h"
#include "core/document/ShapeStepper.h"

#include <QLineF>
#include <QPointF>
#include <algorithm>
#include <cmath>

namespace {

double DistanceToSegment(QPointF p, QPointF a, QPointF b)
{
    const QPointF d = b - a;
    const double length2 = QPointF::dotProduct(d, d);
    double t = length2 > 0.0 ? QPointF::dotProduct(p - a, d) / length2 : 0.0;
    t = std::clamp(t, 0.0, 1.0);
    return QLineF(p, a + t * d).length();
}

} // namespace

QString VertexEditor::TooFewVerticesMessage()
{
    return QStringLiteral("A polygon needs at least three vertices.");
}

int VertexEditor::EdgeAt(const MapDocument& Document, std::int16_t Index, std::int32_t x,
                         std::int32_t y, std::int32_t Reach)
{
    const auto& points = Document.Shape(Index).Points();
    const std::size_t n = points.size();
    int best = -1;
    double bestDistance = Reach;
    for (std::size_t i = 0; i < n; ++i) {
        const ShapePoint a = points[i];
        const ShapePoint b = points[(i + 1) % n];
        const double d = DistanceToSegment(QPointF(x, y), QPointF(a.x, a.y), QPointF(b.x, b.y));
        if (d <= bestDistance) {
            bestDistance = d;
            best = static_cast<int>(i);
        }
    }
    return best;
}

VertexEditor::Outcome VertexEditor::Edit(MapDocument& Document, std::int32_t x, std::int32_t y,
                                         std::int32_t Reach)
{
    if (Document.PolygonInProgress)
        return Outcome::NotOnPolygon;
    for (const std::int16_t index : Document.ShapeOrder()) {
        PatShape& shape = Document.Shape(index);
        const std::int16_t hit = shape.IsCursorOnShape(x, y, Reach);
        if (shape.GetShapeType() == Polygon && shape.IsShapeDone()) {
            if (hit >= 0) {
                if (shape.Points().size() <= 3)
                    return Outcome::TooFewVertices;
                ShapeStepper::Select(Document, index);
                shape.RemovePoint(hit);
                Document.HitState = -2;
                return Outcome::Deleted;
            }
            const int edge = EdgeAt(Document, index, x, y, Reach);
            if (edge >= 0) {
                ShapeStepper::Select(Document, index);
                const auto at = static_cast<std::int16_t>(edge + 1);
                shape.InsertPoint(at, x, y);
                Document.HitState = at;
                return Outcome::Inserted;
            }
        }
        // Whatever shape is hit first hides the ones below it.
        if (hit != -2)
            return Outcome::NotOnPolygon;
    }
    return Outcome::NotOnPolygon;
}
