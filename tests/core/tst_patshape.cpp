#include "RecordingSurface.h"
#include "ShapeBuilders.h"
#include "shape/Numeric.h"
#include "shape/PatShape.h"

#include <QTest>
#include <random>

Q_DECLARE_METATYPE(std::vector<ShapePoint>)

namespace {

// A polygon built by clicks: its vertices placed, not yet closed.
PatShape ClickedPolygon(const std::vector<ShapePoint>& vertices, ShapeSurface* surface = nullptr)
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

QString Rect(std::int32_t l, std::int32_t t, std::int32_t r, std::int32_t b)
{
    return QStringLiteral("(%1,%2,%3,%4)").arg(l).arg(t).arg(r).arg(b);
}

} // namespace

class TestPatShape : public QObject
{
    Q_OBJECT
private slots:
    // record and construction
    void freshShapeIsEmpty();
    void setInfoStartsShape_data();
    void setInfoStartsShape();
    void setInfoWithUnknownTypeKeepsKindAndPoints();
    void addPointClosingRule_data();
    void addPointClosingRule();
    void closingErasesRubberBandThenRedraws();
    void vertexLimitRaisesOverflowKeepingCount();
    void makeACopyIsFinishedAndMovedToOrigin();
    void makeACopyOntoItself();
    void makeACopyKeepsReceiversBinding();
    void resetInfoAndPointAccess();
    void pointIndexErrors();
    void unsizedShapeQueries();
    void lastPointAndTopLeft();

    // geometry
    void morphTo_data();
    void morphTo();
    void morphToReportsOldAreaThenRedraws();
    void resetPointsToZoom_data();
    void resetPointsToZoom();
    void resetPointsToZoomFromZeroThrowsFirst();
    void circleGeometry_data();
    void circleGeometry();
    void normalizeRect_data();
    void normalizeRect();
    void normalizeRectSwapsThrough16Bits();

    // HTML
    void generateHtml_data();
    void generateHtml();
    void generateHtmlRestoresZoomWithDrift();

    // hit-testing
    void isCursorOnShape_data();
    void isCursorOnShape();

    // moving
    void firstMoveOnlyRecordsPosition();
    void moveShapeByMouseDelta();
    void moveShapeSnapsToGrid();
    void moveShapeDisplacementIs16Bit_data();
    void moveShapeDisplacementIs16Bit();
    void moveRectangleReportsAreasInOrder();
    void moveWithNothingInCommonValidatesNothing_data();
    void moveWithNothingInCommonValidatesNothing();
    void movePolygonReportsRegions();
    void moveCircleValidatesCommonEllipse();
    void moveVertexKeepsRectangle_data();
    void moveVertexKeepsRectangle();
    void moveVertexOfPolygonMovesOnlyThatVertex();
    void moveVertexIndexErrors();
    void editsRepaintWhereTheShapeWas_data();
    void editsRepaintWhereTheShapeWas();
    void randomEditsKeepRectanglesAndLeaveNoTrace();

    // drawing requests
    void drawLineAfterResetErasesFromOrigin();
    void drawShapeReportsPaintBounds();
};

// ---- record and construction --------------------------------------------------------

void TestPatShape::freshShapeIsEmpty()
{
    const PatShape s;
    QCOMPARE(s.GetShapeType(), std::int16_t(Circle));
    QVERIFY(!s.IsShapeDone());
    QVERIFY(!s.BeingWorkedOn());
    QVERIFY(s.Points().empty());
    QVERIFY(s.URL.isEmpty());
    QCOMPARE(s.ShapeColor, 0);
    QCOMPARE(s.AlertBox, std::int16_t(0));
}

void TestPatShape::setInfoStartsShape_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("finished");
    QTest::addColumn<QString>("points");
    QTest::newRow("circle") << int(Circle) << true << "(7,9) (7,9) (7,9) (7,9)";
    QTest::newRow("rectangle") << int(Rectangle) << true << "(7,9) (7,9) (7,9) (7,9)";
    // A polygon's first vertex arrives with the first click.
    QTest::newRow("polygon") << int(Polygon) << false << "";
}

void TestPatShape::setInfoStartsShape()
{
    QFETCH(int, type);
    QFETCH(bool, finished);
    QFETCH(QString, points);
    RecordingSurface surface;
    PatShape s;
    s.SetInfo(&surface, 0x123456, static_cast<std::int16_t>(type), 1.5, 7, 9);
    QCOMPARE(int(s.GetShapeType()), type);
    QCOMPARE(s.IsShapeDone(), finished);
    QCOMPARE(PointsText(s), points);
    QCOMPARE(s.URL, QStringLiteral("http://"));
    QCOMPARE(s.ShapeColor, 0x123456);
    QCOMPARE(s.Zoom(), 1.5);
    QCOMPARE(s.Surface(), &surface);
    QCOMPARE(s.LastLineX(), -1);
    QCOMPARE(s.LastLineY(), -1);
    if (finished)
        QCOMPARE(s.NumOfPoints(), std::int16_t(3));
    QVERIFY(surface.calls.empty());
}

void TestPatShape::setInfoWithUnknownTypeKeepsKindAndPoints()
{
    PatShape s = MakeShape(Polygon, {{1, 2}, {3, 4}, {5, 0}});
    s.ResetInfo(Polygon, false, 1, QStringLiteral("x"), {}, {}, {}, 0, {});
    s.SetInfo(nullptr, 0xABCDEF, 7, 2.0, 40, 40);
    QCOMPARE(s.GetShapeType(), std::int16_t(Polygon));
    QCOMPARE(PointsText(s), QStringLiteral("(1,2) (3,4) (5,0)"));
    QVERIFY(!s.IsShapeDone());
    // The common part still happens.
    QCOMPARE(s.URL, QStringLiteral("http://"));
    QCOMPARE(s.ShapeColor, 0xABCDEF);
    QCOMPARE(s.Zoom(), 2.0);
    QCOMPARE(s.LastLineX(), -1);
}

