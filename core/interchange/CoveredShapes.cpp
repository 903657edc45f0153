#include "core/interchange/CoveredShapes.h"

#include "core/interchange/AreaGeometry.h"
#include "core/interchange/MapArea.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>

// Every area is painted, last to first, into a buffer of area numbers at picture
// resolution (in tiles, so memory stays bounded for big pictures): each pixel ends up
// with the area a browser gives it. An area that owns no pixel but covers one is hidden.

namespace {

constexpr int Tile = 2048;
constexpr int MaxSamplesPerSide = 128;

void Paint(QPainter& painter, const MapArea& area, int width, int height)
{
    const auto& c = area.coords;
    switch (area.kind) {
    case MapArea::Kind::Rect:
        painter.drawRect(QRectF(QPointF(c[0], c[1]), QPointF(c[2], c[3])).normalized());
        break;
    case MapArea::Kind::Circle:
        painter.drawEllipse(QPointF(c[0], c[1]), std::abs(double(c[2])), std::abs(double(c[2])));
        break;
    case MapArea::Kind::Poly: {
        QPolygonF polygon;
        polygon.reserve(static_cast<qsizetype>(c.size() / 2));
        for (std::size_t i = 0; i + 1 < c.size(); i += 2)
            polygon << QPointF(c[i], c[i + 1]);
        painter.drawPolygon(polygon, Qt::WindingFill);
        break;
    }
    case MapArea::Kind::Default:
        painter.drawRect(QRectF(0, 0, width, height));
        break;
    }
}

// Whether the area holds the centre of any picture pixel; a sliver between pixel
// centres cannot be clicked, but it is not hidden by anything either.
bool CoversAPixel(const MapArea& area, const QRect& box, int width, int height)
{
    const QPainterPath path = AreaGeometry::PathOf(area, width, height);
    const int step =
        std::max(1, static_cast<int>(std::ceil(double(std::max(box.width(), box.height())) /
                                               MaxSamplesPerSide)));
    for (int y = box.top(); y <= box.bottom(); y += step) {
        for (int x = box.left(); x <= box.right(); x += step) {
            if (path.contains(QPointF(x + 0.5, y + 0.5)))
                return true;
        }
    }
    return false;
}

} // namespace

std::vector<bool> CoveredShapes::Find(const std::vector<MapArea>& Areas, int Width, int Height,
                                      const std::vector<bool>& Skip)
{
    const std::size_t count = Areas.size();
    std::vector<bool> covered(count, false);
    if (Width <= 0 || Height <= 0 || count < 2)
        return covered;

    const QRect picture(0, 0, Width, Height);
    std::vector<QRect> bounds(count);
    for (std::size_t i = 0; i < count; ++i)
        bounds[i] = AreaGeometry::BoundsOf(Areas[i], Width, Height) & picture;

    std::vector<bool> owns(count, false);
    for (int top = 0; top < Height; top += Tile) {
        for (int left = 0; left < Width; left += Tile) {
            const QRect tile(left, top, std::min(Tile, Width - left), std::min(Tile, Height - top));
            QImage owners(tile.size(), QImage::Format_RGB32);
            owners.fill(0u);
            {
                QPainter painter(&owners);
                painter.setRenderHint(QPainter::Antialiasing, false);
                painter.setPen(Qt::NoPen);
                painter.translate(-left, -top);
                for (std::size_t i = count; i-- > 0;) {
                    if (!bounds[i].intersects(tile))
                        continue;
                    painter.setBrush(QColor::fromRgb(0xFF000000u | static_cast<QRgb>(i + 1)));
                    Paint(painter, Areas[i], Width, Height);
                }
            }
            for (int y = 0; y < tile.height(); ++y) {
                const auto* line = reinterpret_cast<const QRgb*>(owners.constScanLine(y));
                for (int x = 0; x < tile.width(); ++x) {
                    const QRgb owner = line[x] & 0xFFFFFFu;
                    if (owner != 0)
                        owns[owner - 1] = true;
                }
            }
        }
    }
    for (std::size_t i = 1; i < count; ++i) {
        if (!owns[i] && !Skip[i] && !bounds[i].isEmpty())
            covered[i] = CoversAPixel(Areas[i], bounds[i], Width, Height);
    }
    return covered;
}
