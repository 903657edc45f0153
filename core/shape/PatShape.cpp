#include "core/shape/PatShape.h"

#include "core/base/Numeric.h"
#include "core/shape/ShapeSurface.h"

#include <QPolygon>
#include <QRegion>
#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <utility>

namespace {

constexpr std::int32_t HandleReach = 4;

QRect ToQRect(const ShapeRect& r)
{
    return r.toQRect();
}

QRegion RectRegion(const ShapeRect& r)
{
    return QRegion(ToQRect(r));
}

ShapeRect Shrink(const ShapeRect& r, std::int32_t by)
{
    return {r.left + by, r.top + by, r.right - by, r.bottom - by};
}

// The part two boxes share, shrunk by 2 pixels on every side; false when nothing is left,
// so that the surface is never handed an inside-out rectangle.
bool CommonInterior(const ShapeRect& a, const ShapeRect& b, ShapeRect& out)
{
    out = Shrink({std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                  std::min(a.bottom, b.bottom)},
                 2);
    return out.left <= out.right && out.top <= out.bottom;
}

// Value with every apostrophe as \', for a script string delimited by apostrophes.
void AppendEscaped(QString& html, const QString& value)
{
    for (const QChar c : value) {
        if (c == QLatin1Char('\''))
            html += QLatin1Char('\\');
        html += c;
    }
}

void AppendNumber(QString& html, std::int32_t value)
{
    char digits[12];
    const char* end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    html += QLatin1String(digits, end - digits);
}

// Only blanks count: a tab or a line break in a field is content.
bool IsBlank(const QString& s)
{
    return std::all_of(s.begin(), s.end(), [](QChar c) { return c == QLatin1Char(' '); });
}

// The smallest and largest x and y of the points, whatever their size.
ShapeRect Extent(const std::vector<ShapePoint>& points)
{
    if (points.empty())
        return PatShape::BoundingRect(points, false);
    ShapeRect b{points.front().x, points.front().y, points.front().x, points.front().y};
    for (const ShapePoint& p : points)
        b = {std::min(b.left, p.x), std::min(b.top, p.y), std::max(b.right, p.x),
             std::max(b.bottom, p.y)};
    return b;
}

// The circle inscribed in the top-left square of a box: centre and radius.
void CircleInBox(const ShapeRect& b, std::int32_t& cx, std::int32_t& cy, std::int32_t& radius)
{
    const std::int64_t w = static_cast<std::int64_t>(b.right) - b.left;
    const std::int64_t h = static_cast<std::int64_t>(b.bottom) - b.top;
    const double d = static_cast<double>(w <= h ? w : h);
    radius = RoundToInt32(d / 2.0);
    cx = RoundToInt32((2.0 * b.left + d) / 2.0);
    cy = RoundToInt32((2.0 * b.top + d) / 2.0);
}

const QChar Q = QLatin1Char('"');

} // namespace

// ---- construction ----------------------------------------------------------------

void PatShape::SetInfo(ShapeSurface* ThePicBox, std::int32_t TheShapeColor,
                       std::int16_t TheShapeType, double TheZoomLevel, std::int32_t x,
                       std::int32_t y)
{
    m_picBoxDC = ThePicBox;
    ShapeColor = TheShapeColor;
    m_lastLineX = -1;
    m_lastLineY = -1;
    URL = QStringLiteral("http://");
    m_shapeZoom = TheZoomLevel;
    if (TheShapeType == Circle || TheShapeType == Rectangle) {
        m_shapeKind = TheShapeType;
        m_points.assign(4, ShapePoint{x, y});
        ShapeBuildingFinished = true;
    } else if (TheShapeType == Polygon) {
        m_shapeKind = Polygon;
    }
}

