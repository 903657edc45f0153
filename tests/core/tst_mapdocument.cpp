#include "RecordingSurface.h"
#include "ShapeBuilders.h"
#include "canvas/MapDocument.h"
#include "shape/Numeric.h"

#include <QTest>
#include <algorithm>
#include <random>

Q_DECLARE_METATYPE(std::vector<std::int16_t>)

namespace {

constexpr std::int32_t Focus = 0x0000FF;
constexpr std::int32_t NonFocus = 0x00FF00;
constexpr std::int32_t Own = 0x777777;

// A rectangle whose URL names it, so that a test can follow it through the list.
PatShape Named(const QString& name, std::int32_t colour = Own, std::int32_t at = 10)
{
    PatShape s = MakeShape(Rectangle, Corners(at, at, at + 20, at + 10), nullptr, 1.0, colour);
    s.URL = name;
    return s;
}

// A document holding shapes "s0".."s<n-1>" in creation order, shape 0 on top.
MapDocument Document(int n, ShapeSurface* surface = nullptr)
{
    MapDocument doc;
    doc.FocusColor = Focus;
    doc.NonFocusColor = NonFocus;
    doc.SetSurface(surface);
    std::vector<PatShape> shapes;
    for (int i = 0; i < n; ++i)
        shapes.push_back(Named(QStringLiteral("s%1").arg(i), NonFocus, 10 * i));
    if (n > 0)
        doc.ReSetShapeArray(shapes, static_cast<std::int16_t>(n - 1));
    return doc;
}

QString Names(const MapDocument& doc)
{
    QStringList names;
    for (const PatShape& s : doc.Shapes())
        names << s.URL;
    return names.join(QLatin1Char(' '));
}

QString Order(const MapDocument& doc)
{
    QStringList entries;
    for (std::int16_t i : doc.ShapeOrder())
        entries << QString::number(i);
    return entries.join(QLatin1Char(','));
}

QString Colours(const MapDocument& doc)
{
    QStringList colours;
    for (const PatShape& s : doc.Shapes())
        colours << (s.ShapeColor == Focus ? "F" : s.ShapeColor == NonFocus ? "N" : "other");
    return colours.join(QLatin1Char(' '));
}

bool IsPermutation(const MapDocument& doc)
{
    std::vector<std::int16_t> sorted = doc.ShapeOrder();
    std::sort(sorted.begin(), sorted.end());
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        if (sorted[i] != static_cast<std::int16_t>(i))
            return false;
    }
    return true;
}

} // namespace

class TestMapDocument : public QObject
{
    Q_OBJECT
private slots:
    void newDocumentDefaults();

    // deleting
    void deleteOnEmptyMapChangesNothing();
    void deletingTheOnlyShapeClearsTheCanvas();
    void deleteRemovesTopAndRenumbers();
    void deleteRenumbersEveryLaterIndex();

    // stacking and colours
    void reStackBringsShapeToTop();
    void reStackOutOfRangeChangesNothing();
    void setShapeColorsAndDrawShapes();

    // copy and paste
    void copyTakesTheTopShapeMovedToOrigin();
    void pasteOnEmptyMapMakesShapeZero();
    void pasteOnTopOfOthers();
    void pasteOfOneOfItsOwnShapes();
    void shapeCountIs16Bit();

    // list replacement
    void reSetShapeArray_data();
    void reSetShapeArray();
    void morphShapeIgnoresUnknownCodes_data();
    void morphShapeIgnoresUnknownCodes();
    void resizeKeepsInvariants_data();
    void resizeKeepsInvariants();
    void adoptShapesRefusesNonPermutation_data();
    void adoptShapesRefusesNonPermutation();
    void adoptShapesBindsToSurface();

    // properties
    void getAndSetShapeProperties();
    void propertyIndexErrors();

    void randomOperationsKeepInvariants();
};

void TestMapDocument::newDocumentDefaults()
{
    const MapDocument doc;
    QCOMPARE(doc.ItemCount(), std::int16_t(-1));
    QVERIFY(doc.Shapes().empty());
    QVERIFY(doc.ShapeOrder().empty());
    QCOMPARE(doc.MapName, QStringLiteral("MyMap"));
    QCOMPARE(doc.FocusColor, RGBColor(0, 120, 180));
    QCOMPARE(doc.NonFocusColor, RGBColor(120, 120, 120));
    QCOMPARE(doc.GridSpacing, 20.0);
    QCOMPARE(doc.GridColorNum, std::int16_t(1));
    QCOMPARE(doc.ZoomLevel, 1.0);
    QCOMPARE(doc.HitState, std::int16_t(-2));
    QVERIFY(!doc.PolygonInProgress);
}

