#include "canvas/CanvasGrid.h"
#include "canvas/CanvasLayout.h"
#include "canvas/PointerArea.h"
#include "canvas/ScrollBarRange.h"
#include "shape/Numeric.h"

#include <QImage>
#include <QTest>

// The map window's arithmetic that needs no screen: snapping, grid lines, scroll bar
// ranges, the resize layout, the visible area and the status text.
class TestCanvasRules : public QObject
{
    Q_OBJECT
private slots:
    void snapToGrid_data();
    void snapToGrid();
    void snapFaults();
    void gridLinesAccumulate_data();
    void gridLinesAccumulate();
    void gridStyles();
    void scrollBarRange_data();
    void scrollBarRange();
    void layoutFollowsClientSize();
    void visibleArea();
    void statusText_data();
    void statusText();
};

void TestCanvasRules::snapToGrid_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<double>("step");
    QTest::addColumn<int>("snapped");
    QTest::newRow("29") << 29 << 20.0 << 20;
    QTest::newRow("31") << 31 << 20.0 << 40;
    QTest::newRow("30 half-way to even") << 30 << 20.0 << 40;
    QTest::newRow("50 half-way to even") << 50 << 20.0 << 40;
    QTest::newRow("70 half-way to even") << 70 << 20.0 << 80;
    QTest::newRow("zero") << 0 << 20.0 << 0;
    QTest::newRow("negative") << -29 << 20.0 << -20;
    QTest::newRow("pitch 30 at zoom 1.5") << 44 << 30.0 << 30;
    QTest::newRow("fractional pitch") << 26 << 12.5 << 25;
}

void TestCanvasRules::snapToGrid()
{
    QFETCH(int, value);
    QFETCH(double, step);
    QFETCH(int, snapped);
    std::int32_t x = value;
    std::int32_t y = value + 1000;
    const std::int32_t expectedY = CanvasGrid::SnapOne(value + 1000, step);
    CanvasGrid::SnapToGrid(x, y, step);
    QCOMPARE(x, snapped);
    QCOMPARE(y, expectedY);
}

void TestCanvasRules::snapFaults()
{
    std::int32_t x = 40;
    std::int32_t y = 700000;
    // 700000 / 20 = 35000 grid steps: beyond the 16-bit range; x stays as it was.
    QVERIFY_THROWS_EXCEPTION(OverflowError, CanvasGrid::SnapToGrid(x, y, 20.0));
    QCOMPARE(x, 40);
    QVERIFY_THROWS_EXCEPTION(DivisionByZeroError, CanvasGrid::SnapToGrid(x, y, 0.0));
}

void TestCanvasRules::gridLinesAccumulate_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("step");
    QTest::addColumn<QList<int>>("columns");
    QTest::addColumn<QList<int>>("rows");
    QTest::newRow("100 x 60 at 20")
        << QSize(100, 60) << 20.0 << QList<int>{0, 20, 40, 60, 80} << QList<int>{0, 20, 40};
    QTest::newRow("pitch 30") << QSize(90, 31) << 30.0 << QList<int>{0, 30, 60}
                              << QList<int>{0, 30};
    // 2.5 accumulates to 2.5, 5, 7.5, 10: halves round to even.
    QTest::newRow("pitch 2.5") << QSize(11, 3) << 2.5 << QList<int>{0, 2, 5, 8, 10}
                               << QList<int>{0, 2};
}

void TestCanvasRules::gridLinesAccumulate()
{
    QFETCH(QSize, size);
    QFETCH(double, step);
    QFETCH(QList<int>, columns);
    QFETCH(QList<int>, rows);
    QImage buffer(size, QImage::Format_RGB32);
    buffer.fill(Qt::white);
    CanvasGrid::DrawGridLines(buffer, step, 0, 0x0000FF); // red
    const int freeRow = rows.size() > 1 ? rows[0] + 1 : size.height() - 1;
    const int freeColumn = columns.size() > 1 ? columns[0] + 1 : size.width() - 1;
    QList<int> drawnColumns;
    for (int x = 0; x < size.width(); ++x) {
        if (buffer.pixel(x, freeRow) == qRgb(255, 0, 0))
            drawnColumns.append(x);
    }
    QList<int> drawnRows;
    for (int y = 0; y < size.height(); ++y) {
        if (buffer.pixel(freeColumn, y) == qRgb(255, 0, 0))
            drawnRows.append(y);
    }
    QCOMPARE(drawnColumns, columns);
    QCOMPARE(drawnRows, rows);
}

void TestCanvasRules::gridStyles()
{
    QCOMPARE(CanvasGrid::PenStyleOf(0), Qt::SolidLine);
    QCOMPARE(CanvasGrid::PenStyleOf(1), Qt::DashLine);
    QCOMPARE(CanvasGrid::PenStyleOf(2), Qt::DotLine);
    // A dotted line leaves gaps; a solid one none.
    for (const int style : {0, 1, 2}) {
        QImage buffer(40, 40, QImage::Format_RGB32);
        buffer.fill(Qt::white);
        CanvasGrid::DrawGridLines(buffer, 20.0, style, 0);
        int gaps = 0;
        for (int y = 0; y < 40; ++y)
            gaps += buffer.pixel(20, y) == qRgb(255, 255, 255);
        QCOMPARE(gaps == 0, style == 0);
    }
    // A pitch that does not advance draws nothing instead of looping for ever.
    QImage buffer(10, 10, QImage::Format_RGB32);
    buffer.fill(Qt::white);
    CanvasGrid::DrawGridLines(buffer, 0.0, 0, 0);
    QCOMPARE(buffer.pixel(0, 0), qRgb(255, 255, 255));
}

