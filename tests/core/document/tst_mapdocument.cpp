#include "RecordingSurface.h"
#include "ShapeBuilders.h"
#include "core/base/Numeric.h"
#include "core/document/MapDocument.h"

#include <QTest>
#include <random>

namespace {

const std::int32_t Focus = MapDocument().FocusColor;
const std::int32_t NonFocus = MapDocument().NonFocusColor;

// A rectangle whose URL names it, so that a test can follow it through the list.
PatShape Named(const QString& name, std::int32_t colour = 0x777777, std::int32_t at = 10)
{
    PatShape s = MakeShape(Rectangle, Corners(at, at, at + 20, at + 10), nullptr, 1.0, colour);
    s.URL = name;
    return s;
}

// A document holding shapes "s0".."s<n-1>" in creation order, shape 0 on top.
MapDocument Document(int n, ShapeSurface* surface = nullptr)
{
    MapDocument doc;
    doc.SetSurface(surface);
    std::vector<PatShape> shapes;
    for (int i = 0; i < n; ++i)
        shapes.push_back(Named(QStringLiteral("s%1").arg(i), NonFocus, 10 * i));
    if (n > 0)
        doc.ReSetShapeArray(shapes, static_cast<std::int16_t>(n - 1));
    return doc;
}

// The shapes' names and colours (F, N or ?) in list order, then the stacking order.
QString State(const MapDocument& doc)
{
    QStringList parts;
    for (const PatShape& s : doc.Shapes())
        parts << s.URL + (s.ShapeColor == Focus ? "F" : s.ShapeColor == NonFocus ? "N" : "?");
    QStringList order;
    for (std::int16_t i : doc.ShapeOrder())
        order << QString::number(i);
    return parts.join(' ') + " | " + order.join(',');
}

} // namespace

class TestMapDocument : public QObject
{
    Q_OBJECT
private slots:
    void deleteShape()
    {
        // The only shape: the canvas shows the bare picture; then there is nothing to delete.
        RecordingSurface surface;
        MapDocument one = Document(1, &surface);
        surface.clear();
        one.HitState = 0;
        one.DeleteShape();
        one.DeleteShape();
        QVERIFY(one.ItemCount() == -1 && one.HitState == -2);
        QCOMPARE(surface.log, QStringList({"all", "paint"}));
        // The top shape goes, every later index moves down by one.
        MapDocument doc = Document(4, &surface);
        for (std::int16_t top : {2, 0, 3, 1})
            doc.ReStackArrayFromOptions(top);
        surface.clear();
        doc.DeleteShape();
        QCOMPARE(State(doc), QStringLiteral("s0N s2N s3F | 2,0,1"));
        QCOMPARE(doc.CurrentShape, std::int16_t(2));
        QCOMPARE(surface.log, QStringList({"all", "paint", "all", "paint"}));
    }

