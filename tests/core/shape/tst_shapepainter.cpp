#include "ShapeBuilders.h"
#include "core/document/CanvasGrid.h"
#include "core/shape/PatShape.h"
#include "core/shape/ShapePainter.h"

#include <QImage>
#include <QPainter>
#include <QTest>

namespace {

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
    for (int y = t; y <= b; ++y) {
        for (int x = l; x <= r; ++x)
            n += image.pixelColor(x, y) == colour ? 1 : 0;
    }
    return n;
}

} // namespace

// How shapes and the grid come out in pixels.
class TestShapePainter : public QObject
{
    Q_OBJECT
private slots:
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
        PatShape shape;
        shape.SetInfo(nullptr, Red, Polygon, 1.0, 0, 0);
        for (const ShapePoint& p : {ShapePoint{10, 10}, ShapePoint{80, 10}, ShapePoint{80, 70}})
            shape.AddPointToShape(p.x, p.y);
        shape.DrawLine(80, 70, 40, 75);
        // Open: no closing edge, no fill; the band runs from the last vertex to the pointer.
        QCOMPARE(Count(Painted(shape), 40, 30, 75, 40, red), 0);
        QVERIFY(Count(Painted(shape, Qt::white, true), 40, 70, 80, 75, red) > 30);
        QCOMPARE(Count(Painted(shape, Qt::white, true), 0, 0, 99, 65, red), 0);
        shape.AddPointToShape(12, 12);
        QCOMPARE(Count(Painted(shape, Qt::white, true), 0, 0, 99, 79, red), 0);
        QVERIFY(Count(Painted(shape), 40, 30, 75, 40, red) > 20);
    }

    void gridLinesAtThePitch()
    {
        QImage image = Blank(Qt::white);
        CanvasGrid::DrawGridLines(image, 20.0, 0, 0);
        for (int x = 0; x < 100; ++x)
            QCOMPARE(image.pixelColor(x, 7) == Qt::black, x % 20 == 0);
        // Two pixels is the finest grid still drawn: every other column.
        QImage fine = Blank(Qt::white);
        CanvasGrid::DrawGridLines(fine, 2.0, 0, 0);
        QCOMPARE(Count(fine, 0, 7, 99, 7, Qt::black), 50);
    }

    // A pitch from a file that the grid dialog could never set: finer than two screen
    // pixels the grid would only paint the picture over, and a pitch that no longer
    // moves a single-precision position would never end the loop.
    void gridFinerThanTwoPixelsDrawsNothing()
    {
        for (const double step : {1.99, 1.0, 1e-5, 1e-300}) {
            QImage image = Blank(Qt::white, 2000, 40);
            CanvasGrid::DrawGridLines(image, step, 0, 0);
            QCOMPARE(Count(image, 0, 0, 1999, 39, Qt::white), 2000 * 40);
        }
    }
};

QTEST_APPLESS_MAIN(TestShapePainter)
#include "tst_shapepainter.moc"