void TestCanvasRules::scrollBarRange_data()
{
    QTest::addColumn<double>("surface");
    QTest::addColumn<double>("viewport");
    QTest::addColumn<bool>("visible");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("large");
    QTest::addColumn<int>("small");
    QTest::newRow("1000 larger") << 1500.0 << 500.0 << true << 1000 << 41 << 6;
    QTest::newRow("1 larger") << 501.0 << 500.0 << true << 1 << 1 << 1;
    QTest::newRow("equal") << 500.0 << 500.0 << false << 0 << 1 << 1;
    QTest::newRow("half pixel rounds to even") << 500.5 << 500.0 << true << 0 << 1 << 1;
    QTest::newRow("200 larger") << 700.0 << 500.0 << true << 200 << 9 << 2;
}

void TestCanvasRules::scrollBarRange()
{
    QFETCH(double, surface);
    QFETCH(double, viewport);
    QFETCH(bool, visible);
    QFETCH(int, maximum);
    QFETCH(int, large);
    QFETCH(int, small);
    const ScrollBarRange r = ScrollBarRange::For(surface, viewport);
    QCOMPARE(r.Visible, visible);
    QCOMPARE(r.Maximum, maximum);
    QCOMPARE(r.LargeChange, large);
    QCOMPARE(r.SmallChange, small);
}

void TestCanvasRules::layoutFollowsClientSize()
{
    CanvasLayout start;
    start.HoldPicbox = QRect(0, 0, 200, 200);
    start.HScroll1 = QRect(0, 200, 200, 17);
    start.VScroll1 = QRect(200, 0, 15, 200);
    start.BntScrollEnd = QRect(200, 200, 15, 17);
    const CanvasLayout big = CanvasLayout::Resized(start, 600, 400);
    QCOMPARE(big.HoldPicbox, QRect(0, 0, 600 - 15 - 16, 400 - 17 - 16));
    QCOMPARE(big.VScroll1, QRect(600 - 15, 0, 15, 400 - 17));
    QCOMPARE(big.HScroll1, QRect(0, 400 - 17, 600 - 15, 17));
    QCOMPARE(big.BntScrollEnd, QRect(600 - 15, 400 - 17, 15, 17));
    QCOMPARE(big.HoldImageTop, 500);
    // Under 50 on an axis nothing moves along it; exactly 50 still lays out.
    const CanvasLayout flat = CanvasLayout::Resized(big, 49, 30);
    QCOMPARE(flat.HoldPicbox, big.HoldPicbox);
    QCOMPARE(flat.HScroll1, big.HScroll1);
    QCOMPARE(flat.HoldImageTop, 130);
    const CanvasLayout fifty = CanvasLayout::Resized(big, 50, 50);
    QCOMPARE(fifty.HoldPicbox.size(), QSize(50 - 15 - 16, 50 - 17 - 16));
}

void TestCanvasRules::visibleArea()
{
    // Picture smaller than the viewport: the picture.
    QCOMPARE(PointerArea::VisibleArea(QRect(100, 100, 500, 400), QRect(100, 100, 200, 150)),
             (ShapeRect{100, 100, 300, 250}));
    // Larger and scrolled: the viewport less 4 on the right and at the bottom.
    QCOMPARE(PointerArea::VisibleArea(QRect(100, 100, 500, 400), QRect(-200, -50, 2000, 1500)),
             (ShapeRect{100, 100, 596, 496}));
    const ShapeRect area{100, 100, 596, 496};
    QVERIFY(PointerArea::Contains(area, QPoint(596, 496)));
    QVERIFY(!PointerArea::Contains(area, QPoint(597, 300)));
    QCOMPARE(PointerArea::Nearest(area, QPoint(700, 50)), QPoint(596, 100));
    QCOMPARE(PointerArea::Nearest(area, QPoint(300, 300)), QPoint(300, 300));
}

void TestCanvasRules::statusText_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QString>("text");
    QTest::newRow("zoom 2, half to even") << 101.0 << 40.0 << 2.0 << QStringLiteral("X:50 Y:20");
    QTest::newRow("zoom 1") << 7.0 << 0.0 << 1.0 << QStringLiteral("X:7 Y:0");
    QTest::newRow("zoom 0.5") << 33.0 << 12.0 << 0.5 << QStringLiteral("X:66 Y:24");
}

void TestCanvasRules::statusText()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(double, zoom);
    QFETCH(QString, text);
    QCOMPARE(PointerArea::StatusText(x, y, zoom), text);
    QVERIFY_THROWS_EXCEPTION(OverflowError, PointerArea::StatusText(40000.0, 0.0, 1.0));
}

QTEST_APPLESS_MAIN(TestCanvasRules)
#include "tst_canvasrules.moc"