void TestPatShape::addPointClosingRule_data()
{
    QTest::addColumn<std::vector<ShapePoint>>("placed");
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    QTest::addColumn<bool>("closes");
    const std::vector<ShapePoint> three{{100, 100}, {200, 100}, {150, 200}};
    QTest::newRow("3 vertices, +4 -4 closes") << three << 104 << 96 << true;
    QTest::newRow("3 vertices, -4 +4 closes") << three << 96 << 104 << true;
    QTest::newRow("3 vertices, on the first closes") << three << 100 << 100 << true;
    QTest::newRow("3 vertices, +5 adds") << three << 105 << 100 << false;
    QTest::newRow("3 vertices, -5 on y adds") << three << 100 << 95 << false;
    QTest::newRow("2 vertices never close")
        << std::vector<ShapePoint>{{100, 100}, {200, 100}} << 102 << 101 << false;
    QTest::newRow("1 vertex never closes")
        << std::vector<ShapePoint>{{100, 100}} << 100 << 100 << false;
    // The sentinel first vertex (-10, -10) of an empty polygon closes nothing.
    QTest::newRow("first click near the sentinel")
        << std::vector<ShapePoint>{} << -10 << -10 << false;
}

void TestPatShape::addPointClosingRule()
{
    QFETCH(std::vector<ShapePoint>, placed);
    QFETCH(int, x);
    QFETCH(int, y);
    QFETCH(bool, closes);
    PatShape s = ClickedPolygon(placed);
    QVERIFY(!s.IsShapeDone());
    s.AddPointToShape(x, y);
    QVERIFY(s.BeingWorkedOn());
    QCOMPARE(s.IsShapeDone(), closes);
    std::vector<ShapePoint> expected = placed;
    if (!closes)
        expected.push_back({x, y});
    QCOMPARE(PointsText(s), PointsText(expected));
}

void TestPatShape::closingErasesRubberBandThenRedraws()
{
    RecordingSurface surface;
    PatShape s = ClickedPolygon({{100, 100}, {200, 100}, {150, 200}}, &surface);
    s.DrawLine(150, 200, 110, 105);
    surface.clear();
    s.AddPointToShape(103, 97);
    QVERIFY(s.IsShapeDone());
    // The last band (150,200)-(110,105), inflated; then the finished polygon.
    QCOMPARE(surface.log(), QStringList({"inv" + Rect(109, 104, 151, 201), "paint",
                                         "inv" + Rect(95, 95, 205, 205), "paint"}));
}

void TestPatShape::vertexLimitRaisesOverflowKeepingCount()
{
    PatShape s;
    s.SetInfo(nullptr, 0, Polygon, 1.0, 0, 0);
    for (int i = 0; i < 32767; ++i)
        s.AddPointToShape(10 * (i % 2000) + 100, i / 2000 * 10 + 100);
    QCOMPARE(s.NumOfPoints(), std::int16_t(32766));
    // The vertex is stored at index 32767, then the count overflows.
    QVERIFY_THROWS_EXCEPTION(OverflowError, s.AddPointToShape(-500, -600));
    QCOMPARE(s.NumOfPoints(), std::int16_t(32767));
    QCOMPARE(s.GetPoint(32767), (ShapePoint{-500, -600}));
    // PointCount stayed at 32767: the next click lands on the same index again...
    QVERIFY_THROWS_EXCEPTION(OverflowError, s.AddPointToShape(-700, -800));
    QCOMPARE(s.GetPoint(32767), (ShapePoint{-700, -800}));
    QCOMPARE(s.NumOfPoints(), std::int16_t(32767));
    // ...and a click on the first vertex still closes the polygon.
    s.AddPointToShape(102, 98);
    QVERIFY(s.IsShapeDone());
}

void TestPatShape::makeACopyIsFinishedAndMovedToOrigin()
{
    PatShape source = MakeShape(Rectangle, Corners(100, 50, 140, 90));
    source.ResetInfo(Rectangle, false, 0x112233, QStringLiteral("a.htm"), QStringLiteral("c"),
                     QStringLiteral("_blank"), QStringLiteral("s"), 3, QStringLiteral("al"));
    PatShape copy;
    source.MakeACopy(copy);
    QCOMPARE(PointsText(copy), QStringLiteral("(0,0) (40,0) (40,40) (0,40)"));
    QVERIFY(copy.IsShapeDone());
    QCOMPARE(copy.GetShapeType(), std::int16_t(Rectangle));
    QCOMPARE(copy.ShapeColor, 0x112233);
    QCOMPARE(copy.URL, QStringLiteral("a.htm"));
    QCOMPARE(copy.Comment, QStringLiteral("c"));
    QCOMPARE(copy.Target, QStringLiteral("_blank"));
    QCOMPARE(copy.StatusString, QStringLiteral("s"));
    QCOMPARE(copy.AlertBox, std::int16_t(3));
    QCOMPARE(copy.AlertString, QStringLiteral("al"));
    // The source is untouched.
    QCOMPARE(PointsText(source), QStringLiteral("(100,50) (140,50) (140,90) (100,90)"));
    QVERIFY(!source.IsShapeDone());

    // Negative coordinates move to the origin as well, order kept.
    PatShape poly = MakeShape(Polygon, {{-10, 5}, {20, -3}, {0, 30}});
    poly.MakeACopy(copy);
    QCOMPARE(PointsText(copy), QStringLiteral("(0,8) (30,0) (10,33)"));
    QCOMPARE(copy.GetShapeType(), std::int16_t(Polygon));
}

void TestPatShape::makeACopyOntoItself()
{
    PatShape s = MakeShape(Polygon, {{100, 50}, {140, 60}, {120, 90}});
    s.MakeACopy(s);
    QCOMPARE(PointsText(s), QStringLiteral("(0,0) (40,10) (20,40)"));
    QVERIFY(s.IsShapeDone());
}

void TestPatShape::makeACopyKeepsReceiversBinding()
{
    RecordingSurface surface;
    PatShape receiver = MakeShape(Polygon, {{1, 1}, {9, 1}, {5, 5}, {3, 8}, {1, 4}}, &surface, 3.0);
    const PatShape source = MakeShape(Circle, Corners(10, 10, 30, 20), nullptr, 1.0);
    source.MakeACopy(receiver);
    QCOMPARE(receiver.NumOfPoints(), std::int16_t(3));
    QCOMPARE(receiver.Zoom(), 3.0);
    QCOMPARE(receiver.Surface(), &surface);
    QVERIFY(surface.calls.empty());
}

