#pragma once

#include "core/base/Numeric.h"
#include "core/document/MapDocument.h"

#include <QImage>
#include <QString>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

// What every fuzz target checks the same way. A failed check prints what differed, so
// that the crash report says more than "abort".
namespace FuzzChecks {

inline void Expect(bool Holds, const QString& What)
{
    if (Holds)
        return;
    std::fprintf(stderr, "check failed: %s\n", What.toUtf8().constData());
    std::abort();
}

// A map file path in a folder that also holds the picture "pic.png".
inline const QString& MapPath()
{
    static QTemporaryDir folder;
    static const QString path = [] {
        QImage picture(4, 3, QImage::Format_RGB32);
        picture.fill(Qt::red);
        if (!folder.isValid() || !picture.save(folder.filePath(QStringLiteral("pic.png"))))
            std::abort();
        return folder.filePath(QStringLiteral("fuzz.imp"));
    }();
    return path;
}

// The shape list's invariants: sizes agree, the order is a permutation, no empty shape.
inline void CheckInvariants(const MapDocument& Document)
{
    const std::size_t count = static_cast<std::size_t>(Document.ItemCount() + 1);
    Expect(Document.Shapes().size() == count && Document.ShapeOrder().size() == count,
           QStringLiteral("list sizes differ from ItemCount"));
    std::vector<bool> seen(count, false);
    for (std::int16_t entry : Document.ShapeOrder()) {
        Expect(entry >= 0 && static_cast<std::size_t>(entry) < count &&
                   !seen[static_cast<std::size_t>(entry)],
               QStringLiteral("ShapeOrder is not a permutation"));
        seen[static_cast<std::size_t>(entry)] = true;
    }
    for (const PatShape& shape : Document.Shapes())
        Expect(!shape.Points().empty(), QStringLiteral("a shape without points"));
}

// A shape's points as area code carries them: a rectangle is written as its extent, so
// its corners come back in the standard order; a circle as the one inscribed in the
// top-left square of its extent.
inline std::vector<ShapePoint> AsCoded(const PatShape& Shape)
{
    if (Shape.GetShapeType() == Polygon)
        return Shape.Points();
    std::int32_t l = Shape.Points()[0].x, r = l, t = Shape.Points()[0].y, b = t;
    for (const ShapePoint& p : Shape.Points()) {
        l = std::min(l, p.x);
        r = std::max(r, p.x);
        t = std::min(t, p.y);
        b = std::max(b, p.y);
    }
    if (Shape.GetShapeType() == Circle) {
        const double d = static_cast<double>(std::min(std::int64_t(r) - l, std::int64_t(b) - t));
        const std::int64_t radius = RoundHalfEven(d / 2.0);
        const std::int64_t cx = RoundHalfEven((2.0 * l + d) / 2.0);
        const std::int64_t cy = RoundHalfEven((2.0 * t + d) / 2.0);
        return {{std::int32_t(cx - radius), std::int32_t(cy - radius)},
                {std::int32_t(cx + radius), std::int32_t(cy - radius)},
                {std::int32_t(cx + radius), std::int32_t(cy + radius)},
                {std::int32_t(cx - radius), std::int32_t(cy + radius)}};
    }
    return {{l, t}, {r, t}, {r, b}, {l, b}};
}

} // namespace FuzzChecks
