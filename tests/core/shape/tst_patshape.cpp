#include "RecordingSurface.h"
#include "ShapeBuilders.h"
#include "TableCase.h"
#include "core/base/Module1.h"
#include "core/base/Numeric.h"
#include "core/document/CanvasGrid.h"
#include "core/shape/PatShape.h"
#include "core/shape/ShapePainter.h"

#include <QImage>
#include <QPainter>
#include <QTest>
#include <limits>
#include <random>

using Points = std::vector<ShapePoint>;

namespace {

// A polygon built by clicks: its vertices placed, not yet closed.
PatShape ClickedPolygon(const Points& vertices, ShapeSurface* surface = nullptr)
{
    PatShape shape;
    shape.SetInfo(surface, 0x00FF00, Polygon, 1.0, 0, 0);
    for (const ShapePoint& v : vertices)
        shape.AddPointToShape(v.x, v.y);
    return shape;
}

// What the shape's drawing covers: its body and the handle squares of its vertices.
QRegion DrawnArea(const PatShape& shape)
{
    QRegion area(PatShape::BoundingRect(shape.Points(), false).toQRect());
    for (const ShapePoint& p : shape.Points())
        area += PatShape::HandleRect(p).toQRect();
    return area;
}

const Points Triangle{{10, 10}, {50, 10}, {30, 40}};

constexpr std::int32_t Red = 0x0000FF; // 0x00BBGGRR
const QColor red(255, 0, 0);

QImage Blank(QColor background, int width = 100, int height = 80)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(background);
    return image;
}

QImage Painted(const PatShape& shape, QColor background = Qt::white, bool band = false)
{
    QImage image = Blank(background);
    QPainter painter(&image);
    if (band)
        ShapePainter::DrawRubberBand(painter, shape);
    else
        ShapePainter::ReDrawShape(painter, shape);
    return image;
}

// How many pixels of the rectangle (l, t)-(r, b), edges included, have the colour.
int Count(const QImage& image, int l, int t, int r, int b, QColor colour)
{
    int n = 0;
    for (int y = t; y <= b; ++y)
        for (int x = l; x <= r; ++x)
            n += image.pixelColor(x, y) == colour ? 1 : 0;
    return n;
}

} // namespace

// A shape's geometry and editing, how shapes and the grid come out in pixels, and the
// helpers every layer uses: file names, colours, rounding and narrowing.
class TestPatShape : public QObject
{
    Q_OBJECT
private slots:
    void closingRule()
    {
        // Clicks near the first vertex (100, 100): within 4 pixels either way a polygon of 3 or
        // more vertices closes; the sentinel first vertex (-10, -10) of an empty one closes
        // nothing.
        const Points three{{100, 100}, {200, 100}, {150, 200}};
        for (const auto& [n, dx, dy, closes] :
             {std::tuple(3, 4, -4, true), std::tuple(3, -4, 4, true), std::tuple(3, 5, 0, false),
              std::tuple(3, 0, -5, false), std::tuple(2, 0, 0, false),
              std::tuple(0, -110, -110, false)}) {
            const TableCase row(n, dx, dy);
            PatShape s = ClickedPolygon(Points(three.begin(), three.begin() + n));
            s.AddPointToShape(100 + dx, 100 + dy);
            QCOMPARE(s.IsShapeDone(), closes);
            QCOMPARE(int(s.NumOfPoints()), closes ? n - 1 : n);
        }
        // At the 16-bit vertex limit the vertex is stored at index 32767, then the count
        // overflows and stays; a click on the first vertex still closes the polygon.
        PatShape full = ClickedPolygon({});
        for (int i = 0; i < 32767; ++i)
            full.AddPointToShape(10 * (i % 2000) + 100, i / 2000 * 10 + 100);
        QVERIFY_THROWS_EXCEPTION(OverflowError, full.AddPointToShape(-500, -600));
        QCOMPARE(full.GetPoint(32767), (ShapePoint{-500, -600}));
        full.AddPointToShape(102, 98);
        QVERIFY(full.IsShapeDone());
    }

    void makeACopyMovesToOrigin()
    {
        PatShape source = MakeShape(Polygon, {{-10, 5}, {20, -3}, {0, 30}});
        source.ResetInfo(Polygon, false, 0x112233, "a.htm", "c", "_blank", "Ann's", 1, "It's");
        PatShape copy = MakeShape(Circle, {}); // keeps its own zoom
        source.MakeACopy(copy);
        QVERIFY(copy.IsShapeDone());
        // Every field comes along, apostrophes escaped in the scripts.
        QCOMPARE(
            copy.GenerateHTML(),
            QStringLiteral("<area shape=\"poly\" coords=\"0,8,30,0,10,33,\" href=\"a.htm\" "
                           "alt=\"c\" target=\"_blank\" OnFocus=\"window.status='Ann\\'s'\" "
                           "OnBlur=\"window.status=''\" OnClick=\"javascript:alert('It\\'s')\">"));
        // Onto itself.
        source.MakeACopy(source);
        QCOMPARE(PointsText(source), QStringLiteral("(0,8) (30,0) (10,33)"));
    }

