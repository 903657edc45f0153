#include "ShapeBuilders.h"
#include "shape/PatShape.h"
#include "shape/ShapePainter.h"

#include <QImage>
#include <QPainter>
#include <QTest>
#include <functional>

namespace {

constexpr std::int32_t Red = 0x0000FF; // 0x00BBGGRR
constexpr std::int32_t Blue = 0xFF0000;

QImage Canvas(QColor background = Qt::white)
{
    QImage image(100, 80, QImage::Format_RGB32);
    image.fill(background);
    return image;
}

QImage Painted(const PatShape& shape, QColor background = Qt::white)
{
    QImage image = Canvas(background);
    QPainter painter(&image);
    ShapePainter::ReDrawShape(painter, shape);
    return image;
}

bool Is(const QImage& image, int x, int y, QColor colour)
{
    return image.pixelColor(x, y) == colour;
}

// How many pixels of the rectangle (inclusive) have the colour.
int Count(const QImage& image, QRect area, QColor colour)
{
    int n = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            n += Is(image, x, y, colour) ? 1 : 0;
    }
    return n;
}

QRect Area(int left, int top, int right, int bottom)
{
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

} // namespace

class TestShapePainter : public QObject
{
    Q_OBJECT
private slots:
    void colourIsRedGreenBlueFromLowByte();
    void circleSitsInTopLeftSquareOfDashedFrame();
    void rectangleIsOutlinedAndHatchedInItsColour();
    void hatchIsAlignedToTheCanvas();
    void handlesAreWhiteRimmedInShapeColour();
    void unfinishedPolygonHasNoFill();
    void onePointPolygonShowsOnlyItsHandle();
    void freshCircleDrawsOnlyHandles();
    void unknownTypeDrawsOnlyHandles();
    void rubberBandFromLastVertexToPointer();
    void noRubberBandWhenClosedOrReset();
};

void TestShapePainter::colourIsRedGreenBlueFromLowByte()
{
    QCOMPARE(ShapePainter::ToQColor(0x4080FF), QColor(255, 128, 64));
    QCOMPARE(ShapePainter::ToQColor(0x7F000000 | Blue), QColor(0, 0, 255));
}

// A frame of 40 by 20 holds a circle of 20 by 20 in its top-left corner, and the rest
// of the frame is a dashed outline with nothing inside.
void TestShapePainter::circleSitsInTopLeftSquareOfDashedFrame()
{
    const QImage image = Painted(MakeShape(Circle, Corners(10, 10, 50, 30), nullptr, 1.0, Red));
    const QColor red(255, 0, 0);
    // Across the middle, the circle spans columns 10..29.
    int rightmost = -1;
    for (int x = 11; x <= 45; ++x) {
        if (Is(image, x, 20, red))
            rightmost = x;
    }
    QCOMPARE(rightmost, 29);
    // Down its middle it spans rows 10..29, as high as the frame.
    QVERIFY(Is(image, 20, 10, red) || Is(image, 19, 10, red));
    QVERIFY(Is(image, 20, 29, red) || Is(image, 19, 29, red));
    QCOMPARE(Count(image, Area(15, 30, 25, 35), red), 0);
    // Hatched inside.
    QVERIFY(Count(image, Area(15, 15, 25, 25), red) > 10);
    // The frame is 40 by 20 (columns 10..49, rows 10..29), dashed, and hollow.
    QVERIFY(Count(image, Area(49, 15, 49, 25), red) > 3);
    QVERIFY(Count(image, Area(49, 15, 49, 25), Qt::white) > 0);
    QCOMPARE(Count(image, Area(50, 15, 50, 25), red), 0);
    QVERIFY(Count(image, Area(33, 29, 44, 29), red) > 3);
    QVERIFY(Count(image, Area(33, 29, 44, 29), Qt::white) > 0);
    QCOMPARE(Count(image, Area(33, 30, 44, 30), red), 0);
    QCOMPARE(Count(image, Area(33, 12, 47, 27), red), 0);
}