void PatShape::AddPointToShape(std::int32_t x, std::int32_t y, std::int32_t Reach)
{
    const ShapePoint first = m_pointCount != 0 ? m_points.at(0) : ShapePoint{-10, -10};
    // The band ends where the pointer last moved, which need not be this press (the view
    // scrolled or zoomed meanwhile): it goes, whatever the press adds.
    InvalidateBand();
    if (IsNearVertex({x, y}, first, Reach) && m_pointCount > 2) {
        ShapeBuildingFinished = true;
        RepaintNow();
    } else {
        m_points.resize(static_cast<std::size_t>(m_pointCount) + 1);
        m_points.back() = {x, y};
        m_pointCount = ToInt16(static_cast<std::int64_t>(m_pointCount) + 1);
    }
    m_beingWorked = true;
    DrawShape();
}

void PatShape::ResetInfo(std::int16_t TheShapeType, bool IsFinished, std::int32_t TheColor,
                         const QString& TheURL, const QString& TheComment, const QString& TheTarget,
                         const QString& TheStatusString, std::int16_t TheAlertBox,
                         const QString& TheAlertBoxString)
{
    m_shapeKind = TheShapeType;
    ShapeBuildingFinished = IsFinished;
    ShapeColor = TheColor;
    URL = TheURL;
    Comment = TheComment;
    Target = TheTarget;
    StatusString = TheStatusString;
    AlertBox = TheAlertBox;
    AlertString = TheAlertBoxString;
}

void PatShape::ResetPoints(std::int16_t PCount)
{
    if (PCount < -1)
        throw IndexOutOfRangeError();
    m_points.assign(static_cast<std::size_t>(PCount + 1), ShapePoint{});
}

void PatShape::CheckIndex(std::int16_t Index) const
{
    if (Index < 0 || static_cast<std::size_t>(Index) >= m_points.size())
        throw IndexOutOfRangeError();
}

void PatShape::SetPoint(std::int16_t Index, std::int32_t x, std::int32_t y)
{
    CheckIndex(Index);
    m_points[static_cast<std::size_t>(Index)] = {x, y};
}

void PatShape::InsertPoint(std::int16_t Index, std::int32_t x, std::int32_t y)
{
    if (Index < 0 || static_cast<std::size_t>(Index) > m_points.size())
        throw IndexOutOfRangeError();
    const std::int16_t count = ToInt16(static_cast<std::int64_t>(m_points.size()) + 1);
    Invalidate(PaintBounds());
    m_points.insert(m_points.begin() + Index, ShapePoint{x, y});
    m_pointCount = count;
    DrawShape();
}

void PatShape::RemovePoint(std::int16_t Index)
{
    CheckIndex(Index);
    Invalidate(PaintBounds());
    if (!ShapeBuildingFinished)
        InvalidateBand();
    m_points.erase(m_points.begin() + Index);
    m_pointCount = static_cast<std::int16_t>(m_points.size());
    DrawShape();
    RepaintNow();
}

void PatShape::GetPoint(std::int16_t Index, std::int32_t& x, std::int32_t& y) const
{
    const ShapePoint p = GetPoint(Index);
    x = p.x;
    y = p.y;
}

ShapePoint PatShape::GetPoint(std::int16_t Index) const
{
    CheckIndex(Index);
    return m_points[static_cast<std::size_t>(Index)];
}

void PatShape::SetOpenGeneralInfo(ShapeSurface* ThePicBox, double NewZoomLevel)
{
    m_picBoxDC = ThePicBox;
    m_shapeZoom = NewZoomLevel;
    m_lastLineX = -1;
    m_lastLineY = -1;
}

void PatShape::MakeACopy(PatShape& Copyshape) const
{
    const ShapeRect box = BoundingRect(m_points, false);
    // Moved before Copyshape changes, which may be this shape itself.
    std::vector<ShapePoint> moved = m_points;
    for (ShapePoint& p : moved)
        p = {p.x - box.left, p.y - box.top};
    const std::int16_t highest = ToInt16(static_cast<std::int64_t>(m_points.size()) - 1);
    Copyshape.ResetInfo(static_cast<std::int16_t>(m_shapeKind), true, ShapeColor, URL, Comment,
                        Target, StatusString, AlertBox, AlertString);
    Copyshape.ResetPoints(highest);
    Copyshape.m_points = std::move(moved);
}