// ---- deleting -------------------------------------------------------------------------

void TestMapDocument::deleteOnEmptyMapChangesNothing()
{
    RecordingSurface surface;
    MapDocument doc = Document(0, &surface);
    doc.HitState = 3;
    doc.CurrentShape = 5;
    doc.DeleteShape();
    QCOMPARE(doc.ItemCount(), std::int16_t(-1));
    QCOMPARE(doc.HitState, std::int16_t(3));
    QCOMPARE(doc.CurrentShape, std::int16_t(5));
    QVERIFY(surface.calls.empty());
}

void TestMapDocument::deletingTheOnlyShapeClearsTheCanvas()
{
    RecordingSurface surface;
    MapDocument doc = Document(1, &surface);
    surface.clear();
    doc.HitState = 0;
    doc.DeleteShape();
    QCOMPARE(doc.ItemCount(), std::int16_t(-1));
    QVERIFY(doc.Shapes().empty());
    QVERIFY(doc.ShapeOrder().empty());
    QCOMPARE(doc.HitState, std::int16_t(-2));
    QCOMPARE(surface.log(), QStringList({"all", "paint"}));
}

void TestMapDocument::deleteRemovesTopAndRenumbers()
{
    RecordingSurface surface;
    MapDocument doc = Document(3, &surface);
    doc.ReStackArrayFromOptions(2);
    QCOMPARE(Order(doc), QStringLiteral("2,0,1"));
    surface.clear();
    doc.DeleteShape();
    QCOMPARE(Names(doc), QStringLiteral("s0 s1"));
    QCOMPARE(Order(doc), QStringLiteral("0,1"));
    QCOMPARE(Colours(doc), QStringLiteral("F N"));
    QCOMPARE(doc.CurrentShape, std::int16_t(0));
    QCOMPARE(doc.ItemCount(), std::int16_t(1));
    // The picture is shown bare, then every shape is drawn again.
    QCOMPARE(surface.log(), QStringList({"all", "paint", "all", "paint"}));
}

void TestMapDocument::deleteRenumbersEveryLaterIndex()
{
    MapDocument doc = Document(4);
    doc.ReStackArrayFromOptions(2);
    doc.ReStackArrayFromOptions(0);
    doc.ReStackArrayFromOptions(3);
    doc.ReStackArrayFromOptions(1);
    QCOMPARE(Order(doc), QStringLiteral("1,3,0,2"));
    doc.DeleteShape();
    QCOMPARE(Names(doc), QStringLiteral("s0 s2 s3"));
    QCOMPARE(Order(doc), QStringLiteral("2,0,1"));
    QCOMPARE(doc.CurrentShape, std::int16_t(2));
    QCOMPARE(Colours(doc), QStringLiteral("N N F"));
}

// ---- stacking and colours -----------------------------------------------------------

void TestMapDocument::reStackBringsShapeToTop()
{
    MapDocument doc = Document(3);
    QCOMPARE(Order(doc), QStringLiteral("0,1,2"));
    doc.Shape(0).ShapeColor = Focus;
    doc.ReStackArrayFromOptions(2);
    QCOMPARE(Order(doc), QStringLiteral("2,0,1"));
    QCOMPARE(Colours(doc), QStringLiteral("N N F"));
    // Already on top: nothing happens, not even a recolouring.
    doc.Shape(2).ShapeColor = Own;
    doc.ReStackArrayFromOptions(2);
    QCOMPARE(Order(doc), QStringLiteral("2,0,1"));
    QCOMPARE(doc.Shape(2).ShapeColor, Own);
    doc.ReStackArrayFromOptions(1);
    QCOMPARE(Order(doc), QStringLiteral("1,2,0"));
    QCOMPARE(Colours(doc), QStringLiteral("N F N"));
}