void TestShapePainter::rectangleIsOutlinedAndHatchedInItsColour()
{
    const QImage image = Painted(MakeShape(Rectangle, Corners(10, 10, 70, 50), nullptr, 1.0, Blue));
    const QColor blue(0, 0, 255);
    // A solid outline through the corner points.
    QCOMPARE(Count(image, Area(20, 10, 60, 10), blue), 41);
    QCOMPARE(Count(image, Area(70, 20, 70, 40), blue), 21);
    QCOMPARE(Count(image, Area(20, 50, 60, 50), blue), 41);
    // Inside, a hatch of the shape's colour over what was there: nothing else.
    const QRect inside = Area(20, 20, 60, 40);
    const int hatch = Count(image, inside, blue);
    const int clear = Count(image, inside, Qt::white);
    QVERIFY(hatch > 100);
    QVERIFY(clear > 100);
    QCOMPARE(hatch + clear, inside.width() * inside.height());
    // Outside, untouched.
    QCOMPARE(Count(image, Area(76, 0, 99, 79), Qt::white), 24 * 80);
}

// Moving a shape does not move its hatch: the pixels common to both positions look the
// same, which is what lets a drag leave that area alone.
void TestShapePainter::hatchIsAlignedToTheCanvas()
{
    const QImage before = Painted(MakeShape(Rectangle, Corners(10, 10, 70, 50)));
    const QImage after = Painted(MakeShape(Rectangle, Corners(13, 17, 73, 57)));
    const QRect common = Area(20, 25, 60, 45);
    QCOMPARE(before.copy(common), after.copy(common));
}

void TestShapePainter::handlesAreWhiteRimmedInShapeColour()
{
    const PatShape shape = MakeShape(Polygon, {{20, 20}, {70, 20}, {45, 60}}, nullptr, 1.0, Red);
    const QImage image = Painted(shape, Qt::black);
    const QColor red(255, 0, 0);
    for (const ShapePoint& p : shape.Points()) {
        // Filled in the shape's colour, rimmed in white, 9 pixels across.
        QVERIFY(Is(image, p.x, p.y, red));
        QVERIFY(Is(image, p.x - 4, p.y, Qt::white));
        QVERIFY(Is(image, p.x + 4, p.y, Qt::white));
        QVERIFY(Is(image, p.x, p.y - 4, Qt::white));
        QVERIFY(Is(image, p.x, p.y + 4, Qt::white));
        QVERIFY(!Is(image, p.x - 5, p.y, Qt::white));
        QVERIFY(!Is(image, p.x + 5, p.y, Qt::white));
    }
    // Nothing white anywhere but the handles.
    QRegion handles;
    for (const ShapePoint& p : shape.Points())
        handles += PatShape::HandleRect(p).toQRect();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (Is(image, x, y, Qt::white))
                QVERIFY2(handles.contains(QPoint(x, y)),
                         qPrintable(QStringLiteral("%1,%2").arg(x).arg(y)));
        }
    }
}

void TestShapePainter::unfinishedPolygonHasNoFill()
{
    PatShape shape = MakeShape(Polygon, {{10, 10}, {80, 10}, {80, 70}}, nullptr, 1.0, Red);
    const QColor red(255, 0, 0);
    const QRect inside = Area(55, 20, 75, 35);
    shape.ResetInfo(Polygon, false, Red, {}, {}, {}, {}, 0, {});
    const QImage open = Painted(shape);
    QCOMPARE(Count(open, inside, red), 0);
    // The two placed edges are drawn, the closing edge is not.
    QVERIFY(Is(open, 45, 10, red));
    QVERIFY(Is(open, 80, 40, red));
    QVERIFY(!Is(open, 45, 40, red));

    shape.ResetInfo(Polygon, true, Red, {}, {}, {}, {}, 0, {});
    const QImage closed = Painted(shape);
    QVERIFY(Count(closed, inside, red) > 20);
    QVERIFY(Is(closed, 45, 40, red));
}