// ---- queries ---------------------------------------------------------------------

std::int16_t PatShape::NumOfPoints() const
{
    if (m_points.empty())
        return 0;
    return static_cast<std::int16_t>(std::min<std::size_t>(m_points.size() - 1, 32767));
}

void PatShape::GetLastPoint(std::int32_t& LastX, std::int32_t& LastY) const
{
    if (m_points.empty())
        throw IndexOutOfRangeError();
    LastX = m_points.back().x;
    LastY = m_points.back().y;
}

void PatShape::TopAndLeftOfShape(std::int32_t& LeftX, std::int32_t& TopY) const
{
    if (m_points.empty())
        throw IndexOutOfRangeError();
    const ShapeRect box = BoundingRect(m_points, false);
    LeftX = box.left;
    TopY = box.top;
}

void PatShape::CircleGeometry(std::int32_t& cx, std::int32_t& cy, std::int32_t& radius) const
{
    // The true extent, as the classic code writes it: BoundingRect's starting values would
    // cap coordinates beyond 100000.
    CircleInBox(Extent(m_points), cx, cy, radius);
}

ShapeRect PatShape::PaintBounds() const
{
    if (m_points.empty())
        return {0, 0, -1, -1};
    const ShapeRect b = BoundingRect(m_points, false);
    return {b.left - HandleReach - 1, b.top - HandleReach - 1, b.right + HandleReach + 1,
            b.bottom + HandleReach + 1};
}

// ---- geometry --------------------------------------------------------------------

void PatShape::MorphTo(std::int16_t NewType)
{
    m_shapeKind = ToShapeKind(NewType);
    if (m_points.empty())
        return;
    Invalidate(BoundingRect(m_points, true));
    for (const ShapePoint& p : m_points)
        Invalidate(HandleRect(p));
    const ShapeRect b = BoundingRect(m_points, false);
    if (m_shapeKind == Rectangle || m_shapeKind == Circle)
        m_points = {{b.left, b.top}, {b.right, b.top}, {b.right, b.bottom}, {b.left, b.bottom}};
    RepaintNow();
    DrawShape();
}

void PatShape::ResetPointsToZoom(double NewZoomLevel)
{
    if (m_shapeZoom == 0.0)
        throw DivisionByZeroError();
    // Convert all first so that an overflow leaves the points as they were.
    std::vector<ShapePoint> scaled(m_points.size());
    for (std::size_t i = 0; i < m_points.size(); ++i) {
        scaled[i].x = RoundToInt32((m_points[i].x / m_shapeZoom) * NewZoomLevel);
        scaled[i].y = RoundToInt32((m_points[i].y / m_shapeZoom) * NewZoomLevel);
    }
    m_points = std::move(scaled);
    m_shapeZoom = NewZoomLevel;
}

