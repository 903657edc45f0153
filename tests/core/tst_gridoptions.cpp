#include "canvas/MapDocument.h"
#include "frame/GridOptions.h"
#include "shape/Numeric.h"

#include <QTest>

class TestGridOptions : public QObject
{
    Q_OBJECT
private slots:
    void listsHoldTheSixColoursAndThreeStyles();
    void readShowsTheDocumentsGrid();
    void writeStoresEveryField();
    void colourNumberOutsideTheListIsRefusedWhole();
};

void TestGridOptions::listsHoldTheSixColoursAndThreeStyles()
{
    QCOMPARE(GridOptions::ColorCaptions(),
             QStringList({"Black", "White", "Gray", "Red", "Green", "Blue"}));
    QCOMPARE(GridOptions::ColorKeys().first(), QStringLiteral("key1"));
    QCOMPARE(GridOptions::ColorKeys().last(), QStringLiteral("key6"));
    QCOMPARE(GridOptions::Colors()[1], RGBColor(255, 255, 255));
    QCOMPARE(GridOptions::Colors()[5], RGBColor(0, 0, 255));
    QCOMPARE(GridOptions::StyleNames(), QStringList({"Lines", "Dashed Lines", "Dots"}));
}

void TestGridOptions::readShowsTheDocumentsGrid()
{
    MapDocument doc;
    doc.GridColorNum = 4;
    doc.GridStyle = 2;
    doc.GridSpacing = 35;
    doc.ShouldDrawGrid = true;
    doc.GridSnap = true;
    const GridOptions::Fields f = GridOptions::Read(doc);
    QCOMPARE(f.ColorNum, 4);
    QCOMPARE(f.Style, 2);
    QCOMPARE(f.Spacing, QStringLiteral("35"));
    QVERIFY(f.Display);
    QVERIFY(f.Snap);
    QCOMPARE(GridOptions::Read(MapDocument()).Spacing, QStringLiteral("20"));
}

void TestGridOptions::writeStoresEveryField()
{
    MapDocument doc;
    GridOptions::Fields f;
    f.ColorNum = 3; // Gray
    f.Style = 1;
    f.Spacing = QStringLiteral("50");
    f.Display = true;
    f.Snap = false;
    GridOptions::Write(f, doc);
    QCOMPARE(doc.GridColorNum, std::int16_t(3));
    QCOMPARE(doc.GridColor, RGBColor(170, 170, 170));
    QCOMPARE(doc.GridStyle, 1);
    QCOMPARE(doc.GridSpacing, 50.0);
    QVERIFY(doc.ShouldDrawGrid);
    QVERIFY(!doc.GridSnap);
}

void TestGridOptions::colourNumberOutsideTheListIsRefusedWhole()
{
    MapDocument doc;
    GridOptions::Fields f = GridOptions::Read(doc);
    f.ColorNum = 7;
    f.Spacing = QStringLiteral("60");
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, GridOptions::Write(f, doc));
    QCOMPARE(doc.GridSpacing, 20.0);
    QCOMPARE(doc.GridColorNum, std::int16_t(1));
}

QTEST_APPLESS_MAIN(TestGridOptions)
#include "tst_gridoptions.moc"
