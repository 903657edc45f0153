#include "core/interchange/MapCheck.h"

#include "core/document/MapDocument.h"
#include "core/interchange/AreaGeometry.h"
#include "core/interchange/CoveredShapes.h"
#include "core/interchange/MapArea.h"

#include <QUrl>
#include <algorithm>
#include <cstdint>
#include <numeric>

namespace {

using Severity = MapFinding::Severity;

struct Segment
{
    std::int64_t x1, y1, x2, y2;
    std::size_t index; // edge number
    std::int64_t Left() const { return std::min(x1, x2); }
    std::int64_t Right() const { return std::max(x1, x2); }
};

int Orientation(std::int64_t ax, std::int64_t ay, std::int64_t bx, std::int64_t by, std::int64_t cx,
                std::int64_t cy)
{
    const std::int64_t cross = (bx - ax) * (cy - ay) - (by - ay) * (cx - ax);
    return cross > 0 ? 1 : (cross < 0 ? -1 : 0);
}

bool OnSegment(const Segment& s, std::int64_t x, std::int64_t y)
{
    return std::min(s.x1, s.x2) <= x && x <= std::max(s.x1, s.x2) && std::min(s.y1, s.y2) <= y &&
           y <= std::max(s.y1, s.y2);
}

bool Intersect(const Segment& a, const Segment& b)
{
    const int o1 = Orientation(a.x1, a.y1, a.x2, a.y2, b.x1, b.y1);
    const int o2 = Orientation(a.x1, a.y1, a.x2, a.y2, b.x2, b.y2);
    const int o3 = Orientation(b.x1, b.y1, b.x2, b.y2, a.x1, a.y1);
    const int o4 = Orientation(b.x1, b.y1, b.x2, b.y2, a.x2, a.y2);
    if (o1 != o2 && o3 != o4)
        return true;
    return (o1 == 0 && OnSegment(a, b.x1, b.y1)) || (o2 == 0 && OnSegment(a, b.x2, b.y2)) ||
           (o3 == 0 && OnSegment(b, a.x1, a.y1)) || (o4 == 0 && OnSegment(b, a.x2, a.y2));
}

// Whether two edges that are not neighbours meet. Edges sorted by their left end are
// compared only with those that start before they end, so an ordinary polygon costs
// little more than the sort.
bool CrossesItself(const std::vector<std::int32_t>& c)
{
    const std::size_t n = c.size() / 2;
    if (n < 4)
        return false;
    std::vector<Segment> edges(n);
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t j = (i + 1) % n;
        edges[i] = {c[2 * i], c[2 * i + 1], c[2 * j], c[2 * j + 1], i};
    }
    std::sort(edges.begin(), edges.end(),
              [](const Segment& a, const Segment& b) { return a.Left() < b.Left(); });
    for (std::size_t a = 0; a < n; ++a) {
        for (std::size_t b = a + 1; b < n && edges[b].Left() <= edges[a].Right(); ++b) {
            const std::size_t d = edges[a].index > edges[b].index ? edges[a].index - edges[b].index
                                                                  : edges[b].index - edges[a].index;
            if (d == 1 || d == n - 1)
                continue; // neighbours share a corner
            if (Intersect(edges[a], edges[b]))
                return true;
        }
    }
    return false;
}

std::size_t DistinctPoints(const std::vector<std::int32_t>& c)
{
    std::vector<std::pair<std::int32_t, std::int32_t>> points;
    points.reserve(c.size() / 2);
    for (std::size_t i = 0; i + 1 < c.size(); i += 2)
        points.emplace_back(c[i], c[i + 1]);
    std::sort(points.begin(), points.end());
    return static_cast<std::size_t>(std::unique(points.begin(), points.end()) - points.begin());
}

// Twice the polygon's signed area.
std::int64_t DoubleArea(const std::vector<std::int32_t>& c)
{
    const std::size_t n = c.size() / 2;
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t j = (i + 1) % n;
        sum += std::int64_t(c[2 * i]) * c[2 * j + 1] - std::int64_t(c[2 * j]) * c[2 * i + 1];
    }
    return sum;
}

class Findings
{
public:
    void Add(int index, Severity severity, const QString& text)
    {
        m_list.push_back({index, severity, text});
    }
    std::vector<MapFinding> Take() { return std::move(m_list); }

    // "#", or a web address without a host, such as the "http://" every new shape starts
    // with until its link is typed.
    static bool IsPlaceholder(const QString& url)
    {
        if (url == QLatin1String("#"))
            return true;
        const QUrl parsed(url, QUrl::StrictMode);
        return parsed.isValid() &&
               (parsed.scheme() == QLatin1String("http") ||
                parsed.scheme() == QLatin1String("https")) &&
               parsed.host().isEmpty();
    }