void TestShapePainter::onePointPolygonShowsOnlyItsHandle()
{
    PatShape shape;
    shape.SetInfo(nullptr, Red, Polygon, 1.0, 0, 0);
    shape.AddPointToShape(40, 30);
    const QImage image = Painted(shape);
    const QRect handle = Area(36, 26, 44, 34);
    QCOMPARE(Count(image, Area(0, 0, 99, 79), Qt::white),
             100 * 80 - (handle.width() * handle.height() - Count(image, handle, Qt::white)));
    QVERIFY(Is(image, 40, 30, QColor(255, 0, 0)));
}

void TestShapePainter::freshCircleDrawsOnlyHandles()
{
    // Just pressed: four equal points, nothing to outline yet.
    PatShape shape;
    shape.SetInfo(nullptr, Red, Circle, 1.0, 40, 30);
    const QImage image = Painted(shape);
    const QRect handle = Area(36, 26, 44, 34);
    QCOMPARE(Count(image, Area(0, 0, 99, 79), Qt::white) + (handle.width() * handle.height()) -
                 Count(image, handle, Qt::white),
             100 * 80);
}

void TestShapePainter::unknownTypeDrawsOnlyHandles()
{
    // A type read from a file that the program does not know: no body, just handles.
    const PatShape shape = MakeShape(5, Corners(20, 20, 70, 50), nullptr, 1.0, Red);
    const QImage image = Painted(shape);
    QCOMPARE(Count(image, Area(25, 15, 65, 55), QColor(255, 0, 0)), 0);
    QVERIFY(Is(image, 20, 20, QColor(255, 0, 0)));
    QVERIFY(Is(image, 70, 50, QColor(255, 0, 0)));
}

void TestShapePainter::rubberBandFromLastVertexToPointer()
{
    PatShape shape;
    shape.SetInfo(nullptr, Blue, Polygon, 1.0, 0, 0);
    shape.AddPointToShape(5, 5);
    shape.AddPointToShape(20, 20);
    shape.DrawLine(20, 20, 60, 50);
    QImage image = Canvas();
    {
        QPainter painter(&image);
        ShapePainter::DrawRubberBand(painter, shape);
    }
    const QColor blue(0, 0, 255);
    QVERIFY(Is(image, 40, 35, blue));
    QVERIFY(Is(image, 60, 50, blue));
    QVERIFY(Is(image, 20, 20, blue));
    // The band alone: nothing of the polygon's own edge from (5,5).
    QVERIFY(!Is(image, 10, 10, blue));
    QCOMPARE(Count(image, Area(61, 0, 99, 79), blue), 0);
}

void TestShapePainter::noRubberBandWhenClosedOrReset()
{
    PatShape shape;
    shape.SetInfo(nullptr, Blue, Polygon, 1.0, 0, 0);
    for (const ShapePoint& p : {ShapePoint{10, 10}, ShapePoint{60, 10}, ShapePoint{40, 50}})
        shape.AddPointToShape(p.x, p.y);
    const std::function<bool()> bandShows = [&shape] {
        QImage image = Canvas();
        QPainter painter(&image);
        ShapePainter::DrawRubberBand(painter, shape);
        painter.end();
        return image != Canvas();
    };
    shape.DrawLine(40, 50, 90, 70);
    QVERIFY(bandShows());
    shape.ResetForNextMove();
    QVERIFY(!bandShows());
    shape.DrawLine(40, 50, 90, 70);
    shape.AddPointToShape(12, 12);
    QVERIFY(shape.IsShapeDone());
    QVERIFY(!bandShows());
}

QTEST_APPLESS_MAIN(TestShapePainter)
#include "tst_shapepainter.moc"