void TestMapDocument::reStackOutOfRangeChangesNothing()
{
    MapDocument doc = Document(3);
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, doc.ReStackArrayFromOptions(3));
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, doc.ReStackArrayFromOptions(-1));
    QCOMPARE(Order(doc), QStringLiteral("0,1,2"));
    QCOMPARE(Colours(doc), QStringLiteral("F N N"));
    MapDocument empty = Document(0);
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, empty.ReStackArrayFromOptions(0));
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, empty.TopShape());
}

void TestMapDocument::setShapeColorsAndDrawShapes()
{
    RecordingSurface surface;
    MapDocument doc = Document(3, &surface);
    doc.ReStackArrayFromOptions(1);
    doc.Shape(0).ShapeColor = Own;
    doc.SetShapeColors();
    QCOMPARE(Colours(doc), QStringLiteral("N F N"));

    surface.clear();
    doc.DrawShapes();
    QCOMPARE(surface.log(), QStringList({"all", "paint"}));
    // While a polygon is being drawn its rubber band repaints the shapes.
    surface.clear();
    doc.PolygonInProgress = true;
    doc.DrawShapes();
    QVERIFY(surface.calls.empty());
    MapDocument empty = Document(0, &surface);
    empty.DrawShapes();
    QVERIFY(surface.calls.empty());
}

// ---- copy and paste -----------------------------------------------------------------

void TestMapDocument::copyTakesTheTopShapeMovedToOrigin()
{
    MapDocument doc = Document(3);
    doc.ReStackArrayFromOptions(2);
    PatShape clip = Named(QStringLiteral("untouched"));
    QVERIFY(doc.SetShapeEqualToTopShape(clip));
    QCOMPARE(clip.URL, QStringLiteral("s2"));
    QCOMPARE(PointsText(clip), QStringLiteral("(0,0) (20,0) (20,10) (0,10)"));
    QCOMPARE(PointsText(doc.Shape(2)), QStringLiteral("(20,20) (40,20) (40,30) (20,30)"));

    MapDocument empty = Document(0);
    QVERIFY(!empty.SetShapeEqualToTopShape(clip));
    QCOMPARE(clip.URL, QStringLiteral("s2"));
}

void TestMapDocument::pasteOnEmptyMapMakesShapeZero()
{
    RecordingSurface surface;
    MapDocument doc = Document(0, &surface);
    doc.ZoomLevel = 2.0;
    PatShape clip = MakeShape(Polygon, {{15, 30}, {45, 30}, {30, 60}}, nullptr, 1.0, Own);
    clip.URL = QStringLiteral("pasted");
    doc.SetNewShape(clip);
    QCOMPARE(doc.ItemCount(), std::int16_t(0));
    QCOMPARE(Order(doc), QStringLiteral("0"));
    QCOMPARE(doc.CurrentShape, std::int16_t(0));
    const PatShape& s = doc.Shape(0);
    QCOMPARE(s.URL, QStringLiteral("pasted"));
    QCOMPARE(s.GetShapeType(), std::int16_t(Polygon));
    QCOMPARE(PointsText(s), QStringLiteral("(0,0) (30,0) (15,30)"));
    QVERIFY(s.IsShapeDone());
    QCOMPARE(s.Zoom(), 2.0);
    QCOMPARE(s.Surface(), &surface);
    // A lone shape is already on top, so it is not recoloured: it keeps the colour it
    // was copied with.
    QCOMPARE(s.ShapeColor, Own);
    QCOMPARE(surface.log(), QStringList({"all", "paint"}));
}

void TestMapDocument::pasteOnTopOfOthers()
{
    MapDocument doc = Document(2);
    doc.Shape(0).ShapeColor = Focus;
    doc.ReStackArrayFromOptions(1);
    doc.SetNewShape(Named(QStringLiteral("new"), Own, 100));
    QCOMPARE(Names(doc), QStringLiteral("s0 s1 new"));
    QCOMPARE(Order(doc), QStringLiteral("2,1,0"));
    QCOMPARE(Colours(doc), QStringLiteral("N N F"));
    QCOMPARE(doc.CurrentShape, std::int16_t(2));
    QCOMPARE(PointsText(doc.Shape(2)), QStringLiteral("(0,0) (20,0) (20,10) (0,10)"));
}