void TestPatShape::resetInfoAndPointAccess()
{
    PatShape s;
    s.ResetInfo(Polygon, false, 77, QStringLiteral("u"), QStringLiteral("c"), QStringLiteral("t"),
                QStringLiteral("s"), -1, QStringLiteral("a"));
    QCOMPARE(s.GetShapeType(), std::int16_t(Polygon));
    QVERIFY(!s.IsShapeDone());
    QCOMPARE(s.ShapeColor, 77);
    QCOMPARE(s.URL, QStringLiteral("u"));
    QCOMPARE(s.Comment, QStringLiteral("c"));
    QCOMPARE(s.Target, QStringLiteral("t"));
    QCOMPARE(s.StatusString, QStringLiteral("s"));
    QCOMPARE(s.AlertBox, std::int16_t(-1));
    QCOMPARE(s.AlertString, QStringLiteral("a"));
    QVERIFY(s.Points().empty());

    s.ResetPoints(2);
    QCOMPARE(PointsText(s), QStringLiteral("(0,0) (0,0) (0,0)"));
    s.SetPoint(1, -70000, 70000);
    std::int32_t x = 0, y = 0;
    s.GetPoint(1, x, y);
    QCOMPARE(x, -70000);
    QCOMPARE(y, 70000);
    // Resetting discards the old contents.
    s.ResetPoints(1);
    QCOMPARE(PointsText(s), QStringLiteral("(0,0) (0,0)"));

    // The type is taken as given, even one the shape cannot draw.
    s.ResetInfo(9, true, 0, {}, {}, {}, {}, 0, {});
    QCOMPARE(s.GetShapeType(), std::int16_t(9));
}

void TestPatShape::pointIndexErrors()
{
    PatShape s = MakeShape(Rectangle, Corners(0, 0, 5, 5));
    std::int32_t x = 0, y = 0;
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, s.SetPoint(4, 1, 1));
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, s.SetPoint(-1, 1, 1));
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, s.GetPoint(4, x, y));
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, s.GetPoint(-1, x, y));
    QCOMPARE(PointsText(s), QStringLiteral("(0,0) (5,0) (5,5) (0,5)"));
    PatShape empty;
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, empty.GetPoint(0, x, y));
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, empty.SetPoint(0, 1, 1));
}

void TestPatShape::unsizedShapeQueries()
{
    PatShape s;
    s.SetInfo(nullptr, 0, Polygon, 1.0, 5, 5);
    std::int32_t a = 0, b = 0;
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, s.GetLastPoint(a, b));
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, s.TopAndLeftOfShape(a, b));
    std::int16_t n = -5;
    QVERIFY_THROWS_NO_EXCEPTION(n = s.NumOfPoints());
    QCOMPARE(n, std::int16_t(0));
}

void TestPatShape::lastPointAndTopLeft()
{
    const PatShape s = MakeShape(Polygon, {{30, 5}, {10, 40}, {50, 20}});
    std::int32_t x = 0, y = 0;
    s.GetLastPoint(x, y);
    QCOMPARE(x, 50);
    QCOMPARE(y, 20);
    s.TopAndLeftOfShape(x, y);
    QCOMPARE(x, 10);
    QCOMPARE(y, 5);
}

// ---- geometry --------------------------------------------------------------------------

void TestPatShape::morphTo_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<std::vector<ShapePoint>>("points");
    QTest::addColumn<int>("newType");
    QTest::addColumn<int>("resultType");
    QTest::addColumn<QString>("result");
    const std::vector<ShapePoint> triangle{{10, 40}, {30, 5}, {50, 40}};
    QTest::newRow("polygon to rectangle")
        << int(Polygon) << triangle << 1 << int(Rectangle) << "(10,5) (50,5) (50,40) (10,40)";
    QTest::newRow("polygon to circle")
        << int(Polygon) << triangle << 0 << int(Circle) << "(10,5) (50,5) (50,40) (10,40)";
    // Corners out of order come back clockwise from the top-left.
    const std::vector<ShapePoint> shuffled{{50, 40}, {10, 10}, {50, 10}, {10, 40}};
    QTest::newRow("unknown 7 gives circle")
        << int(Rectangle) << shuffled << 7 << int(Circle) << "(10,10) (50,10) (50,40) (10,40)";
    QTest::newRow("negative gives circle")
        << int(Polygon) << triangle << -3 << int(Circle) << "(10,5) (50,5) (50,40) (10,40)";
    QTest::newRow("rectangle to polygon keeps points")
        << int(Rectangle) << shuffled << 2 << int(Polygon) << "(50,40) (10,10) (50,10) (10,40)";
    QTest::newRow("circle to rectangle uses the frame")
        << int(Circle) << Corners(10, 10, 50, 20) << 1 << int(Rectangle)
        << "(10,10) (50,10) (50,20) (10,20)";
}

void TestPatShape::morphTo()
{
    QFETCH(int, from);
    QFETCH(std::vector<ShapePoint>, points);
    QFETCH(int, newType);
    QFETCH(int, resultType);
    QFETCH(QString, result);
    PatShape s = MakeShape(static_cast<std::int16_t>(from), points);
    s.URL = QStringLiteral("keep.htm");
    s.AlertBox = 1;
    s.MorphTo(static_cast<std::int16_t>(newType));
    QCOMPARE(int(s.GetShapeType()), resultType);
    QCOMPARE(PointsText(s), result);
    QVERIFY(s.IsShapeDone());
    QCOMPARE(s.URL, QStringLiteral("keep.htm"));
    QCOMPARE(s.AlertBox, std::int16_t(1));
}

void TestPatShape::morphToReportsOldAreaThenRedraws()
{
    RecordingSurface surface;
    PatShape s = MakeShape(Polygon, {{10, 40}, {30, 5}, {50, 40}}, &surface);
    s.MorphTo(Rectangle);
    QCOMPARE(surface.log(), QStringList({"inv" + Rect(9, 4, 51, 41), "inv" + Rect(6, 36, 14, 44),
                                         "inv" + Rect(26, 1, 34, 9), "inv" + Rect(46, 36, 54, 44),
                                         "paint", "inv" + Rect(5, 0, 55, 45), "paint"}));
}