    void morphTo()
    {
        // Corners out of order come back clockwise from the top-left; unknown types give a circle.
        const Points shuffled{{50, 40}, {10, 10}, {50, 10}, {10, 40}};
        for (const auto& [from, to, type] :
             {std::tuple(Polygon, 1, Rectangle), std::tuple(Rectangle, 7, Circle),
              std::tuple(Polygon, -3, Circle), std::tuple(Rectangle, 2, Polygon)}) {
            const TableCase row(from, to);
            PatShape s = MakeShape(from, from == Polygon ? Triangle : shuffled);
            s.MorphTo(static_cast<std::int16_t>(to));
            QCOMPARE(s.GetShapeType(), std::int16_t(type));
            QCOMPARE(PointsText(s),
                     PointsText(type == Polygon ? shuffled : Corners(10, 10, 50, 40)));
        }
    }

    void resetPointsToZoomRoundsHalfEven()
    {
        // 2.5 -> 2, 3.5 -> 4, -2.5 -> -2, and 3 / 0.5 * 1.5 rounded once at the end.
        for (const auto& [from, to, x, expected] :
             {std::tuple(2.0, 1.0, 5, 2), std::tuple(2.0, 1.0, 7, 4), std::tuple(2.0, 1.0, -5, -2),
              std::tuple(0.5, 1.5, 3, 9)}) {
            const TableCase row(from, to, x);
            PatShape s = MakeShape(Polygon, {{x, 0}, {0, x}}, nullptr, from);
            s.ResetPointsToZoom(to);
            QCOMPARE(PointsText(s), QStringLiteral("(%1,0) (0,%1)").arg(expected));
        }
    }

    void generateHtml()
    {
        // The common cases are checked through the generated map code; here, what only the
        // shape itself can reach.
        const QString href = " href=\"http://\">"; // the shapes' URL, and no other text
        // Far out, the modern formats' circle is the classic one too.
        std::int32_t cx = 0, cy = 0, r = 0;
        PatShape circle = MakeShape(Circle, Corners(200000, 150000, 200090, 150090));
        circle.CircleGeometry(cx, cy, r);
        QCOMPARE(QList<std::int32_t>({cx, cy, r}), QList<std::int32_t>({200045, 150045, 45}));
        QCOMPARE(circle.GenerateHTML(),
                 "<area shape=\"circle\" coords=\"200045,150045,45\"" + href);
        QCOMPARE(MakeShape(Polygon, {{123456, 7}, {100001, 200000}, {0, 0}}).GenerateHTML(),
                 "<area shape=\"poly\" coords=\"123456,7,100001,200000,0,0,\"" + href);
        QCOMPARE(MakeShape(5, Corners(0, 0, 1, 1)).GenerateHTML(), href);
    }

    void hitTest()
    {
        const PatShape rect = MakeShape(Rectangle, Corners(10, 10, 50, 40));
        const PatShape small = MakeShape(Rectangle, Corners(10, 10, 20, 16));
        // The circle is tested against its frame, not the drawn circle (10..30).
        const PatShape circle = MakeShape(Circle, Corners(10, 10, 50, 30));
        // Alternate filling: the pentagon inside a five-pointed star is outside.
        const PatShape star = MakeShape(Polygon, {{50, 0}, {79, 90}, {2, 35}, {98, 35}, {21, 90}});
        for (const auto& [shape, x, y, hit] :
             {std::tuple(&rect, 30, 25, -1), std::tuple(&rect, 54, 6, 1),
              std::tuple(&rect, 55, 10, -2), std::tuple(&rect, 13, 13, 0),
              std::tuple(&small, 11, 13, 0), std::tuple(&small, 19, 14, 1),
              std::tuple(&circle, 45, 25, -1), std::tuple(&star, 50, 50, -2),
              std::tuple(&star, 50, 15, -1)}) {
            const TableCase row(x, y);
            QCOMPARE(int(shape->IsCursorOnShape(x, y)), hit);
        }
    }