QString PatShape::GenerateHTML()
{
    // At zoom 1.0 the rescale there and back changes nothing; big maps skip its copies.
    const double previousZoom = m_shapeZoom;
    if (previousZoom != 1.0)
        ResetPointsToZoom(1.0);

    QString html;
    html.reserve(160 + URL.size() + Comment.size() + Target.size() + StatusString.size() +
                 AlertString.size() + static_cast<qsizetype>(m_points.size()) * 12);
    // The true extent of the points: BoundingRect's starting values would cap
    // coordinates beyond 100000.
    const ShapeRect b = Extent(m_points);
    const auto coords = [&html](std::initializer_list<std::int32_t> values) {
        html += QLatin1String(" coords=\"");
        bool first = true;
        for (std::int32_t v : values) {
            if (!first)
                html += QLatin1Char(',');
            first = false;
            AppendNumber(html, v);
        }
        html += Q;
    };
    switch (m_shapeKind) {
    case Rectangle:
        html += QLatin1String("<area shape=\"rect\"");
        coords({b.left, b.top, b.right, b.bottom});
        break;
    case Circle: {
        std::int32_t cx = 0, cy = 0, r = 0;
        CircleInBox(b, cx, cy, r);
        html += QLatin1String("<area shape=\"circle\"");
        coords({cx, cy, r});
        break;
    }
    case Polygon:
        html += QLatin1String("<area shape=\"poly\" coords=\"");
        for (const ShapePoint& p : m_points) {
            AppendNumber(html, p.x);
            html += QLatin1Char(',');
            AppendNumber(html, p.y);
            html += QLatin1Char(',');
        }
        html += Q;
        break;
    default:
        break;
    }
    html += QLatin1String(" href=\"");
    if (IsBlank(URL))
        html += QLatin1Char('#');
    else
        html += URL;
    html += Q;
    if (!IsBlank(Comment)) {
        html += QLatin1String(" alt=\"");
        html += Comment;
        html += Q;
    }
    if (!IsBlank(Target)) {
        html += QLatin1String(" target=\"");
        html += Target;
        html += Q;
    }
    if (!IsBlank(StatusString)) {
        html += QLatin1String(" OnFocus=\"window.status='");
        AppendEscaped(html, StatusString);
        html += QLatin1String("'\" OnBlur=\"window.status=''\"");
    }
    if (AlertBox != 0 && !AlertString.isEmpty()) {
        html += QLatin1String(" OnClick=\"javascript:alert('");
        AppendEscaped(html, AlertString);
        html += QLatin1String("')\"");
    }
    html += QLatin1Char('>');

    if (previousZoom != 1.0)
        ResetPointsToZoom(previousZoom);
    return html;
}

// ---- hit-testing and editing -----------------------------------------------------

std::int16_t PatShape::IsCursorOnShape(std::int32_t x, std::int32_t y, std::int32_t Reach) const
{
    const ShapePoint p{x, y};
    // Far from the shape and its handles: nothing to test (keeps picks on big maps cheap).
    if (m_points.empty())
        return -2;
    ShapeRect near = PaintBounds();
    if (Reach > HandleReach)
        near = {near.left - Reach, near.top - Reach, near.right + Reach, near.bottom + Reach};
    if (!IsPointInRect(p, near))
        return -2;
    std::int16_t result = -2;
    if (m_points.size() >= 3) {
        QPolygon polygon(static_cast<int>(m_points.size()));
        for (std::size_t i = 0; i < m_points.size(); ++i)
            polygon.setPoint(static_cast<int>(i), m_points[i].x, m_points[i].y);
        if (polygon.containsPoint(QPoint(x, y), Qt::OddEvenFill))
            result = -1;
    }
    const std::size_t limit = std::min<std::size_t>(m_points.size(), 32768);
    for (std::size_t i = 0; i < limit; ++i) {
        if (IsNearVertex(p, m_points[i], Reach))
            return static_cast<std::int16_t>(i);
    }
    return result;
}