void TestPatShape::resetPointsToZoom_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<int>("coordinate");
    QTest::addColumn<int>("expected");
    QTest::newRow("doubling is exact") << 1.0 << 2.0 << 37 << 74;
    QTest::newRow("2.5 rounds to 2") << 2.0 << 1.0 << 5 << 2;
    QTest::newRow("3.5 rounds to 4") << 2.0 << 1.0 << 7 << 4;
    QTest::newRow("-2.5 rounds to -2") << 2.0 << 1.0 << -5 << -2;
    QTest::newRow("thirds") << 3.0 << 1.0 << 10 << 3;
    QTest::newRow("single rounding at the end") << 0.5 << 1.5 << 3 << 9;
    QTest::newRow("zoom in by a quarter") << 1.0 << 1.25 << 10 << 12;
}

void TestPatShape::resetPointsToZoom()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(int, coordinate);
    QFETCH(int, expected);
    PatShape s = MakeShape(Polygon, {{coordinate, 0}, {0, coordinate}}, nullptr, from);
    s.ResetPointsToZoom(to);
    QCOMPARE(PointsText(s), QStringLiteral("(%1,0) (0,%1)").arg(expected));
    QCOMPARE(s.Zoom(), to);
}

void TestPatShape::resetPointsToZoomFromZeroThrowsFirst()
{
    PatShape s = MakeShape(Rectangle, Corners(3, 4, 5, 6), nullptr, 0.0);
    QVERIFY_THROWS_EXCEPTION(DivisionByZeroError, s.ResetPointsToZoom(1.0));
    QCOMPARE(PointsText(s), QStringLiteral("(3,4) (5,4) (5,6) (3,6)"));
    QCOMPARE(s.Zoom(), 0.0);
}

void TestPatShape::circleGeometry_data()
{
    QTest::addColumn<std::vector<ShapePoint>>("points");
    QTest::addColumn<int>("cx");
    QTest::addColumn<int>("cy");
    QTest::addColumn<int>("radius");
    // d = 11, radius 5.5 -> 6, centre 15.5 -> 16.
    QTest::newRow("10,10,21,30") << Corners(10, 10, 21, 30) << 16 << 16 << 6;
    QTest::newRow("wide frame uses its height") << Corners(10, 10, 50, 30) << 20 << 20 << 10;
    QTest::newRow("square") << Corners(0, 0, 10, 10) << 5 << 5 << 5;
    // d = 1: radius 0.5 -> 0, centre 1.5 -> 2.
    QTest::newRow("half rounds to even") << Corners(1, 1, 4, 2) << 2 << 2 << 0;
    QTest::newRow("points in any order")
        << std::vector<ShapePoint>{{21, 30}, {10, 30}, {21, 10}, {10, 10}} << 16 << 16 << 6;
}

void TestPatShape::circleGeometry()
{
    QFETCH(std::vector<ShapePoint>, points);
    QFETCH(int, cx);
    QFETCH(int, cy);
    QFETCH(int, radius);
    const PatShape s = MakeShape(Circle, points);
    std::int32_t x = 0, y = 0, r = 0;
    s.CircleGeometry(x, y, r);
    QCOMPARE(x, cx);
    QCOMPARE(y, cy);
    QCOMPARE(r, radius);
}

void TestPatShape::normalizeRect_data()
{
    QTest::addColumn<QList<int>>("rect");
    QTest::addColumn<bool>("square");
    QTest::addColumn<QString>("result");
    QTest::newRow("in order") << QList<int>{1, 2, 30, 40} << false << Rect(1, 2, 30, 40);
    QTest::newRow("both swapped") << QList<int>{30, 40, 1, 2} << false << Rect(1, 2, 30, 40);
    QTest::newRow("square from a wide box")
        << QList<int>{10, 10, 50, 30} << true << Rect(10, 10, 30, 30);
    QTest::newRow("square from a tall box")
        << QList<int>{50, 60, 10, 10} << true << Rect(10, 10, 50, 50);
}

void TestPatShape::normalizeRect()
{
    QFETCH(QList<int>, rect);
    QFETCH(bool, square);
    QFETCH(QString, result);
    const ShapeRect r = PatShape::NormalizeRect({rect[0], rect[1], rect[2], rect[3]}, square);
    QCOMPARE(Rect(r.left, r.top, r.right, r.bottom), result);
}

void TestPatShape::normalizeRectSwapsThrough16Bits()
{
    QVERIFY_THROWS_EXCEPTION(OverflowError, PatShape::NormalizeRect({40000, 0, 10, 5}, false));
    QVERIFY_THROWS_EXCEPTION(OverflowError, PatShape::NormalizeRect({0, 40000, 10, 5}, false));
    // In order, nothing is swapped and large coordinates pass.
    QCOMPARE(PatShape::NormalizeRect({10, 5, 40000, 50000}, false),
             (ShapeRect{10, 5, 40000, 50000}));
}

// ---- HTML --------------------------------------------------------------------------------