void TestMapDocument::pasteOfOneOfItsOwnShapes()
{
    MapDocument doc = Document(1);
    doc.Shape(0).Comment = QString(200, QLatin1Char('c'));
    // The source lives in the list that grows.
    doc.SetNewShape(doc.Shape(0));
    QCOMPARE(Names(doc), QStringLiteral("s0 s0"));
    QCOMPARE(doc.Shape(1).Comment, doc.Shape(0).Comment);
    QCOMPARE(PointsText(doc.Shape(1)), QStringLiteral("(0,0) (20,0) (20,10) (0,10)"));
}

void TestMapDocument::shapeCountIs16Bit()
{
    MapDocument doc = Document(0);
    for (int i = 0; i < 32768; ++i)
        doc.AddShape();
    QCOMPARE(doc.ItemCount(), std::int16_t(32767));
    QVERIFY_THROWS_EXCEPTION(OverflowError, doc.AddShape());
    QVERIFY_THROWS_EXCEPTION(OverflowError, doc.SetNewShape(Named(QStringLiteral("one more"))));
    QCOMPARE(doc.ItemCount(), std::int16_t(32767));
    QCOMPARE(doc.Shapes().size(), std::size_t(32768));
    QCOMPARE(doc.ShapeOrder().size(), std::size_t(32768));
    QCOMPARE(doc.ShapeOrder().back(), std::int16_t(32767));
    QVERIFY(doc.Shape(32767).URL.isEmpty());
}

// ---- list replacement ---------------------------------------------------------------

void TestMapDocument::reSetShapeArray_data()
{
    QTest::addColumn<int>("n");
    QTest::addColumn<QString>("colours");
    // A map of one shape keeps the colour it came with.
    QTest::newRow("N = 0") << 0 << "other";
    QTest::newRow("N = 1") << 1 << "F other";
    QTest::newRow("N = 3") << 3 << "F other other other";
}

void TestMapDocument::reSetShapeArray()
{
    QFETCH(int, n);
    QFETCH(QString, colours);
    RecordingSurface surface;
    MapDocument doc = Document(5, &surface);
    doc.ReStackArrayFromOptions(4);
    doc.HitState = 2;
    doc.CurrentShape = 4;
    surface.clear();
    std::vector<PatShape> shapes;
    for (int i = 0; i <= n; ++i)
        shapes.push_back(Named(QStringLiteral("n%1").arg(i), Own));
    doc.ReSetShapeArray(shapes, static_cast<std::int16_t>(n));
    QCOMPARE(doc.ItemCount(), std::int16_t(n));
    QCOMPARE(int(doc.Shapes().size()), n + 1);
    QStringList order;
    for (int i = 0; i <= n; ++i)
        order << QString::number(i);
    QCOMPARE(Order(doc), order.join(QLatin1Char(',')));
    QCOMPARE(doc.Shape(static_cast<std::int16_t>(n)).URL, QStringLiteral("n%1").arg(n));
    QCOMPARE(Colours(doc), colours);
    QCOMPARE(doc.CurrentShape, std::int16_t(0));
    QCOMPARE(doc.HitState, std::int16_t(-2));
    // The canvas shows the bare picture; the caller draws the shapes next.
    QCOMPARE(surface.log(), QStringList({"all", "paint"}));
}

void TestMapDocument::morphShapeIgnoresUnknownCodes_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("type");
    QTest::newRow("-1") << -1 << int(Polygon);
    QTest::newRow("3") << 3 << int(Polygon);
    QTest::newRow("7") << 7 << int(Polygon);
    QTest::newRow("0") << 0 << int(Circle);
    QTest::newRow("1") << 1 << int(Rectangle);
    QTest::newRow("2") << 2 << int(Polygon);
}

void TestMapDocument::morphShapeIgnoresUnknownCodes()
{
    QFETCH(int, code);
    QFETCH(int, type);
    RecordingSurface surface;
    MapDocument doc;
    doc.SetSurface(&surface);
    doc.ReSetShapeArray(
        {Named(QStringLiteral("a")), MakeShape(Polygon, {{10, 40}, {30, 5}, {50, 40}}, &surface)},
        1);
    doc.ReStackArrayFromOptions(1);
    surface.clear();
    doc.MorphShape(static_cast<std::int16_t>(code));
    QCOMPARE(int(doc.Shape(1).GetShapeType()), type);
    QCOMPARE(doc.Shape(0).GetShapeType(), std::int16_t(Rectangle));
    if (code < 0 || code > 2) {
        QCOMPARE(PointsText(doc.Shape(1)), QStringLiteral("(10,40) (30,5) (50,40)"));
        QVERIFY(surface.calls.empty());
    } else {
        QVERIFY(!surface.calls.empty());
    }
    MapDocument empty;
    empty.MorphShape(1);
    QCOMPARE(empty.ItemCount(), std::int16_t(-1));
}