void PatShape::MoveShape(std::int32_t x, std::int32_t y, bool UsingGrid, std::int32_t SnapX,
                         std::int32_t SnapY)
{
    if (m_lastLineX == -1 || m_lastLineY == -1) {
        m_lastLineX = x;
        m_lastLineY = y;
        return;
    }
    if (m_points.empty())
        throw IndexOutOfRangeError();
    const ShapeRect oldBox = BoundingRect(m_points, false);
    std::int16_t dx = 0;
    std::int16_t dy = 0;
    if (UsingGrid) {
        dx = ToInt16(static_cast<std::int64_t>(x) + SnapX - oldBox.left);
        dy = ToInt16(static_cast<std::int64_t>(y) + SnapY - oldBox.top);
    } else {
        dx = ToInt16(static_cast<std::int64_t>(x) - m_lastLineX);
        dy = ToInt16(static_cast<std::int64_t>(y) - m_lastLineY);
    }

    const ShapeRect oldInflated = BoundingRect(m_points, true);
    std::vector<ShapePoint> moved = m_points;
    for (ShapePoint& p : moved) {
        p.x = ToInt32(static_cast<std::int64_t>(p.x) + dx);
        p.y = ToInt32(static_cast<std::int64_t>(p.y) + dy);
    }
    const ShapeRect newInflated = BoundingRect(moved, true);

    if (m_shapeKind == Polygon) {
        QRegion old = RectRegion(oldInflated);
        for (const ShapePoint& p : m_points)
            old += RectRegion(HandleRect(p));
        InvalidateRegion(old);
        m_points = std::move(moved);
        InvalidateRegion(RectRegion(newInflated));
    } else {
        Invalidate(oldInflated);
        std::vector<ShapeRect> oldHandles;
        for (const ShapePoint& p : m_points)
            oldHandles.push_back(HandleRect(p));
        m_points = std::move(moved);
        if (m_shapeKind == Rectangle) {
            ShapeRect common;
            if (CommonInterior(NormalizeRect(oldInflated, false), NormalizeRect(newInflated, false),
                               common))
                Validate(common);
        } else {
            const ShapeRect a = Shrink(NormalizeRect(oldInflated, true), 2);
            const ShapeRect b = Shrink(NormalizeRect(newInflated, true), 2);
            const QRegion ea(ToQRect(a), QRegion::Ellipse);
            const QRegion eb(ToQRect(b), QRegion::Ellipse);
            const QRegion common = ea.intersected(eb);
            if (!common.isEmpty())
                ValidateRegion(common);
        }
        for (const ShapeRect& h : oldHandles)
            Invalidate(h);
    }
    RepaintNow();
    DrawShape();
    m_lastLineX = x;
    m_lastLineY = y;
}

void PatShape::MoveVertex(std::int16_t VertexToMove, std::int32_t x, std::int32_t y)
{
    CheckIndex(VertexToMove);
    const std::int32_t v = VertexToMove;
    const bool polygon = m_shapeKind == Polygon;
    const std::int32_t count = polygon ? static_cast<std::int32_t>(m_points.size()) : 4;
    if (!polygon && m_points.size() != 4)
        throw IndexOutOfRangeError();
    if (v >= count)
        throw IndexOutOfRangeError();
    const auto at = [&](std::int32_t i) -> ShapePoint& {
        return m_points[static_cast<std::size_t>(((i % count) + count) % count)];
    };
    const std::int32_t prev = ((v - 1) % count + count) % count;
    const std::int32_t next = (v + 1) % count;

    Invalidate(HandleRect(at(v)));
    if (!polygon) {
        // The neighbours move with the corner; their old handles stick out of the old box.
        Invalidate(HandleRect(at(prev)));
        Invalidate(HandleRect(at(next)));
    }
    const ShapeRect oldInflated = BoundingRect(m_points, true);
    if (polygon) {
        ShapeRect area = BoundingRect({at(prev), at(v), at(next)}, false);
        area = {area.left - HandleReach - 1, area.top - HandleReach - 1,
                area.right + HandleReach + 1, area.bottom + HandleReach + 1};
        Invalidate(area);
        at(v) = {x, y};
    } else {
        at(v) = {x, y};
        const ShapePoint o = at(v + 2);
        if (v % 2 == 1) {
            at(v - 1) = {o.x, y};
            at(v + 1) = {x, o.y};
        } else {
            at(v + 1) = {o.x, y};
            at(v - 1) = {x, o.y};
        }
    }
    const ShapeRect newInflated = BoundingRect(m_points, true);
    QRegion both = RectRegion(oldInflated);
    both += RectRegion(newInflated);
    InvalidateRegion(both);
    ShapeRect common;
    if (CommonInterior(NormalizeRect(oldInflated, false), NormalizeRect(newInflated, false),
                       common))
        Validate(common);
    Invalidate(HandleRect(at(v)));
    Invalidate(HandleRect(at(prev)));
    Invalidate(HandleRect(at(next)));
    RepaintNow();
    DrawShape();
}

void PatShape::ResetForNextMove()
{
    m_lastLineX = -1;
    m_lastLineY = -1;
}