void TestPatShape::generateHtml_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<std::vector<ShapePoint>>("points");
    QTest::addColumn<QStringList>("fields"); // URL, comment, target, status, alert
    QTest::addColumn<int>("alertBox");
    QTest::addColumn<QString>("html");
    const QStringList plain{"http://", "", "", "", ""};
    QTest::newRow("rectangle") << int(Rectangle) << Corners(30, 40, 10, 20) << plain << 0
                               << "<area shape=\"rect\" coords=\"10,20,30,40\" href=\"http://\">";
    QTest::newRow("circle") << int(Circle) << Corners(10, 10, 21, 30) << plain << 0
                            << "<area shape=\"circle\" coords=\"16,16,6\" href=\"http://\">";
    QTest::newRow("polygon ends with a comma")
        << int(Polygon) << std::vector<ShapePoint>{{10, 10}, {50, 10}, {30, 40}} << plain << 0
        << "<area shape=\"poly\" coords=\"10,10,50,10,30,40,\" href=\"http://\">";
    QTest::newRow("unknown type starts at href")
        << 5 << Corners(0, 0, 1, 1) << plain << 0 << " href=\"http://\">";
    QTest::newRow("every attribute, apostrophes escaped")
        << int(Rectangle) << Corners(10, 20, 30, 40)
        << QStringList{"page.htm", "Home", "_top", "Ann's page", "It's here"} << 1
        << "<area shape=\"rect\" coords=\"10,20,30,40\" href=\"page.htm\" alt=\"Home\" "
           "target=\"_top\""
           " OnFocus=\"window.status='Ann\\'s page'\" OnBlur=\"window.status=''\""
           " OnClick=\"javascript:alert('It\\'s here')\">";
    QTest::newRow("blank fields are left out, blank URL is #")
        << int(Rectangle) << Corners(0, 0, 1, 1) << QStringList{"   ", " ", "  ", "    ", "x"} << 0
        << "<area shape=\"rect\" coords=\"0,0,1,1\" href=\"#\">";
    QTest::newRow("alert switch on with empty text writes nothing")
        << int(Rectangle) << Corners(0, 0, 1, 1) << QStringList{"u", "", "", "", ""} << -1
        << "<area shape=\"rect\" coords=\"0,0,1,1\" href=\"u\">";
    QTest::newRow("alert text is not trimmed")
        << int(Rectangle) << Corners(0, 0, 1, 1) << QStringList{"u", "", "", "", " "} << 1
        << "<area shape=\"rect\" coords=\"0,0,1,1\" href=\"u\" OnClick=\"javascript:alert(' ')\">";
    QTest::newRow("values are written as stored, blanks included")
        << int(Rectangle) << Corners(0, 0, 1, 1) << QStringList{" a.htm ", " alt ", "", "", ""} << 0
        << "<area shape=\"rect\" coords=\"0,0,1,1\" href=\" a.htm \" alt=\" alt \">";
    // Only blanks are trimmed: a tab is content.
    QTest::newRow("a tab is not a blank")
        << int(Rectangle) << Corners(0, 0, 1, 1) << QStringList{"\t", "\t", "", "", ""} << 0
        << "<area shape=\"rect\" coords=\"0,0,1,1\" href=\"\t\" alt=\"\t\">";
}

void TestPatShape::generateHtml()
{
    QFETCH(int, type);
    QFETCH(std::vector<ShapePoint>, points);
    QFETCH(QStringList, fields);
    QFETCH(int, alertBox);
    QFETCH(QString, html);
    PatShape s = MakeShape(static_cast<std::int16_t>(type), points);
    s.URL = fields[0];
    s.Comment = fields[1];
    s.Target = fields[2];
    s.StatusString = fields[3];
    s.AlertString = fields[4];
    s.AlertBox = static_cast<std::int16_t>(alertBox);
    QCOMPARE(s.GenerateHTML(), html);
    QCOMPARE(PointsText(s), PointsText(points));
}

void TestPatShape::generateHtmlRestoresZoomWithDrift()
{
    // At zoom 2.0, 5 and 15 become 2.5 -> 2 and 7.5 -> 8 in picture pixels.
    PatShape s = MakeShape(Rectangle, Corners(5, 5, 15, 15), nullptr, 2.0);
    QCOMPARE(s.GenerateHTML(),
             QStringLiteral("<area shape=\"rect\" coords=\"2,2,8,8\" href=\"http://\">"));
    QCOMPARE(s.Zoom(), 2.0);
    // Back at zoom 2.0 the points have drifted to multiples of two.
    QCOMPARE(PointsText(s), QStringLiteral("(4,4) (16,4) (16,16) (4,16)"));
    // Generating again is stable from here on.
    s.GenerateHTML();
    QCOMPARE(PointsText(s), QStringLiteral("(4,4) (16,4) (16,16) (4,16)"));
}

// ---- hit-testing -------------------------------------------------------------------------

void TestPatShape::isCursorOnShape_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<std::vector<ShapePoint>>("points");
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("hit");
    const auto rect = Corners(10, 10, 50, 40);
    QTest::newRow("inside") << int(Rectangle) << rect << 30 << 25 << -1;
    QTest::newRow("far outside") << int(Rectangle) << rect << 100 << 100 << -2;
    QTest::newRow("4 right and 4 above vertex 1") << int(Rectangle) << rect << 54 << 6 << 1;
    QTest::newRow("4 left and 4 below vertex 3") << int(Rectangle) << rect << 6 << 44 << 3;
    QTest::newRow("5 right of vertex 1") << int(Rectangle) << rect << 55 << 10 << -2;
    QTest::newRow("5 above vertex 1") << int(Rectangle) << rect << 50 << 5 << -2;
    QTest::newRow("5 left of vertex 1, on the top edge")
        << int(Rectangle) << rect << 45 << 10 << -1;
    QTest::newRow("handle beats interior") << int(Rectangle) << rect << 13 << 13 << 0;
    const auto small = Corners(10, 10, 20, 16);
    QTest::newRow("vertex 0 over vertex 3") << int(Rectangle) << small << 11 << 13 << 0;
    QTest::newRow("vertex 1 over vertex 2") << int(Rectangle) << small << 19 << 14 << 1;
    // The circle is tested against its frame, not the drawn circle (10..30).
    const auto frame = Corners(10, 10, 50, 30);
    QTest::newRow("inside circle frame, outside ellipse") << int(Circle) << frame << 45 << 25 << -1;
    QTest::newRow("circle frame corner handle") << int(Circle) << frame << 51 << 29 << 2;
    const std::vector<ShapePoint> triangle{{10, 10}, {50, 10}, {30, 40}};
    QTest::newRow("inside triangle") << int(Polygon) << triangle << 30 << 20 << -1;
    QTest::newRow("in the box, outside the triangle") << int(Polygon) << triangle << 16 << 36 << -2;
    // Alternate filling: the pentagon inside a five-pointed star is outside.
    const std::vector<ShapePoint> star{{50, 0}, {79, 90}, {2, 35}, {98, 35}, {21, 90}};
    QTest::newRow("star, centre is outside") << int(Polygon) << star << 50 << 50 << -2;
    QTest::newRow("star, in a point") << int(Polygon) << star << 50 << 15 << -1;
    QTest::newRow("two-vertex polygon has no inside")
        << int(Polygon) << std::vector<ShapePoint>{{10, 10}, {50, 10}} << 30 << 10 << -2;
    QTest::newRow("unsized shape") << int(Polygon) << std::vector<ShapePoint>{} << 0 << 0 << -2;
}