    void reStack()
    {
        MapDocument doc = Document(3);
        doc.ReStackArrayFromOptions(2);
        QCOMPARE(doc.Shape(2).ShapeColor, Focus);
        // Already on top: not even recoloured.
        doc.Shape(2).ShapeColor = 0;
        doc.ReStackArrayFromOptions(2);
        QCOMPARE(State(doc), QStringLiteral("s0N s1N s2? | 2,0,1"));
        QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, doc.ReStackArrayFromOptions(3));
        QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, doc.ReStackArrayFromOptions(-1));
        QCOMPARE(State(doc), QStringLiteral("s0N s1N s2? | 2,0,1"));
    }

    void copyAndPaste()
    {
        RecordingSurface surface;
        MapDocument doc = Document(0, &surface);
        PatShape clip;
        QVERIFY(!doc.SetShapeEqualToTopShape(clip));
        // On an empty map the pasted shape is shape 0, bound to the map, colour kept.
        doc.ZoomLevel = 2.0;
        doc.SetNewShape(Named("a", 0x777777, 30));
        QCOMPARE(State(doc), QStringLiteral("a? | 0"));
        QVERIFY(doc.Shape(0).Zoom() == 2.0 && doc.Shape(0).Surface() == &surface);
        QCOMPARE(surface.log, QStringList({"all", "paint"}));
        doc.SetNewShape(Named("b"));
        QCOMPARE(State(doc), QStringLiteral("aN bF | 1,0"));
        // Copying takes the top shape, moved to the origin.
        doc.Shape(1).SetPoint(0, 5, -5);
        QVERIFY(doc.SetShapeEqualToTopShape(clip));
        QCOMPARE(PointsText(clip), QStringLiteral("(5,0) (20,5) (20,15) (0,15)"));
        // Pasting one of the map's own shapes: the source lives in the list that grows.
        doc.Shape(0).Comment = QString(200, 'c');
        doc.SetNewShape(doc.Shape(0));
        QCOMPARE(State(doc), QStringLiteral("aN bN aF | 2,1,0"));
        QCOMPARE(doc.Shape(2).Comment, QString(200, 'c'));
    }

    void shapeCountIs16Bit()
    {
        MapDocument doc = Document(0);
        for (int i = 0; i < 32768; ++i)
            doc.AddShape();
        QVERIFY_THROWS_EXCEPTION(OverflowError, doc.AddShape());
        QVERIFY_THROWS_EXCEPTION(OverflowError, doc.SetNewShape(Named("one more")));
        QCOMPARE(doc.Shapes().size(), std::size_t(32768));
    }

    void polygonBeingDrawnIsNotMorphed()
    {
        // The first shape of a map is on top while it is drawn. Made a rectangle half-way,
        // its next vertices made a "rectangle" of seven corners that no map file can hold.
        MapDocument doc;
        const std::int16_t index = doc.AddShape();
        doc.Shape(index).SetInfo(nullptr, Focus, Polygon, 1.0, 10, 10);
        doc.Shape(index).AddPointToShape(10, 10);
        doc.Shape(index).AddPointToShape(60, 15);
        doc.CurrentShape = index;
        doc.PolygonInProgress = true;
        doc.MorphShape(Rectangle);
        QCOMPARE(doc.Shape(0).GetShapeType(), std::int16_t(Polygon));
        QCOMPARE(PointsText(doc.Shape(0)), QStringLiteral("(10,10) (60,15)"));
        // Finished, it morphs.
        doc.Shape(index).AddPointToShape(40, 50);
        doc.Shape(index).AddPointToShape(10, 10);
        QVERIFY(doc.Shape(0).IsShapeDone());
        doc.PolygonInProgress = false;
        doc.MorphShape(Rectangle);
        QCOMPARE(PointsText(doc.Shape(0)), QStringLiteral("(10,10) (60,10) (60,50) (10,50)"));
    }

    void reSetShapeArray()
    {
        // A map of one shape keeps the colour it came with.
        for (const auto& [n, state] :
             {std::pair(0, "n0? | 0"), std::pair(2, "n0F n1? n2? | 0,1,2")}) {
            RecordingSurface surface;
            MapDocument doc = Document(5, &surface);
            doc.ReStackArrayFromOptions(4);
            doc.HitState = 2;
            surface.clear();
            std::vector<PatShape> shapes;
            for (int i = 0; i <= n; ++i)
                shapes.push_back(Named(QStringLiteral("n%1").arg(i)));
            doc.ReSetShapeArray(shapes, static_cast<std::int16_t>(n));
            QCOMPARE(State(doc), QString::fromLatin1(state));
            QVERIFY(doc.CurrentShape == 0 && doc.HitState == -2);
            QCOMPARE(surface.log, QStringList({"all", "paint"}));
        }
    }

    void adoptShapes()
    {
        RecordingSurface surface;
        MapDocument doc = Document(2, &surface);
        doc.ReStackArrayFromOptions(1);
        doc.HitState = 0;
        const std::vector<PatShape> incoming{Named("a"), Named("b"), Named("c")};
        // An order that is no permutation is refused with the document whole.
        for (const std::vector<std::int16_t>& order :
             {std::vector<std::int16_t>{0, 0, 1}, {0, 1, 3}, {-1, 0, 1}, {0, 1}}) {
            QVERIFY_THROWS_EXCEPTION(IndexOutOfRangeError, doc.AdoptShapes(incoming, order));
            QVERIFY(State(doc) == "s0N s1F | 1,0" && doc.HitState == 0);
        }
        doc.AdoptShapes(incoming, {2, 0, 1});
        QCOMPARE(State(doc), QStringLiteral("a? b? c? | 2,0,1"));
        QVERIFY(doc.HitState == -2 && doc.Shape(1).Surface() == &surface);
    }

    // Random adds, restacks and deletes checked against a model of the names from the top
    // down; every recolouring leaves only the top shape in focus.
    void randomOperationsKeepInvariants()
    {
        std::mt19937 random(20261121);
        MapDocument doc = Document(0);
        QStringList stack;
        for (int step = 0; step < 2000; ++step) {
            const int n = doc.ItemCount() + 1;
            const auto op = random() % 4;
            bool recoloured = n > 0;
            if (op <= 1) {
                const std::int16_t i = doc.AddShape();
                doc.Shape(i) = Named(QString::number(step), Focus, int(random() % 500));
                doc.BringToTop(i);
                stack.prepend(QString::number(step));
            } else if (op == 2 && n > 0) {
                const auto t = static_cast<std::int16_t>(random() % unsigned(n));
                const QString name = doc.Shape(t).URL;
                recoloured = name != stack.first();
                doc.ReStackArrayFromOptions(t);
                stack.move(stack.indexOf(name), 0);
            } else if (op == 3) {
                doc.DeleteShape();
                recoloured = n > 1;
                if (n > 0)
                    stack.removeFirst();
            }
            QStringList stacked;
            for (std::int16_t i : doc.ShapeOrder()) {
                stacked << doc.Shape(i).URL;
                QVERIFY(!recoloured ||
                        doc.Shape(i).ShapeColor == (stacked.size() == 1 ? Focus : NonFocus));
            }
            QCOMPARE(stacked, stack);
            QCOMPARE(doc.Shapes().size(), std::size_t(stack.size()));
        }
    }
};

QTEST_APPLESS_MAIN(TestMapDocument)
#include "tst_mapdocument.moc"