// ---- drawing requests ------------------------------------------------------------

void PatShape::DrawShape()
{
    if (m_picBoxDC == nullptr || m_points.empty())
        return;
    m_picBoxDC->InvalidateRect(PaintBounds());
    m_picBoxDC->RepaintNow();
}

void PatShape::DrawLine(std::int32_t X1, std::int32_t Y1, std::int32_t X2, std::int32_t Y2)
{
    Invalidate(BoundingRect({{X1, Y1}, {m_lastLineX, m_lastLineY}}, true));
    RepaintNow();
    m_lastLineX = X2;
    m_lastLineY = Y2;
    Invalidate(BoundingRect({{X1, Y1}, {X2, Y2}}, true));
    RepaintNow();
}

// ---- helpers ---------------------------------------------------------------------

ShapeRect PatShape::BoundingRect(const std::vector<ShapePoint>& points, bool Inflate)
{
    ShapeRect r{100000, 100000, -1, -1};
    for (const ShapePoint& p : points) {
        r.left = std::min(r.left, p.x);
        r.top = std::min(r.top, p.y);
        r.right = std::max(r.right, p.x);
        r.bottom = std::max(r.bottom, p.y);
    }
    if (Inflate)
        r = {r.left - 1, r.top - 1, r.right + 1, r.bottom + 1};
    return r;
}

ShapeRect PatShape::HandleRect(const ShapePoint& p)
{
    return {p.x - HandleReach, p.y - HandleReach, p.x + HandleReach, p.y + HandleReach};
}

bool PatShape::IsPointInRect(const ShapePoint& p, const ShapeRect& r)
{
    return r.left <= p.x && p.x <= r.right && r.top <= p.y && p.y <= r.bottom;
}

bool PatShape::IsNearVertex(const ShapePoint& p, const ShapePoint& vertex, std::int32_t Reach)
{
    return IsPointInRect(p,
                         {vertex.x - Reach, vertex.y - Reach, vertex.x + Reach, vertex.y + Reach});
}

std::int32_t PatShape::ToShapeKind(std::int16_t value)
{
    return (value == Rectangle || value == Polygon) ? value : std::int32_t{Circle};
}

ShapeRect PatShape::NormalizeRect(ShapeRect r, bool MakeSquare)
{
    if (r.left > r.right) {
        const std::int16_t t = ToInt16(r.left);
        r.left = r.right;
        r.right = t;
    }
    if (r.top > r.bottom) {
        const std::int16_t t = ToInt16(r.top);
        r.top = r.bottom;
        r.bottom = t;
    }
    if (MakeSquare) {
        const std::int32_t s = std::min(r.right - r.left, r.bottom - r.top);
        r.right = r.left + s;
        r.bottom = r.top + s;
    }
    return r;
}

void PatShape::Invalidate(const ShapeRect& r) const
{
    if (m_picBoxDC != nullptr)
        m_picBoxDC->InvalidateRect(r);
}

void PatShape::InvalidateBand() const
{
    // The rubber band of a polygon being built runs from its last vertex to where the
    // pointer last moved; there is none before the pointer moves.
    if (!m_points.empty() && m_lastLineX != -1 && m_lastLineY != -1)
        Invalidate(BoundingRect({m_points.back(), {m_lastLineX, m_lastLineY}}, true));
}

void PatShape::InvalidateRegion(const QRegion& r) const
{
    if (m_picBoxDC != nullptr)
        m_picBoxDC->InvalidateRegion(r);
}

void PatShape::Validate(const ShapeRect& r) const
{
    if (m_picBoxDC != nullptr)
        m_picBoxDC->ValidateRect(r);
}

void PatShape::ValidateRegion(const QRegion& r) const
{
    if (m_picBoxDC != nullptr)
        m_picBoxDC->ValidateRegion(r);
}

void PatShape::RepaintNow() const
{
    if (m_picBoxDC != nullptr)
        m_picBoxDC->RepaintNow();
}