void TestMapDocument::resizeKeepsInvariants_data()
{
    QTest::addColumn<int>("newsize");
    QTest::addColumn<bool>("killAll");
    QTest::addColumn<QString>("names");
    QTest::newRow("grow, keep") << 4 << false << "s0 s1 s2  ";
    QTest::newRow("same, keep") << 2 << false << "s0 s1 s2";
    QTest::newRow("shrink, keep") << 1 << false << "s0 s1";
    QTest::newRow("to one, keep") << 0 << false << "s0";
    QTest::newRow("empty") << -1 << false << "";
    QTest::newRow("grow, kill") << 3 << true << "   ";
    QTest::newRow("shrink, kill") << 0 << true << "";
}

void TestMapDocument::resizeKeepsInvariants()
{
    QFETCH(int, newsize);
    QFETCH(bool, killAll);
    QFETCH(QString, names);
    MapDocument doc = Document(3);
    doc.ReStackArrayFromOptions(2);
    doc.ResizeShapeArray(static_cast<std::int16_t>(newsize), killAll);
    QCOMPARE(int(doc.ItemCount()), newsize);
    QCOMPARE(int(doc.Shapes().size()), newsize + 1);
    QCOMPARE(int(doc.ShapeOrder().size()), newsize + 1);
    QVERIFY(IsPermutation(doc));
    QCOMPARE(Names(doc), names);
    if (!killAll && newsize >= 0) {
        // The stacking of the shapes that stay is kept; the top one is in focus.
        const PatShape& top = doc.Shape(doc.ShapeOrder().front());
        QCOMPARE(top.ShapeColor, Focus);
        if (newsize >= 2)
            QCOMPARE(doc.ShapeOrder().front(), std::int16_t(2));
    }
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, doc.ResizeShapeArray(-2, false));
    QCOMPARE(int(doc.ItemCount()), newsize);
}

void TestMapDocument::adoptShapesRefusesNonPermutation_data()
{
    QTest::addColumn<std::vector<std::int16_t>>("order");
    QTest::newRow("repeated") << std::vector<std::int16_t>{0, 0, 1};
    QTest::newRow("past the end") << std::vector<std::int16_t>{0, 1, 3};
    QTest::newRow("negative") << std::vector<std::int16_t>{-1, 0, 1};
    QTest::newRow("too short") << std::vector<std::int16_t>{0, 1};
    QTest::newRow("too long") << std::vector<std::int16_t>{0, 1, 2, 3};
}

void TestMapDocument::adoptShapesRefusesNonPermutation()
{
    QFETCH(std::vector<std::int16_t>, order);
    MapDocument doc = Document(2);
    doc.ReStackArrayFromOptions(1);
    doc.HitState = 0;
    const std::vector<PatShape> incoming{Named("a"), Named("b"), Named("c")};
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, doc.AdoptShapes(incoming, order));
    QCOMPARE(Names(doc), QStringLiteral("s0 s1"));
    QCOMPARE(Order(doc), QStringLiteral("1,0"));
    QCOMPARE(doc.ItemCount(), std::int16_t(1));
    QCOMPARE(doc.HitState, std::int16_t(0));
}

void TestMapDocument::adoptShapesBindsToSurface()
{
    RecordingSurface surface;
    MapDocument doc = Document(1, &surface);
    doc.AdoptShapes({Named("a"), Named("b"), Named("c")}, {2, 0, 1});
    QCOMPARE(Names(doc), QStringLiteral("a b c"));
    QCOMPARE(Order(doc), QStringLiteral("2,0,1"));
    QCOMPARE(doc.ItemCount(), std::int16_t(2));
    QCOMPARE(doc.HitState, std::int16_t(-2));
    for (const PatShape& s : doc.Shapes()) {
        QCOMPARE(s.Surface(), &surface);
        QCOMPARE(s.LastLineX(), -1);
    }
}

// ---- properties -----------------------------------------------------------------------