void TestPatShape::isCursorOnShape()
{
    QFETCH(int, type);
    QFETCH(std::vector<ShapePoint>, points);
    QFETCH(int, x);
    QFETCH(int, y);
    QFETCH(int, hit);
    PatShape s;
    s.ResetInfo(static_cast<std::int16_t>(type), true, 0, {}, {}, {}, {}, 0, {});
    if (!points.empty()) {
        s.ResetPoints(static_cast<std::int16_t>(points.size() - 1));
        for (std::size_t i = 0; i < points.size(); ++i)
            s.SetPoint(static_cast<std::int16_t>(i), points[i].x, points[i].y);
    }
    QCOMPARE(int(s.IsCursorOnShape(x, y)), hit);
}

// ---- moving ------------------------------------------------------------------------------

void TestPatShape::firstMoveOnlyRecordsPosition()
{
    RecordingSurface surface;
    PatShape s = MakeShape(Rectangle, Corners(10, 10, 50, 40), &surface);
    s.ResetForNextMove();
    s.MoveShape(100, 100, false, 0, 0);
    QCOMPARE(PointsText(s), PointsText(Corners(10, 10, 50, 40)));
    QVERIFY(surface.calls.empty());
    QCOMPARE(s.LastLineX(), 100);
    QCOMPARE(s.LastLineY(), 100);
}

void TestPatShape::moveShapeByMouseDelta()
{
    PatShape s = MakeShape(Polygon, {{10, 10}, {50, 10}, {30, 40}});
    s.ResetForNextMove();
    s.MoveShape(100, 100, false, 0, 0);
    s.MoveShape(110, 95, false, 0, 0);
    QCOMPARE(PointsText(s), QStringLiteral("(20,5) (60,5) (40,35)"));
    s.MoveShape(100, 95, false, 0, 0);
    QCOMPARE(PointsText(s), QStringLiteral("(10,5) (50,5) (30,35)"));
    QCOMPARE(s.LastLineX(), 100);
    QCOMPARE(s.LastLineY(), 95);
}

void TestPatShape::moveShapeSnapsToGrid()
{
    PatShape s = MakeShape(Rectangle, {{50, 40}, {12, 10}, {50, 10}, {12, 40}});
    s.ResetForNextMove();
    s.MoveShape(100, 100, true, 3, -2);
    // The box's top-left lands on (x + SnapX, y + SnapY) whatever the mouse delta.
    s.MoveShape(40, 60, true, 3, -2);
    QCOMPARE(PointsText(s), QStringLiteral("(81,88) (43,58) (81,58) (43,88)"));
}

void TestPatShape::moveShapeDisplacementIs16Bit_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<bool>("overflows");
    QTest::newRow("32767") << 32767 << false;
    QTest::newRow("32768") << 32768 << true;
    QTest::newRow("-32768") << -32768 << false;
    QTest::newRow("-32769") << -32769 << true;
}

void TestPatShape::moveShapeDisplacementIs16Bit()
{
    QFETCH(int, x);
    QFETCH(bool, overflows);
    RecordingSurface surface;
    PatShape s = MakeShape(Rectangle, Corners(10, 10, 50, 40), &surface);
    s.ResetForNextMove();
    s.MoveShape(0, 0, false, 0, 0);
    if (overflows) {
        QVERIFY_THROWS_EXCEPTION(OverflowError, s.MoveShape(x, 0, false, 0, 0));
        QCOMPARE(PointsText(s), PointsText(Corners(10, 10, 50, 40)));
        QVERIFY(surface.calls.empty());
        // The grid displacement is held the same way.
        QVERIFY_THROWS_EXCEPTION(OverflowError, s.MoveShape(x + 10, 0, true, 0, 0));
        QCOMPARE(PointsText(s), PointsText(Corners(10, 10, 50, 40)));
    } else {
        s.MoveShape(x, 0, false, 0, 0);
        QCOMPARE(s.Points().front().x, 10 + x);
    }
}

void TestPatShape::moveRectangleReportsAreasInOrder()
{
    RecordingSurface surface;
    PatShape s = MakeShape(Rectangle, Corners(10, 10, 50, 40), &surface);
    s.ResetForNextMove();
    s.MoveShape(100, 100, false, 0, 0);
    s.MoveShape(110, 95, false, 0, 0);
    // Old box; the interior common to old and new boxes, less 2 pixels; the old handle
    // squares; then the shape at its new place.
    QCOMPARE(surface.log(), QStringList({"inv" + Rect(9, 9, 51, 41), "val" + Rect(21, 11, 49, 34),
                                         "inv" + Rect(6, 6, 14, 14), "inv" + Rect(46, 6, 54, 14),
                                         "inv" + Rect(46, 36, 54, 44), "inv" + Rect(6, 36, 14, 44),
                                         "paint", "inv" + Rect(15, 0, 65, 40), "paint"}));
}

void TestPatShape::moveWithNothingInCommonValidatesNothing_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("dx");
    QTest::newRow("rectangle, boxes touch") << int(Rectangle) << 40;
    QTest::newRow("rectangle, boxes 3 apart") << int(Rectangle) << 43;
    QTest::newRow("rectangle, far away") << int(Rectangle) << 200;
    QTest::newRow("circle, far away") << int(Circle) << 200;
}

void TestPatShape::moveWithNothingInCommonValidatesNothing()
{
    QFETCH(int, type);
    QFETCH(int, dx);
    RecordingSurface surface;
    PatShape s = MakeShape(static_cast<std::int16_t>(type), Corners(10, 10, 50, 40), &surface);
    s.ResetForNextMove();
    s.MoveShape(0, 0, false, 0, 0);
    s.MoveShape(dx, 0, false, 0, 0);
    for (const RecordingSurface::Call& c : surface.calls) {
        QVERIFY(c.kind != RecordingSurface::Kind::ValidateRect);
        QVERIFY(c.kind != RecordingSurface::Kind::ValidateRegion);
    }
    // A corner dragged across the whole box leaves no common interior either.
    surface.clear();
    s.MoveVertex(0, 200 + dx, 200);
    for (const RecordingSurface::Call& c : surface.calls)
        QVERIFY(c.kind != RecordingSurface::Kind::ValidateRect);
}