    // Links and texts, for a shape or the default area.
    void CheckTexts(int index, const MapArea& a, bool isShape)
    {
        const QString url = a.URL.trimmed();
        if (isShape && a.Comment.trimmed().isEmpty())
            Add(index, Severity::Warning,
                QStringLiteral("no alt text: screen readers and search engines get nothing"));
        if (isShape && (url.isEmpty() || IsPlaceholder(url)))
            Add(index, Severity::Warning,
                url.isEmpty()
                    ? QStringLiteral("no URL: the area leads nowhere")
                    : QStringLiteral("placeholder URL \"%1\": the area leads nowhere").arg(url));
        else if (!url.isEmpty() && !QUrl(url, QUrl::StrictMode).isValid())
            Add(index, Severity::Error, QStringLiteral("the URL \"%1\" does not parse").arg(url));
        const std::pair<const char*, const QString*> fields[] = {
            {"URL", &a.URL}, {"alt text", &a.Comment}, {"target", &a.Target}};
        for (const auto& [name, value] : fields) {
            if (value->contains(QLatin1Char('"')))
                Add(index, Severity::Warning,
                    QStringLiteral("the double quote in its %1 breaks the classic code (the "
                                   "HTML5 and SVG formats escape it)")
                        .arg(QLatin1String(name)));
        }
    }

    // Returns whether the shape is degenerate.
    bool CheckGeometry(int index, const MapArea& a)
    {
        const auto& c = a.coords;
        switch (a.kind) {
        case MapArea::Kind::Rect:
            if (c[0] == c[2] || c[1] == c[3]) {
                Add(index, Severity::Error, QStringLiteral("the rectangle has no area"));
                return true;
            }
            return false;
        case MapArea::Kind::Circle:
            if (c[2] == 0) {
                Add(index, Severity::Error, QStringLiteral("the circle has no area"));
                return true;
            }
            return false;
        case MapArea::Kind::Poly:
            if (DistinctPoints(c) < 3) {
                Add(index, Severity::Error,
                    QStringLiteral("the polygon has fewer than three distinct points"));
                return true;
            }
            if (DoubleArea(c) == 0 && !CrossesItself(c)) {
                Add(index, Severity::Error, QStringLiteral("the polygon has no area"));
                return true;
            }
            if (CrossesItself(c))
                Add(index, Severity::Warning,
                    QStringLiteral("the polygon crosses itself: browsers may disagree about "
                                   "what is inside"));
            return false;
        case MapArea::Kind::Default:
            break;
        }
        return false;
    }

    // Returns whether the shape lies wholly outside the picture.
    bool CheckPlacement(int index, const MapArea& a, int width, int height)
    {
        const QRect box = AreaGeometry::BoundsOf(a, width, height);
        // Right and bottom edges of an area may sit on the picture's last line.
        const QRect picture(0, 0, width + 1, height + 1);
        if (!box.intersects(picture)) {
            Add(index, Severity::Error, QStringLiteral("the shape lies outside the picture"));
            return true;
        }
        if (!picture.contains(box))
            Add(index, Severity::Warning,
                QStringLiteral("the shape lies partly outside the picture"));
        return false;
    }

private:
    std::vector<MapFinding> m_list;
};

} // namespace

std::vector<MapFinding> MapCheck::Check(const MapDocument& d, bool FindCovered)
{
    Findings findings;
    if (d.MapName.trimmed().isEmpty())
        findings.Add(MapFinding::WholeMap, Severity::Error,
                     QStringLiteral("the map has no name, so the picture cannot use it"));
    else if (std::any_of(d.MapName.begin(), d.MapName.end(), [](QChar c) { return c.isSpace(); }))
        findings.Add(MapFinding::WholeMap, Severity::Error,
                     QStringLiteral("the map name \"%1\" contains spaces, which a map name "
                                    "must not")
                         .arg(d.MapName));

    const int count = d.ItemCount() + 1;
    std::vector<MapArea> areas;
    areas.reserve(static_cast<std::size_t>(count));
    std::vector<bool> skip(static_cast<std::size_t>(count), false);
    std::vector<std::vector<MapFinding>> perShape(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        areas.push_back(MapArea::FromShape(d.Shape(static_cast<std::int16_t>(i)), i));
        const MapArea& a = areas.back();
        Findings shape;
        shape.CheckTexts(i, a, true);
        const bool degenerate = shape.CheckGeometry(i, a);
        const bool outside =
            d.SWidth > 0 && d.SHeight > 0 && shape.CheckPlacement(i, a, d.SWidth, d.SHeight);
        skip[static_cast<std::size_t>(i)] = degenerate || outside;
        perShape[static_cast<std::size_t>(i)] = shape.Take();
    }
    const std::vector<bool> covered =
        FindCovered ? CoveredShapes::Find(areas, d.SWidth, d.SHeight, skip)
                    : std::vector<bool>(static_cast<std::size_t>(count), false);

    std::vector<MapFinding> result = findings.Take();
    for (int i = 0; i < count; ++i) {
        auto& list = perShape[static_cast<std::size_t>(i)];
        result.insert(result.end(), std::make_move_iterator(list.begin()),
                      std::make_move_iterator(list.end()));
        if (covered[static_cast<std::size_t>(i)])
            result.push_back({i, Severity::Warning,
                              QStringLiteral("earlier shapes cover it completely, so no visitor "
                                             "can click it")});
    }
    if (MapArea::HasDefaultArea(d)) {
        Findings defaults;
        defaults.CheckTexts(MapFinding::DefaultArea, MapArea::DefaultOf(d), false);
        for (MapFinding& finding : defaults.Take())
            result.push_back(std::move(finding));
    }
    return result;
}