void TestMapDocument::getAndSetShapeProperties()
{
    MapDocument doc = Document(3);
    doc.SetURL(1, QStringLiteral("u"));
    doc.SetComment(1, QStringLiteral("c"));
    doc.SetTarget(1, QStringLiteral("t"));
    doc.SetStatus(1, QStringLiteral("s"));
    doc.SetAlert(1, QStringLiteral("a"));
    doc.SetAlertVal(1, -1);
    QCOMPARE(doc.GetURL(1), QStringLiteral("u"));
    QCOMPARE(doc.GetComment(1), QStringLiteral("c"));
    QCOMPARE(doc.GetTarget(1), QStringLiteral("t"));
    QCOMPARE(doc.GetStatus(1), QStringLiteral("s"));
    QCOMPARE(doc.GetAlert(1), QStringLiteral("a"));
    QCOMPARE(doc.GetAlertVal(1), std::int16_t(-1));
    // The index is the shape's identity, not its place in the stack.
    doc.ReStackArrayFromOptions(2);
    QCOMPARE(doc.GetURL(1), QStringLiteral("u"));
    QCOMPARE(doc.Shape(1).StatusString, QStringLiteral("s"));
    QCOMPARE(doc.GetURL(0), QStringLiteral("s0"));
}

void TestMapDocument::propertyIndexErrors()
{
    MapDocument doc = Document(2);
    for (std::int16_t bad : {std::int16_t(-1), std::int16_t(2), std::int16_t(32767)}) {
        QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, doc.GetURL(bad));
        QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, doc.GetAlertVal(bad));
        QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, doc.SetComment(bad, QStringLiteral("x")));
        QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, doc.SetAlertVal(bad, 1));
    }
    QCOMPARE(Names(doc), QStringLiteral("s0 s1"));
    MapDocument empty = Document(0);
    QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, empty.GetStatus(0));
}

// ---- randomized ------------------------------------------------------------------------

