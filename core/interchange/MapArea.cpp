#include "core/interchange/MapArea.h"

#include "core/document/MapDocument.h"

#include <algorithm>

MapArea MapArea::FromShape(const PatShape& Shape, int Index)
{
    MapArea area;
    area.Index = Index;
    area.URL = Shape.URL;
    area.Comment = Shape.Comment;
    area.Target = Shape.Target;
    area.Status = Shape.StatusString;
    if (Shape.AlertBox != 0)
        area.Alert = Shape.AlertString;

    // A copy at zoom 1.0: the modern writers must not nudge the shape's own points.
    PatShape atOne = Shape;
    if (atOne.Zoom() != 1.0 && atOne.Zoom() != 0.0)
        atOne.ResetPointsToZoom(1.0);
    const std::vector<ShapePoint>& points = atOne.Points();
    switch (atOne.GetShapeType()) {
    case Circle: {
        area.kind = Kind::Circle;
        std::int32_t cx = 0, cy = 0, r = 0;
        if (!points.empty())
            atOne.CircleGeometry(cx, cy, r);
        area.coords = {cx, cy, r};
        break;
    }
    case Polygon:
        area.kind = Kind::Poly;
        area.coords.reserve(points.size() * 2);
        for (const ShapePoint& p : points) {
            area.coords.push_back(p.x);
            area.coords.push_back(p.y);
        }
        break;
    default: {
        area.kind = Kind::Rect;
        if (points.empty()) {
            area.coords = {0, 0, 0, 0};
            break;
        }
        ShapeRect b{points.front().x, points.front().y, points.front().x, points.front().y};
        for (const ShapePoint& p : points)
            b = {std::min(b.left, p.x), std::min(b.top, p.y), std::max(b.right, p.x),
                 std::max(b.bottom, p.y)};
        area.coords = {b.left, b.top, b.right, b.bottom};
        break;
    }
    }
    return area;
}

MapArea MapArea::DefaultOf(const MapDocument& Document)
{
    MapArea area;
    area.kind = Kind::Default;
    area.URL = Document.DefURL;
    area.Comment = Document.DefComment;
    area.Target = Document.DefTarget;
    area.Status = Document.DefStatus;
    if (Document.DefAlertVal != 0)
        area.Alert = Document.DefAlert;
    return area;
}

bool MapArea::HasDefaultArea(const MapDocument& Document)
{
    return !(Document.DefURL + Document.DefComment + Document.DefStatus + Document.DefAlert)
                .isEmpty();
}