void TestPatShape::movePolygonReportsRegions()
{
    RecordingSurface surface;
    PatShape s = MakeShape(Polygon, {{10, 10}, {50, 10}, {30, 40}}, &surface);
    s.ResetForNextMove();
    s.MoveShape(0, 0, false, 0, 0);
    s.MoveShape(5, 5, false, 0, 0);
    QCOMPARE(surface.log(),
             QStringList({"invrgn", "invrgn", "paint", "inv" + Rect(10, 10, 60, 50), "paint"}));
    QRegion old(QRect(QPoint(9, 9), QPoint(51, 41)));
    old += QRect(QPoint(6, 6), QPoint(14, 14));
    old += QRect(QPoint(46, 6), QPoint(54, 14));
    old += QRect(QPoint(26, 36), QPoint(34, 44));
    QCOMPARE(surface.calls[0].region, old);
    QCOMPARE(surface.calls[1].region, QRegion(QRect(QPoint(14, 14), QPoint(56, 46))));
}

void TestPatShape::moveCircleValidatesCommonEllipse()
{
    RecordingSurface surface;
    PatShape s = MakeShape(Circle, Corners(10, 10, 50, 30), &surface);
    s.ResetForNextMove();
    s.MoveShape(0, 0, false, 0, 0);
    s.MoveShape(2, 0, false, 0, 0);
    QCOMPARE(surface.log(), QStringList({"inv" + Rect(9, 9, 51, 31), "valrgn",
                                         "inv" + Rect(6, 6, 14, 14), "inv" + Rect(46, 6, 54, 14),
                                         "inv" + Rect(46, 26, 54, 34), "inv" + Rect(6, 26, 14, 34),
                                         "paint", "inv" + Rect(7, 5, 57, 35), "paint"}));
    // Only the inside of both drawn circles is spared: never the frame's empty corner.
    const QRegion spared = surface.calls[1].region;
    QVERIFY(spared.contains(QPoint(21, 20)));
    QVERIFY(!spared.contains(QPoint(12, 12)));
    QVERIFY(!spared.contains(QPoint(40, 20)));
    QVERIFY(QRegion(QRect(QPoint(11, 11), QPoint(31, 29))).contains(spared.boundingRect()));
}

void TestPatShape::moveVertexKeepsRectangle_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("vertex");
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    QTest::addColumn<QString>("result");
    QTest::newRow("corner 0") << int(Rectangle) << 0 << 20 << 5 << "(20,5) (50,5) (50,40) (20,40)";
    QTest::newRow("corner 1 (odd)")
        << int(Rectangle) << 1 << 60 << 0 << "(10,0) (60,0) (60,40) (10,40)";
    QTest::newRow("corner 2 (even)")
        << int(Rectangle) << 2 << 55 << 45 << "(10,10) (55,10) (55,45) (10,45)";
    QTest::newRow("corner 3 wraps to 0")
        << int(Rectangle) << 3 << 5 << 50 << "(5,10) (50,10) (50,50) (5,50)";
    QTest::newRow("past the opposite corner")
        << int(Rectangle) << 0 << 70 << 60 << "(70,60) (50,60) (50,40) (70,40)";
    QTest::newRow("circle corner")
        << int(Circle) << 2 << 30 << 20 << "(10,10) (30,10) (30,20) (10,20)";
}

void TestPatShape::moveVertexKeepsRectangle()
{
    QFETCH(int, type);
    QFETCH(int, vertex);
    QFETCH(int, x);
    QFETCH(int, y);
    QFETCH(QString, result);
    PatShape s = MakeShape(static_cast<std::int16_t>(type), Corners(10, 10, 50, 40));
    s.MoveVertex(static_cast<std::int16_t>(vertex), x, y);
    QCOMPARE(PointsText(s), result);
}

void TestPatShape::moveVertexOfPolygonMovesOnlyThatVertex()
{
    RecordingSurface surface;
    PatShape s = MakeShape(Polygon, {{10, 10}, {50, 10}, {30, 40}}, &surface);
    s.MoveVertex(2, 35, 50);
    QCOMPARE(PointsText(s), QStringLiteral("(10,10) (50,10) (35,50)"));
    // Old handle; the vertex with its neighbours; old and new boxes less their common
    // interior; the handles of the vertex and its neighbours; then the shape.
    QCOMPARE(surface.log(),
             QStringList({"inv" + Rect(26, 36, 34, 44), "inv" + Rect(5, 5, 55, 45), "invrgn",
                          "val" + Rect(11, 11, 49, 39), "inv" + Rect(31, 46, 39, 54),
                          "inv" + Rect(46, 6, 54, 14), "inv" + Rect(6, 6, 14, 14), "paint",
                          "inv" + Rect(5, 5, 55, 55), "paint"}));
    QRegion boxes(QRect(QPoint(9, 9), QPoint(51, 41)));
    boxes += QRect(QPoint(9, 9), QPoint(51, 51));
    QCOMPARE(surface.calls[2].region, boxes);

    // Vertex 0 wraps to the last vertex as its neighbour.
    s.MoveVertex(0, 0, 0);
    QCOMPARE(PointsText(s), QStringLiteral("(0,0) (50,10) (35,50)"));
}

void TestPatShape::moveVertexIndexErrors()
{
    RecordingSurface surface;
    PatShape rect = MakeShape(Rectangle, Corners(10, 10, 50, 40), &surface);
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, rect.MoveVertex(4, 0, 0));
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, rect.MoveVertex(-1, 0, 0));
    QCOMPARE(PointsText(rect), PointsText(Corners(10, 10, 50, 40)));
    PatShape poly = MakeShape(Polygon, {{10, 10}, {50, 10}, {30, 40}}, &surface);
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, poly.MoveVertex(3, 0, 0));
    PatShape unsized;
    unsized.SetInfo(&surface, 0, Polygon, 1.0, 0, 0);
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, unsized.MoveVertex(0, 0, 0));
    QVERIFY(surface.calls.empty());
}