// Thousands of random edits, checked after each against a simple model of which shape
// sits where: identities follow the list, ShapeOrder stays a permutation, and every
// restacking leaves the top shape in focus.
void TestMapDocument::randomOperationsKeepInvariants()
{
    std::mt19937 random(20261121);
    const auto pick = [&random](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    RecordingSurface surface;
    MapDocument doc = Document(0, &surface);
    std::vector<QString> ids;        // model: shape identity by index
    std::vector<std::int16_t> order; // model: stacking
    PatShape clipboard;
    bool haveClip = false;
    int nextId = 0;
    const auto toTop = [&order](std::int16_t t) {
        order.erase(std::find(order.begin(), order.end(), t));
        order.insert(order.begin(), t);
    };

    for (int step = 0; step < 5000; ++step) {
        const int n = doc.ItemCount() + 1;
        const int op = pick(0, 9);
        bool restacked = false;
        QString what;
        if (op <= 1) {
            what = "add";
            const std::int16_t i = doc.AddShape();
            const std::int16_t type = static_cast<std::int16_t>(pick(0, 2));
            PatShape& s = doc.Shape(i);
            s.SetInfo(&surface, doc.FocusColor, type, doc.ZoomLevel, pick(0, 500), pick(0, 500));
            if (type == Polygon) {
                for (int v = 0; v < 3; ++v)
                    s.AddPointToShape(pick(0, 500), pick(0, 500));
            }
            s.URL = QString::number(nextId++);
            doc.BringToTop(i);
            ids.push_back(s.URL);
            order.push_back(i);
            toTop(i);
            restacked = n > 0;
        } else if (op == 2 && n > 0) {
            what = "restack";
            const std::int16_t t = static_cast<std::int16_t>(pick(0, n - 1));
            const std::int16_t oldTop = order.front();
            doc.ReStackArrayFromOptions(t);
            if (t != oldTop)
                QCOMPARE(doc.Shape(oldTop).ShapeColor, doc.NonFocusColor);
            toTop(t);
            restacked = t != oldTop;
        } else if (op == 3) {
            what = "delete";
            doc.DeleteShape();
            if (n > 0) {
                const std::int16_t d = order.front();
                ids.erase(ids.begin() + d);
                order.erase(order.begin());
                for (std::int16_t& e : order)
                    e = static_cast<std::int16_t>(e > d ? e - 1 : e);
                restacked = n > 1;
                if (restacked)
                    QCOMPARE(doc.CurrentShape, order.front());
            }
        } else if (op == 4) {
            what = "copy";
            haveClip = doc.SetShapeEqualToTopShape(clipboard) || haveClip;
        } else if (op == 5 && haveClip) {
            what = "paste";
            doc.SetNewShape(clipboard);
            ids.push_back(clipboard.URL);
            order.push_back(static_cast<std::int16_t>(n));
            toTop(static_cast<std::int16_t>(n));
            restacked = n > 0;
        } else if (op == 6) {
            what = "morph";
            const std::int16_t code = static_cast<std::int16_t>(pick(-1, 3));
            const std::int16_t before = n > 0 ? doc.TopShape().GetShapeType() : 0;
            doc.MorphShape(code);
            if (n > 0)
                QCOMPARE(doc.TopShape().GetShapeType(), code >= 0 && code <= 2 ? code : before);
        } else if (op == 7 && pick(0, 9) == 0) {
            what = "resize";
            const std::int16_t size = static_cast<std::int16_t>(pick(-1, n + 1));
            const bool kill = pick(0, 3) == 0;
            doc.ResizeShapeArray(size, kill);
            ids.resize(static_cast<std::size_t>(size + 1));
            if (kill)
                std::fill(ids.begin(), ids.end(), QString());
            order = doc.ShapeOrder(); // how the kept order is arranged is the document's choice
            QVERIFY(IsPermutation(doc));
        } else if (op == 8 && pick(0, 9) == 0) {
            what = "reset";
            const int count = pick(1, 6);
            std::vector<PatShape> shapes;
            ids.clear();
            for (int i = 0; i < count; ++i) {
                shapes.push_back(Named(QString::number(nextId++), doc.NonFocusColor));
                ids.push_back(shapes.back().URL);
            }
            doc.ReSetShapeArray(shapes, static_cast<std::int16_t>(count - 1));
            order.clear();
            for (int i = 0; i < count; ++i)
                order.push_back(static_cast<std::int16_t>(i));
            restacked = count > 1;
        } else if (op == 8 && pick(0, 9) == 1) {
            what = "adopt";
            const int count = pick(1, 5);
            std::vector<PatShape> shapes;
            std::vector<std::int16_t> newOrder;
            for (int i = 0; i < count; ++i) {
                shapes.push_back(Named(QString::number(nextId++), doc.NonFocusColor));
                newOrder.push_back(static_cast<std::int16_t>(i));
            }
            std::shuffle(newOrder.begin(), newOrder.end(), random);
            // A file whose order repeats an entry is refused whole; the checks below
            // then find the document as it was.
            const bool broken = count > 1 && pick(0, 2) == 0;
            if (broken) {
                newOrder.back() = newOrder.front();
                QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, doc.AdoptShapes(shapes, newOrder));
            } else {
                doc.AdoptShapes(shapes, newOrder);
                ids.clear();
                for (const PatShape& shape : shapes)
                    ids.push_back(shape.URL);
                order = newOrder;
            }
        } else if (op == 9) {
            what = "bad index";
            const std::int16_t i = static_cast<std::int16_t>(pick(-2, n + 1));
            if (i < 0 || i >= n)
                QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, doc.SetURL(i, QStringLiteral("x")));
            else
                QCOMPARE(doc.GetURL(i), ids[static_cast<std::size_t>(i)]);
        }

        const QString where = QStringLiteral("step %1 (%2)").arg(step).arg(what);
        QVERIFY2(doc.Shapes().size() == static_cast<std::size_t>(doc.ItemCount() + 1),
                 qPrintable(where));
        QVERIFY2(doc.ShapeOrder().size() == doc.Shapes().size(), qPrintable(where));
        QVERIFY2(IsPermutation(doc), qPrintable(where));
        QVERIFY2(doc.ShapeOrder() == order, qPrintable(where));
        for (std::size_t i = 0; i < ids.size(); ++i)
            QVERIFY2(doc.Shapes()[i].URL == ids[i], qPrintable(where));
        if (restacked)
            QVERIFY2(doc.TopShape().ShapeColor == doc.FocusColor, qPrintable(where));
    }
}

QTEST_APPLESS_MAIN(TestMapDocument)
#include "tst_mapdocument.moc"
