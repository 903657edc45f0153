#include "core/forms/GeometryForm.h"

#include "core/base/Numeric.h"
#include "core/document/MapDocument.h"
#include "core/document/VertexEditor.h"

#include <QSet>
#include <limits>
#include <optional>

namespace {

int Picture(const MapDocument& Document, std::int32_t v)
{
    return RoundToInt32(v / Document.ZoomLevel);
}

std::optional<int> Number(const QString& Text)
{
    bool ok = false;
    const int value = Text.trimmed().toInt(&ok);
    return ok ? std::optional<int>(value) : std::nullopt;
}

// The picture's extent along one side, within the 16-bit range of every coordinate.
int Limit(std::int32_t PictureSide)
{
    return std::min<int>(PictureSide, std::numeric_limits<std::int16_t>::max());
}

// The values a shape already has, across and down: a shape dragged partly off the
// picture can still be edited without first being brought back whole.
struct Kept
{
    QSet<int> xs;
    QSet<int> ys;
};

Kept KeptValues(const MapDocument& Document, std::int16_t Index)
{
    Kept kept;
    for (const QPoint& p : GeometryForm::Vertices(Document, Index)) {
        kept.xs.insert(p.x());
        kept.ys.insert(p.y());
    }
    return kept;
}

// Inside the picture, or a value the shape already has.
bool Inside(const MapDocument& Document, const Kept& Current, int x, int y)
{
    return ((x >= 0 && x <= Limit(Document.SWidth)) || Current.xs.contains(x)) &&
           ((y >= 0 && y <= Limit(Document.SHeight)) || Current.ys.contains(y));
}

} // namespace

QString GeometryForm::NotANumberMessage(const QString& Text)
{
    return QStringLiteral("\"%1\" is not a whole number.").arg(Text.trimmed());
}

QString GeometryForm::OutsideMessage(const MapDocument& Document)
{
    return QStringLiteral("Coordinates must lie within the picture: 0 to %1 across and 0 to %2 "
                          "down.")
        .arg(Limit(Document.SWidth))
        .arg(Limit(Document.SHeight));
}

QString GeometryForm::TooSmallMessage()
{
    return QStringLiteral("Width, height and radius must be at least 1.");
}

QString GeometryForm::TooFewVerticesMessage()
{
    return VertexEditor::TooFewVerticesMessage();
}

QList<int> GeometryForm::Fields(const MapDocument& Document, std::int16_t Index)
{
    const PatShape& shape = Document.Shape(Index);
    if (shape.Points().empty())
        return {};
    if (shape.GetShapeType() == Circle) {
        std::int32_t cx = 0;
        std::int32_t cy = 0;
        std::int32_t r = 0;
        shape.CircleGeometry(cx, cy, r);
        return {Picture(Document, cx), Picture(Document, cy), Picture(Document, r)};
    }
    const ShapeRect b = PatShape::BoundingRect(shape.Points(), false);
    const int left = Picture(Document, b.left);
    const int top = Picture(Document, b.top);
    return {left, top, Picture(Document, b.right) - left, Picture(Document, b.bottom) - top};
}

QList<QPoint> GeometryForm::Vertices(const MapDocument& Document, std::int16_t Index)
{
    QList<QPoint> vertices;
    for (const ShapePoint& p : Document.Shape(Index).Points())
        vertices.append(QPoint(Picture(Document, p.x), Picture(Document, p.y)));
    return vertices;
}

QString GeometryForm::ApplyFields(MapDocument& Document, std::int16_t Index,
                                  const QStringList& Texts)
{
    const bool circle = Document.Shape(Index).GetShapeType() == Circle;
    const int wanted = circle ? 3 : 4;
    QList<int> v;
    for (int i = 0; i < wanted; ++i) {
        const QString text = i < Texts.size() ? Texts.at(i) : QString();
        const std::optional<int> n = Number(text);
        if (!n)
            return NotANumberMessage(text);
        v.append(*n);
    }
    QList<QPoint> corners;
    if (circle) {
        if (v[2] < 1)
            return TooSmallMessage();
        const QPoint topLeft(v[0] - v[2], v[1] - v[2]);
        corners = {topLeft, topLeft + QPoint(2 * v[2], 0), topLeft + QPoint(2 * v[2], 2 * v[2]),
                   topLeft + QPoint(0, 2 * v[2])};
    } else {
        if (v[2] < 1 || v[3] < 1)
            return TooSmallMessage();
        corners = {QPoint(v[0], v[1]), QPoint(v[0] + v[2], v[1]), QPoint(v[0] + v[2], v[1] + v[3]),
                   QPoint(v[0], v[1] + v[3])};
    }
    const Kept current = KeptValues(Document, Index);
    for (const QPoint& p : corners) {
        if (!Inside(Document, current, p.x(), p.y()))
            return OutsideMessage(Document);
    }
    Replace(Document, Index, corners);
    return QString();
}

QString GeometryForm::ApplyVertices(MapDocument& Document, std::int16_t Index,
                                    const QList<QStringList>& Rows)
{
    if (Rows.size() < 3)
        return TooFewVerticesMessage();
    if (Rows.size() > std::numeric_limits<std::int16_t>::max())
        return OutsideMessage(Document);
    const Kept current = KeptValues(Document, Index);
    QList<QPoint> points;
    for (const QStringList& row : Rows) {
        const QString xText = row.value(0);
        const QString yText = row.value(1);
        const std::optional<int> x = Number(xText);
        if (!x)
            return NotANumberMessage(xText);
        const std::optional<int> y = Number(yText);
        if (!y)
            return NotANumberMessage(yText);
        if (!Inside(Document, current, *x, *y))
            return OutsideMessage(Document);
        points.append(QPoint(*x, *y));
    }
    Replace(Document, Index, points);
    return QString();
}

void GeometryForm::Replace(MapDocument& Document, std::int16_t Index, const QList<QPoint>& Points)
{
    // Converted first, so that an overflow leaves the shape whole.
    std::vector<ShapePoint> surface;
    surface.reserve(static_cast<std::size_t>(Points.size()));
    for (const QPoint& p : Points)
        surface.push_back(
            {RoundToInt32(p.x() * Document.ZoomLevel), RoundToInt32(p.y() * Document.ZoomLevel)});
    PatShape& shape = Document.Shape(Index);
    shape.DrawShape();
    shape.ResetPoints(static_cast<std::int16_t>(surface.size() - 1));
    for (std::size_t i = 0; i < surface.size(); ++i)
        shape.SetPoint(static_cast<std::int16_t>(i), surface[i].x, surface[i].y);
    shape.DrawShape();
}