void TestPatShape::editsRepaintWhereTheShapeWas_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("edit"); // 0 move shape, 1 move vertex 0, 2 move vertex 1, 3 morph
    for (int type : {int(Circle), int(Rectangle), int(Polygon)}) {
        for (int edit = 0; edit < 4; ++edit)
            QTest::addRow("type %d edit %d", type, edit) << type << edit;
    }
}

// Whatever the edit, every pixel the old drawing covered is repainted, so no piece of
// an old outline or handle stays on the canvas.
void TestPatShape::editsRepaintWhereTheShapeWas()
{
    QFETCH(int, type);
    QFETCH(int, edit);
    RecordingSurface surface;
    PatShape s = MakeShape(static_cast<std::int16_t>(type), Corners(10, 10, 50, 40), &surface);
    const QRegion before = DrawnArea(s);
    s.ResetForNextMove();
    switch (edit) {
    case 0:
        s.MoveShape(0, 0, false, 0, 0);
        s.MoveShape(12, 9, false, 0, 0);
        break;
    case 1:
        s.MoveVertex(0, 20, 25);
        break;
    case 2:
        s.MoveVertex(1, 35, 18);
        break;
    case 3:
        s.MorphTo(static_cast<std::int16_t>((type + 1) % 3));
        break;
    }
    const QRegion missed = before - surface.everInvalidated();
    QVERIFY2(missed.isEmpty(), qPrintable(QStringLiteral("not repainted: %1,%2 %3x%4")
                                              .arg(missed.boundingRect().x())
                                              .arg(missed.boundingRect().y())
                                              .arg(missed.boundingRect().width())
                                              .arg(missed.boundingRect().height())));
    // The shape's new drawing is repainted last, after everything else.
    QCOMPARE(surface.log().last(), QStringLiteral("paint"));
    QVERIFY(surface.everInvalidated().contains(DrawnArea(s).boundingRect()));
}

// Random drags of whole shapes and of single vertices: a rectangle stays axis-aligned,
// and every edit repaints all the old drawing and then the new one.
void TestPatShape::randomEditsKeepRectanglesAndLeaveNoTrace()
{
    std::mt19937 random(7);
    const auto pick = [&random](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    RecordingSurface surface;
    for (int round = 0; round < 200; ++round) {
        const auto type = static_cast<std::int16_t>(pick(0, 2));
        std::vector<ShapePoint> points = Corners(pick(0, 300), pick(0, 300), 0, 0);
        points[1].x = points[2].x = points[0].x + pick(0, 200);
        points[2].y = points[3].y = points[0].y + pick(0, 200);
        if (type == Polygon) {
            for (int extra = pick(0, 4); extra > 0; --extra)
                points.push_back({pick(0, 500), pick(0, 500)});
        }
        PatShape s = MakeShape(type, points, &surface);
        s.ResetForNextMove();
        s.MoveShape(pick(0, 500), pick(0, 500), false, 0, 0);
        for (int step = 0; step < 20; ++step) {
            const QRegion before = DrawnArea(s);
            surface.clear();
            const int edit = pick(0, 2);
            if (edit == 0) {
                s.MoveShape(pick(0, 500), pick(0, 500), pick(0, 1) == 1, pick(-20, 20),
                            pick(-20, 20));
            } else {
                const auto v = static_cast<std::int16_t>(pick(0, s.NumOfPoints()));
                s.MoveVertex(v, pick(0, 500), pick(0, 500));
            }
            const QString where =
                QStringLiteral("round %1 step %2 edit %3").arg(round).arg(step).arg(edit);
            if (s.GetShapeType() != Polygon) {
                const auto& p = s.Points();
                QVERIFY2(p[0].y == p[1].y && p[1].x == p[2].x && p[2].y == p[3].y &&
                             p[3].x == p[0].x,
                         qPrintable(where + " " + PointsText(s)));
            }
            if (surface.calls.empty())
                continue; // a grid drag that lands where the shape already is
            QVERIFY2((before - surface.everInvalidated()).isEmpty(), qPrintable(where));
            QVERIFY2(surface.everInvalidated().contains(DrawnArea(s).boundingRect()),
                     qPrintable(where));
            QCOMPARE(surface.log().last(), QStringLiteral("paint"));
        }
    }
}

// ---- drawing requests ---------------------------------------------------------------

void TestPatShape::drawLineAfterResetErasesFromOrigin()
{
    RecordingSurface surface;
    PatShape s = ClickedPolygon({{50, 60}}, &surface);
    s.ResetForNextMove();
    surface.clear();
    s.DrawLine(50, 60, 70, 80);
    // The first band of a segment erases from (-2,-2): there is no previous end.
    QCOMPARE(surface.log(), QStringList({"inv" + Rect(-2, -2, 51, 61), "paint",
                                         "inv" + Rect(49, 59, 71, 81), "paint"}));
    QCOMPARE(s.LastLineX(), 70);
    QCOMPARE(s.LastLineY(), 80);
    surface.clear();
    s.DrawLine(50, 60, 40, 90);
    QCOMPARE(surface.log(), QStringList({"inv" + Rect(49, 59, 71, 81), "paint",
                                         "inv" + Rect(39, 59, 51, 91), "paint"}));
}

void TestPatShape::drawShapeReportsPaintBounds()
{
    RecordingSurface surface;
    PatShape s = MakeShape(Rectangle, Corners(10, 10, 50, 40), &surface);
    s.DrawShape();
    QCOMPARE(surface.log(), QStringList({"inv" + Rect(5, 5, 55, 45), "paint"}));
    // The bounds cover the handles that stick out of the box.
    QVERIFY(QRegion(s.PaintBounds().toQRect()).contains(DrawnArea(s).boundingRect()));
    surface.clear();
    PatShape unsized;
    unsized.SetInfo(&surface, 0, Polygon, 1.0, 0, 0);
    unsized.DrawShape();
    QVERIFY(surface.calls.empty());
}

QTEST_APPLESS_MAIN(TestPatShape)
#include "tst_patshape.moc"