    void moveShapeReportsAreasInOrder()
    {
        RecordingSurface surface;
        PatShape s = MakeShape(Rectangle, Corners(10, 10, 50, 40), &surface);
        s.ResetForNextMove();
        // The first move only records where the mouse is.
        s.MoveShape(100, 100, false, 0, 0);
        QCOMPARE(PointsText(s), PointsText(Corners(10, 10, 50, 40)));
        QVERIFY(surface.log.isEmpty());
        s.MoveShape(110, 95, false, 0, 0);
        // Old box; the interior common to both boxes less 2 pixels; the old handles; the shape.
        QCOMPARE(surface.log, QStringList({"inv(9,9,51,41)", "val(21,11,49,34)", "inv(6,6,14,14)",
                                           "inv(46,6,54,14)", "inv(46,36,54,44)", "inv(6,36,14,44)",
                                           "paint", "inv(15,0,65,40)", "paint"}));
        // A displacement beyond 16 bits, or a fifth corner, is refused before anything moves.
        QVERIFY_THROWS_EXCEPTION(OverflowError, s.MoveShape(110 + 32768, 95, false, 0, 0));
        QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, s.MoveVertex(4, 0, 0));
        QCOMPARE(PointsText(s), PointsText(Corners(20, 5, 60, 35)));
        // On the grid the box's top-left lands on (x + SnapX, y + SnapY).
        s.MoveShape(40, 60, true, 3, -2);
        QCOMPARE(PointsText(s), PointsText(Corners(43, 58, 83, 88)));
        // Boxes that share 2 pixel columns or touch, then a corner dragged across the whole box:
        // no interior in common, nothing validated.
        for (const auto& [type, dx] :
             {std::pair(Rectangle, 39), std::pair(Rectangle, 40), std::pair(Circle, 200)}) {
            RecordingSurface apart;
            PatShape t = MakeShape(type, Corners(10, 10, 50, 40), &apart);
            t.ResetForNextMove();
            t.MoveShape(0, 0, false, 0, 0);
            t.MoveShape(dx, 0, false, 0, 0);
            t.MoveVertex(0, 200 + dx, 200);
            QVERIFY2(!apart.log.join(" ").contains("val"), qPrintable(apart.log.join(" ")));
        }
    }

    void moveVertex()
    {
        // A rectangle's or circle's corner takes its neighbours along, and their old handles
        // are repainted too; a polygon's vertex moves alone.
        for (const auto& [type, vertex, x, y, result] :
             {std::tuple(Rectangle, 1, 60, 0, "(10,0) (60,0) (60,40) (10,40)"),
              std::tuple(Rectangle, 3, 5, 50, "(5,10) (50,10) (50,50) (5,50)"),
              std::tuple(Rectangle, 0, 70, 60, "(70,60) (50,60) (50,40) (70,40)"),
              std::tuple(Circle, 0, 20, 25, "(20,25) (50,25) (50,40) (20,40)"),
              std::tuple(Polygon, 2, 35, 50, "(10,10) (50,10) (35,50) (10,40)")}) {
            const TableCase row(type, vertex, x, y);
            RecordingSurface surface;
            PatShape s = MakeShape(type, Corners(10, 10, 50, 40), &surface);
            const QRegion before = DrawnArea(s);
            s.MoveVertex(static_cast<std::int16_t>(vertex), x, y);
            QCOMPARE(PointsText(s), QString::fromLatin1(result));
            QVERIFY((before - surface.invalidated).isEmpty());
        }
    }

    // Random drags of shapes and vertices: a rectangle stays axis-aligned, and every edit
    // repaints all of the old drawing and then the new one.
    void randomEditsLeaveNoTrace()
    {
        std::mt19937 random(7);
        const auto pick = [&random](int n) { return int(random() % unsigned(n)); };
        RecordingSurface surface;
        for (int round = 0; round < 60; ++round) {
            const int l = pick(300), t = pick(300);
            PatShape s = MakeShape(pick(3), Corners(l, t, l + pick(200), t + pick(200)), &surface);
            s.ResetForNextMove();
            s.MoveShape(pick(500), pick(500), false, 0, 0);
            for (int step = 0; step < 10; ++step) {
                const QRegion before = DrawnArea(s);
                surface.clear();
                if (pick(2) == 0)
                    s.MoveShape(pick(500), pick(500), pick(2) == 1, pick(40) - 20, pick(40) - 20);
                else
                    s.MoveVertex(static_cast<std::int16_t>(pick(4)), pick(500), pick(500));
                const Points& p = s.Points();
                if (s.GetShapeType() != Polygon)
                    QVERIFY(p[0].y == p[1].y && p[1].x == p[2].x && p[2].y == p[3].y &&
                            p[3].x == p[0].x);
                if (!surface.log.isEmpty()) { // else a grid drag that left the shape where it was
                    QVERIFY((before - surface.invalidated).isEmpty());
                    QVERIFY(surface.invalidated.contains(DrawnArea(s).boundingRect()));
                    QCOMPARE(surface.log.last(), QStringLiteral("paint"));
                }
            }
        }
    }

    void drawLineFirstBandErasesFromOrigin()
    {
        RecordingSurface surface;
        PatShape s = ClickedPolygon({{50, 60}}, &surface);
        s.ResetForNextMove();
        surface.clear();
        s.DrawLine(50, 60, 70, 80);
        // There is no previous end, so the first band erases from (-2,-2).
        QCOMPARE(surface.log,
                 QStringList({"inv(-2,-2,51,61)", "paint", "inv(49,59,71,81)", "paint"}));
    }

    void circleOfFrame40x20Is20x20()
    {
        const QImage image = Painted(MakeShape(Circle, Corners(10, 10, 50, 30), nullptr, 1.0, Red));
        // The circle spans columns 10..29 and rows 10..29.
        QCOMPARE(Count(image, 30, 20, 45, 20, red), 0);
        QVERIFY(image.pixelColor(29, 20) == red && Count(image, 19, 29, 20, 29, red) > 0);
        // The frame is dashed, 40 by 20 (columns 10..49, rows 10..29) and hollow.
        QVERIFY(Count(image, 49, 15, 49, 25, red) > 3 &&
                Count(image, 49, 15, 49, 25, Qt::white) > 0);
        QCOMPARE(Count(image, 50, 15, 50, 25, red), 0);
        QVERIFY(Count(image, 33, 29, 44, 29, red) > 3);
        QCOMPARE(Count(image, 15, 30, 45, 30, red), 0);
        QCOMPARE(Count(image, 33, 12, 47, 27, red), 0);
    }

    // A moved shape's hatch looks the same where old and new places overlap, which is what
    // lets a drag leave that area alone.
    void rectangleHatchIsAlignedToTheCanvas()
    {
        const QImage before =
            Painted(MakeShape(Rectangle, Corners(10, 10, 70, 50), nullptr, 1.0, Red));
        const QImage after =
            Painted(MakeShape(Rectangle, Corners(13, 17, 73, 57), nullptr, 1.0, Red));
        QCOMPARE(Count(before, 20, 10, 60, 10, red), 41);
        QVERIFY(Count(before, 20, 20, 60, 40, red) > 100);
        QCOMPARE(before.copy(20, 25, 41, 21), after.copy(20, 25, 41, 21));
    }

    // A type read from a file that the program does not know draws its handles alone:
    // filled in the shape's colour, rimmed in white, 9 pixels across.
    void unknownTypeDrawsOnlyHandles()
    {
        const PatShape shape = MakeShape(5, Corners(20, 20, 70, 50), nullptr, 1.0, Red);
        const QImage image = Painted(shape, Qt::black);
        int blackInHandles = 0;
        for (const ShapePoint& p : shape.Points()) {
            QVERIFY(image.pixelColor(p.x, p.y) == red);
            QCOMPARE(Count(image, p.x - 5, p.y, p.x + 5, p.y, Qt::white), 2);
            blackInHandles += Count(image, p.x - 4, p.y - 4, p.x + 4, p.y + 4, Qt::black);
        }
        QCOMPARE(Count(image, 0, 0, 99, 79, Qt::black), 100 * 80 - 4 * 81 + blackInHandles);
    }

    void polygonWhileDrawing()
    {
        PatShape shape = ClickedPolygon({{10, 10}, {80, 10}, {80, 70}});
        shape.ShapeColor = Red;
        shape.DrawLine(80, 70, 40, 75);
        // Open: no closing edge, no fill; the band runs from the last vertex to the pointer.
        QCOMPARE(Count(Painted(shape), 40, 30, 75, 40, red), 0);
        QVERIFY(Count(Painted(shape, Qt::white, true), 40, 70, 80, 75, red) > 30);
        QCOMPARE(Count(Painted(shape, Qt::white, true), 0, 0, 99, 65, red), 0);
        shape.AddPointToShape(12, 12);
        QCOMPARE(Count(Painted(shape, Qt::white, true), 0, 0, 99, 79, red), 0);
        QVERIFY(Count(Painted(shape), 40, 30, 75, 40, red) > 20);
    }

    // A line every pitch, down to every other pixel. A pitch from a file that the grid dialog
    // could never set draws nothing: finer than two screen pixels the grid would only paint
    // the picture over, and a pitch that no longer moves a single-precision position would
    // never end the loop.
    void gridLines()
    {
        for (const double step : {20.0, 2.0, 1.99, 1.0, 1e-5, 1e-300}) {
            QImage image = Blank(Qt::white, 2000, 40);
            CanvasGrid::DrawGridLines(image, step, 0, 0);
            for (int x = 0; x < 2000; ++x)
                QCOMPARE(image.pixelColor(x, 7) == Qt::black, step >= 2 && x % int(step) == 0);
            if (step < 2)
                QCOMPARE(Count(image, 0, 0, 1999, 39, Qt::white), 2000 * 40);
        }
    }

    void fileNames()
    {
        const QChar nul(0);
        // At the first NUL.
        QCOMPARE(Module1::CutAtNul(QStringLiteral("a") + nul + "b " + nul), QStringLiteral("a"));
        QCOMPARE(Module1::FileTitle(QStringLiteral("C:\\maps\\  my map.imp  ")),
                 QStringLiteral("my map.imp"));
        // The last / or \ ends the folder.
        for (const auto& [path, folder] :
             {std::pair("C:\\maps\\a.imp", "C:\\maps\\"),
              std::pair("/home/ann/pic.gif", "/home/ann/"),
              std::pair("D:\\web/img.gif", "D:\\web/"), std::pair("C:/maps\\x.imp", "C:/maps\\"),
              std::pair("plan.imp", ""), std::pair("C:\\maps\\", "C:\\maps\\")}) {
            QCOMPARE(Module1::FolderOfPath(path), QString::fromUtf8(folder));
            QCOMPARE(Module1::FileNameOfPath(path), QString::fromUtf8(path).mid(qstrlen(folder)));
        }
    }

    void colourParts()
    {
        const int colour = 5 | 10 << 8 | 255 << 16;
        QVERIFY(Module1::RedOf(colour) == 5 && Module1::GreenOf(colour) == 10);
        QCOMPARE(Module1::BlueOf(colour), 255);
        QCOMPARE(Module1::ColorToHex(colour), QStringLiteral("050AFF"));
        // The high byte is no colour.
        QCOMPARE(Module1::ColorToHex(0x7F0A0B0C), QStringLiteral("0C0B0A"));
    }

    void pointInRect()
    {
        // The rectangle (10, 10, 20, 20): both edges are inside.
        QVERIFY(Module1::PointInRect(10, 10, 10, 10, 20, 20));
        QVERIFY(Module1::PointInRect(20, 20, 10, 10, 20, 20));
        for (const QPoint& p : {QPoint(21, 10), QPoint(9, 15), QPoint(15, 9), QPoint(15, 21)})
            QVERIFY(!Module1::PointInRect(p.x(), p.y(), 10, 10, 20, 20));
        // A rectangle given the wrong way round holds nothing.
        QVERIFY(!Module1::PointInRect(15, 15, 20, 20, 10, 10));
    }

    void roundsAndNarrows()
    {
        for (const auto& [value, rounded] :
             {std::pair(0.5, 0LL), std::pair(1.5, 2LL), std::pair(2.5, 2LL), std::pair(-2.5, -2LL),
              std::pair(-3.5, -4LL), std::pair(2.5001, 3LL),
              std::pair(4294967296.5, 4294967296LL)}) {
            const TableCase row(value);
            QCOMPARE(qint64(RoundHalfEven(value)), qint64(rounded));
        }
        QVERIFY_THROWS_EXCEPTION(OverflowError, RoundHalfEven(qQNaN()));
        QVERIFY_THROWS_EXCEPTION(OverflowError, RoundHalfEven(qInf()));
        QCOMPARE(RoundToInt16(32767.4), std::int16_t(32767));
        QCOMPARE(RoundToInt16(-32768.5), std::int16_t(-32768));
        QCOMPARE(ToInt32(-2147483648LL), std::numeric_limits<std::int32_t>::min());
        QCOMPARE(RoundToInt32(2147483646.5), 2147483646);
        QVERIFY_THROWS_EXCEPTION(OverflowError, RoundToInt16(32767.5));
        QVERIFY_THROWS_EXCEPTION(OverflowError, RoundToInt16(-32769));
        QVERIFY_THROWS_EXCEPTION(OverflowError, ToInt32(2147483648LL));
        QVERIFY_THROWS_EXCEPTION(OverflowError, ToInt32(-2147483649LL));
        QVERIFY_THROWS_EXCEPTION(OverflowError, RoundToInt32(2147483647.5));
        // The errors are the ones a user's command catches.
        QVERIFY_THROWS_EXCEPTION(std::overflow_error, ToInt16(32768));
    }
};

QTEST_APPLESS_MAIN(TestPatShape)
#include "tst_patshape.moc"
