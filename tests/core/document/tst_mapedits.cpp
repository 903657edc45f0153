#include "RecordingSurface.h"
#include "ShapeBuilders.h"
#include "ShapeRow.h"
#include "TableCase.h"
#include "core/base/Numeric.h"
#include "core/document/CanvasEditor.h"
#include "core/document/DeleteShapeCommand.h"
#include "core/document/MapDocument.h"
#include "core/document/MapHistory.h"
#include "core/document/MapLayer.h"
#include "core/document/MapPainter.h"
#include "core/document/NudgeShapeCommand.h"
#include "core/document/ShapeListModel.h"
#include "core/document/StepTarget.h"
#include "core/forms/GeometryForm.h"
#include "core/interchange/MapFile.h"

#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <numeric>
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
MapDocument Document(int n, ShapeSurface* surface = nullptr, int spacing = 10)
{
    MapDocument doc;
    doc.SetSurface(surface);
    std::vector<PatShape> shapes;
    for (int i = 0; i < n; ++i)
        shapes.push_back(Named(QStringLiteral("s%1").arg(i), NonFocus, spacing * i));
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

// A map without a window: the history's target.
class Headless : public StepTarget
{
public:
    MapDocument doc;
    int viewRebuilds = 0;
    MapHistory history{*this};

    explicit Headless(int shapes = 0) : doc(Document(shapes, nullptr, 40)) { doc.SetShapeColors(); }
    MapDocument& StepDocument() override { return doc; }
    void StepChangedView() override { ++viewRebuilds; }
    QByteArray Bytes() const { return MapFile::MapBytes(doc, QStringLiteral("/maps/m.imp")); }
    void Delete()
    {
        auto* step = new DeleteShapeCommand(*this, QStringLiteral("Delete Shape"), doc);
        doc.DeleteShape();
        history.Push(step);
    }
    void Nudge(int key)
    {
        CanvasEditor editor(doc);
        auto change = history.Capture({}, false, false, [&] { editor.KeyDown(key); });
        if (change)
            history.Push(
                new NudgeShapeCommand(*this, QStringLiteral("Move Shape"), std::move(*change)));
    }
};

constexpr int Width = 420;
constexpr int Height = 300;

// Count overlapping shapes of every kind, a few of them unfinished polygons, in a
// random stacking order, at the given zoom.
MapDocument RandomMap(std::mt19937& random, int Count, double Zoom)
{
    std::uniform_int_distribution<int> x(-20, Width), y(-20, Height), size(4, 90), kind(0, 5);
    std::vector<PatShape> shapes;
    for (int i = 0; i < Count; ++i) {
        const int l = x(random), t = y(random), w = size(random), h = size(random),
                  k = kind(random);
        PatShape s;
        if (k <= 1) {
            s = MakeShape(k == 0 ? Circle : Rectangle, Corners(l, t, l + w, t + h), nullptr, 1.0);
        } else {
            std::vector<ShapePoint> points;
            for (int p = 0; p < 3 + k; ++p)
                points.push_back({l + size(random) - 45, t + size(random) - 45});
            s = MakeShape(Polygon, points, nullptr, 1.0);
            s.ShapeBuildingFinished = k != 5;
        }
        s.ShapeColor = 0x30A060 + i * 0x010203;
        shapes.push_back(s);
    }
    std::vector<std::int16_t> order(shapes.size());
    std::iota(order.begin(), order.end(), std::int16_t(0));
    std::shuffle(order.begin(), order.end(), random);
    MapDocument doc;
    doc.AdoptShapes(std::move(shapes), std::move(order));
    for (std::int16_t i = 0; i <= doc.ItemCount(); ++i)
        doc.Shape(i).ResetPointsToZoom(Zoom);
    doc.ZoomLevel = Zoom;
    doc.SetShapeColors();
    return doc;
}

QImage Picture()
{
    QImage picture(Width, Height, QImage::Format_RGB32);
    for (int y = 0; y < Height; ++y)
        for (int x = 0; x < Width; ++x)
            picture.setPixel(x, y, qRgb(x % 256, y % 256, (x * y) % 256));
    return picture;
}

// The map painted through the layer, over the given region; without one, every shape
// visited: the reference.
QImage Painted(const MapDocument& doc, const QImage& picture, MapLayer* layer = nullptr,
               const QRegion& region = QRegion(0, 0, Width + 20, Height + 20))
{
    QImage image(Width + 20, Height + 20, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    if (layer)
        layer->Paint(painter, doc, picture, region);
    else
        MapPainter::Paint(painter, doc, picture, region);
    return image;
}

// Shape at (x, y) as a press finds it without an index: down the stack, first answer.
MapDocument::Hit LinearHit(const MapDocument& doc, int x, int y)
{
    for (const std::int16_t index : doc.ShapeOrder()) {
        const std::int16_t state =
            doc.Shapes()[static_cast<std::size_t>(index)].IsCursorOnShape(x, y);
        if (state != -2)
            return {index, state};
    }
    return {};
}

std::vector<std::int16_t> LinearMeeting(const MapDocument& doc, const QRect& area)
{
    std::vector<std::int16_t> found;
    for (std::size_t i = 0; i < doc.Shapes().size(); ++i)
        if (doc.Shapes()[i].PaintBounds().toQRect().intersects(area))
            found.push_back(static_cast<std::int16_t>(i));
    return found;
}

void Edit(MapDocument& doc, std::mt19937& random, int kind)
{
    std::uniform_int_distribution<int> step(-15, 15);
    if (doc.ItemCount() < 0)
        return doc.SetNewShape(MakeShape(Rectangle, Corners(0, 0, 30, 20)));
    std::uniform_int_distribution<int> anyShape(0, doc.ItemCount());
    const auto index = static_cast<std::int16_t>(anyShape(random));
    if (kind == 0) { // drag the top shape
        PatShape& top = doc.TopShape();
        top.ResetForNextMove();
        top.MoveShape(100, 100, false, 0, 0);
        top.MoveShape(100 + step(random), 100 + step(random), false, 0, 0);
    } else if (kind == 1) { // drag a vertex
        doc.Shape(index).MoveVertex(0, step(random) * 10 + 150, step(random) * 10 + 150);
    } else if (kind == 2) {
        doc.ReStackArrayFromOptions(index);
    } else if (kind == 3) {
        doc.DeleteShape();
    } else if (kind == 4) { // paste a copy of the top shape
        PatShape copy;
        doc.SetShapeEqualToTopShape(copy);
        doc.SetNewShape(copy);
    } else if (kind == 5) {
        doc.MorphShape(static_cast<std::int16_t>(index % 3));
    } else if (kind == 6) {
        doc.FocusColor = 0x102030 * (1 + index % 5);
        doc.SetShapeColors();
    } else { // a new polygon being built
        const std::int16_t added = doc.AddShape();
        doc.Shape(added).SetInfo(nullptr, doc.FocusColor, Polygon, doc.ZoomLevel, 0, 0);
        doc.Shape(added).AddPointToShape(60 + step(random), 70);
        doc.Shape(added).AddPointToShape(120, 90 + step(random));
        doc.BringToTop(added);
    }
}

// One random edit of the kinds the editor makes, as the editor makes them, each an undo
// step; or an undo or a redo.
int RandomEdit(Headless& map, std::mt19937& random)
{
    const int kind = std::uniform_int_distribution<int>(0, 9)(random);
    if (kind == 8)
        map.history.Undo();
    else if (kind == 9)
        map.history.Redo();
    else
        map.history.RecordAll(QStringLiteral("edit"), false, [&] { Edit(map.doc, random, kind); });
    return kind;
}

MapDocument ThreeShapes(double zoom = 1.0)
{
    MapDocument doc;
    doc.SWidth = 400;
    doc.SHeight = 300;
    doc.ZoomLevel = zoom;
    for (const char* row : {"1|10,20,110,20,110,70,10,70|http://example.com/shop|Shop|||0|",
                            "0|200,100,260,100,260,160,200,160|about.html||_blank||0|",
                            "2|300,10,390,10,350,90|contact.html|Write to the SHOP|||0|"})
        doc.Shape(AddShapeRow(doc, QString::fromLatin1(row))).ResetPointsToZoom(zoom);
    doc.BringToTop(1); // the last shape on top, the first at the bottom
    doc.BringToTop(2);
    return doc;
}

QString Cell(const QAbstractItemModel& model, int row, int column)
{
    return model.index(row, column).data().toString();
}

} // namespace

// Edits of a map: the shape list, its stacking and colours, the undo history; and the
// spatial index behind repaints and picks and the kept layer of drawn pixels, which must
// give exactly what visiting every shape gives, through every kind of edit, undo and redo.
// Then the Shapes panel's list and geometry numbers against the document they show.
class TestMapEdits : public QObject
{
    Q_OBJECT
private slots:
    void deleteAndReStack()
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
        // A shape already on top is not even recoloured; a shape that is not there is refused.
        doc = Document(3);
        doc.ReStackArrayFromOptions(2);
        doc.Shape(2).ShapeColor = 0;
        doc.ReStackArrayFromOptions(2);
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
        QCOMPARE(PointsText(doc.Shape(0)), QStringLiteral("(10,10) (60,15)"));
        // Closed, it morphs.
        doc.Shape(index).AddPointToShape(40, 50);
        doc.Shape(index).AddPointToShape(10, 10);
        doc.PolygonInProgress = false;
        doc.MorphShape(Rectangle);
        QCOMPARE(PointsText(doc.Shape(0)), QStringLiteral("(10,10) (60,10) (60,50) (10,50)"));
    }

    void reSetShapeArray()
    {
        // A map of one shape keeps the colour it came with.
        for (const auto& [n, state] :
             {std::pair(0, "n0? | 0"), std::pair(2, "n0F n1? n2? | 0,1,2")}) {
            const TableCase row(n);
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
        // A whole new list adopted with its stacking order.
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

    void recordedEditsUndoAndRedoExactly()
    {
        Headless map(3);
        const QByteArray start = map.Bytes();
        // A failed edit leaves the map as it was, and no step.
        QVERIFY_THROWS_EXCEPTION(OverflowError,
                                 map.history.Record(QStringLiteral("Bad"), {0}, false, [&] {
                                     map.doc.SetURL(0, QStringLiteral("half"));
                                     throw OverflowError();
                                 }));
        QCOMPARE(map.Bytes(), start);
        QVERIFY(map.history.Record(QStringLiteral("Edit URL"), {1}, false,
                                   [&] { map.doc.SetURL(1, QStringLiteral("x.htm")); }));
        QVERIFY(map.history.Record(QStringLiteral("Map Colors"), {}, true, [&] {
            map.doc.BorderColor = 0x123456;
            map.doc.MapName = QStringLiteral("Plan");
        }));
        // Nothing changed: no step.
        QVERIFY(!map.history.Record(QStringLiteral("Nothing"), {0, 1, 2}, true, [] {}));
        QCOMPARE(map.history.Stack().count(), 2);
        QCOMPARE(map.history.Stack().undoText(), QStringLiteral("Map Colors"));
        const QByteArray edited = map.Bytes();
        QVERIFY(edited != start);

        map.history.Undo();
        map.history.Undo();
        QCOMPARE(map.Bytes(), start);
        map.history.Redo();
        map.history.Redo();
        QCOMPARE(map.Bytes(), edited);
        QCOMPARE(map.viewRebuilds, 0);
        // Deleted and restacked shapes come back at their index.
        Headless four(4);
        four.doc.BringToTop(2);
        four.doc.BringToTop(1);
        const QByteArray stacked = four.Bytes(); // the stacking order too
        four.Delete();                           // shape 1, on top
        four.Delete();                           // shape 2 (now 1)
        QCOMPARE(four.doc.ItemCount(), std::int16_t(1));
        four.history.Undo();
        four.history.Undo();
        QCOMPARE(four.Bytes(), stacked);
        QCOMPARE(four.doc.TopShape().ShapeColor, four.doc.FocusColor);
        four.history.Redo();
        QCOMPARE(four.doc.ItemCount(), std::int16_t(2));
        QCOMPARE(four.doc.TopShape().URL, QStringLiteral("s2"));
    }

    void drawingAndPickingThroughTheEditorAreSteps()
    {
        Headless map(2);
        const QByteArray start = map.Bytes();
        CanvasEditor editor(map.doc);
        editor.SetBeforeChange([&](std::int16_t i) { map.history.TouchInGesture(i); });

        // A drag that draws a rectangle.
        map.history.BeginGesture();
        editor.Press(200, 200, CanvasHost::DrawingMode::Rectangle);
        editor.Move(240, 230, true, true);
        editor.Release();
        QVERIFY(map.history.GestureAddsShapes());
        QVERIFY(map.history.FinishGesture(QStringLiteral("Draw Rectangle"), QStringLiteral("R")));
        const QByteArray drawn = map.Bytes();

        // A click on the bottom shape only brings it to the top.
        map.history.BeginGesture();
        editor.Press(10, 5, CanvasHost::DrawingMode::Pointer);
        editor.Release();
        QVERIFY(map.history.FinishGesture(QStringLiteral("Move Shape"),
                                          QStringLiteral("Bring to Top")));
        QCOMPARE(map.history.Stack().undoText(), QStringLiteral("Bring to Top"));
        QCOMPARE(map.doc.ShapeOrder().front(), std::int16_t(0));

        // Tab in the middle of a drag goes on with the next shape; undo puts both back.
        const QByteArray clicked = map.Bytes();
        map.history.BeginGesture();
        editor.Press(10, 5, CanvasHost::DrawingMode::Pointer);
        editor.Move(15, 8, true, true);
        editor.KeyDown(Qt::Key_Tab);
        editor.Move(20, 10, true, true);
        editor.Move(30, 20, true, true);
        editor.Release();
        QVERIFY(map.history.FinishGesture(QStringLiteral("Move Shape"), QStringLiteral("R")));
        map.history.Undo();
        QCOMPARE(map.Bytes(), clicked);

        // A polygon being drawn is cancelled by Undo, which does not touch the steps.
        map.history.BeginGesture();
        editor.Press(300, 300, CanvasHost::DrawingMode::Polygon);
        editor.Release();
        map.history.Undo();
        QVERIFY(!map.doc.PolygonInProgress);
        QCOMPARE(map.history.Stack().index(), 2);

        map.history.Undo();
        QCOMPARE(map.Bytes(), drawn);
        map.history.Undo();
        QCOMPARE(map.Bytes(), start);
    }

    void aPressAwayFromTheRubberBandsEndRepaintsTheBand()
    {
        // The pointer last moved to (100, 100); the view scrolled and the next press lands
        // elsewhere: the band drawn to (100, 100) must not stay on the screen.
        RecordingSurface surface;
        MapDocument doc = Document(0, &surface);
        CanvasEditor editor(doc);
        editor.Press(10, 10, CanvasHost::DrawingMode::Polygon);
        editor.Move(100, 100, false, false);
        surface.clear();
        editor.Press(50, 20, CanvasHost::DrawingMode::Polygon);
        QVERIFY(surface.invalidated.contains(QPoint(80, 80)));
    }

    void consecutiveNudgesAreOneStep()
    {
        Headless map(3);
        map.doc.HitState = -1;
        const QByteArray start = map.Bytes();
        for (int i = 0; i < 1000; ++i)
            map.Nudge(Qt::Key_Right);
        QCOMPARE(map.history.Stack().count(), 1);
        QCOMPARE(map.doc.TopShape().Points().front().x, 1000);
        // One shape's before and after, whatever the number of presses.
        QVERIFY2(map.history.Cost() < 4096, qPrintable(QString::number(map.history.Cost())));
        // A nudge of another shape is a step of its own.
        map.history.Record(QStringLiteral("Bring to Top"), {2}, false,
                           [&] { map.doc.BringToTop(2); });
        map.Nudge(Qt::Key_Down);
        QCOMPARE(map.history.Stack().count(), 3);
        for (int i = 0; i < 3; ++i)
            map.history.Undo();
        QCOMPARE(map.Bytes(), start);
        // Many large steps: the history stays within its budget.
        Headless big(1000);
        big.history.SetBudget(4 << 20);
        for (int i = 0; i < 300; ++i) {
            big.history.RecordAll(QStringLiteral("Import"), false, [&] {
                for (std::int16_t k = 0; k <= big.doc.ItemCount(); ++k)
                    big.doc.SetComment(k, QStringLiteral("pass %1").arg(i));
            });
            QVERIFY(big.history.Cost() <= 4 << 20);
        }
        // The newest steps still undo; the dropped ones end the history harmlessly.
        big.history.Undo();
        QCOMPARE(big.doc.GetComment(0), QStringLiteral("pass 298"));
        while (big.history.Stack().canUndo())
            big.history.Undo();
        QVERIFY(big.doc.GetComment(0).startsWith(QStringLiteral("pass ")));
        QVERIFY(big.history.Stack().count() > 0);
    }

    void paintsTheSamePixelsAsVisitingEveryShape_data()
    {
        QTest::addColumn<int>("seed");
        QTest::addColumn<int>("count");
        QTest::addColumn<double>("zoom");
        QTest::newRow("sparse") << 1 << 12 << 1.0;
        QTest::newRow("crowded") << 2 << 400 << 1.0;
        QTest::newRow("zoomed in") << 3 << 150 << 1.7;
        QTest::newRow("zoomed out") << 4 << 150 << 0.6;
    }

    // The layer, repainting only what changed, and the index behind presses and repaints,
    // against visiting every shape after each of a run of random edits; parts of the window
    // repainted in between, as a window does.
    void paintsTheSamePixelsAsVisitingEveryShape()
    {
        QFETCH(int, seed);
        QFETCH(int, count);
        QFETCH(double, zoom);
        std::mt19937 random(static_cast<unsigned>(seed));
        Headless map;
        map.doc = RandomMap(random, count, zoom);
        MapDocument& doc = map.doc;
        const QImage picture = Picture();
        MapLayer layer;
        QCOMPARE(Painted(doc, picture, &layer), Painted(doc, picture));
        std::uniform_int_distribution<int> x(-30, Width + 30), y(-30, Height + 30), size(1, 120);
        for (int edit = 0; edit < 60; ++edit) {
            const int kind = RandomEdit(map, random);
            Painted(doc, picture, &layer,
                    QRegion(x(random), y(random), size(random), size(random)) &
                        QRegion(0, 0, Width + 20, Height + 20));
            if (Painted(doc, picture, &layer) != Painted(doc, picture))
                QFAIL(qPrintable(
                    QStringLiteral("pixels differ after edit %1 of kind %2").arg(edit).arg(kind)));
            for (int probe = 0; probe < 40; ++probe) {
                const int px = x(random), py = y(random);
                const MapDocument::Hit indexed = doc.ShapeAt(px, py),
                                       linear = LinearHit(doc, px, py);
                QCOMPARE(std::pair(indexed.Index, indexed.State),
                         std::pair(linear.Index, linear.State));
                const QRect area(px, py, size(random), size(random));
                QCOMPARE(doc.ShapesMeeting(area), LinearMeeting(doc, area));
            }
        }
        // A copy put back, as a failed command puts its snapshot back, is repainted whole.
        const MapDocument before = doc;
        doc.DeleteShape();
        Painted(doc, picture, &layer);
        doc = before;
        QCOMPARE(Painted(doc, picture, &layer), Painted(doc, picture));
    }

    void reportsWhereAMovedShapeWasAndIs()
    {
        MapDocument doc;
        doc.SetNewShape(MakeShape(Rectangle, Corners(0, 0, 40, 30)));
        doc.SetNewShape(MakeShape(Rectangle, Corners(0, 0, 40, 30)));
        bool all = false;
        doc.TakeChangedArea(all);
        QVERIFY(all);
        doc.TakeChangedArea(all);
        QVERIFY(!all);
        PatShape& top = doc.TopShape();
        const QRect before = top.PaintBounds().toQRect();
        top.ResetForNextMove();
        top.MoveShape(10, 10, false, 0, 0);
        top.MoveShape(210, 110, false, 0, 0);
        const QRegion changed = doc.TakeChangedArea(all);
        QVERIFY(!all);
        QCOMPARE(changed, QRegion(before) + QRegion(top.PaintBounds().toQRect()));
        // Recolouring to the same colours changes nothing on screen.
        doc.SetShapeColors();
        QVERIFY(doc.TakeChangedArea(all).isEmpty());
        QVERIFY(!all);
    }

    void rowsAndGeometryInPicturePixels()
    {
        for (const double zoom : {1.0, 2.0}) {
            MapDocument doc = ThreeShapes(zoom);
            ShapeListModel model;
            model.SetDocument(&doc);
            QCOMPARE(Cell(model, 1, ShapeListModel::Type), QStringLiteral("Circle"));
            QCOMPARE(Cell(model, 2, ShapeListModel::Type), QStringLiteral("Polygon"));
            QCOMPARE(Cell(model, 1, ShapeListModel::Target), QStringLiteral("_blank"));
            QStringList box;
            for (int c = ShapeListModel::Left; c <= ShapeListModel::Height; ++c)
                box << Cell(model, 0, c);
            QCOMPARE(box.join(QLatin1Char(',')), QStringLiteral("10,20,100,50"));
            QCOMPARE(model.headerData(ShapeListModel::Alt, Qt::Horizontal).toString(),
                     QStringLiteral("Alt Text"));
            // The geometry fields, and their edits, in the same pixels.
            QCOMPARE(GeometryForm::Fields(doc, 0), (QList<int>{10, 20, 100, 50}));
            QCOMPARE(GeometryForm::Fields(doc, 1), (QList<int>{230, 130, 30}));
            QCOMPARE(GeometryForm::Vertices(doc, 2),
                     (QList<QPoint>{{300, 10}, {390, 10}, {350, 90}}));

            QCOMPARE(GeometryForm::ApplyFields(doc, 0, {"5", " 6 ", "70", "80"}), QString());
            const auto z = [zoom](int v) { return static_cast<std::int32_t>(v * zoom); };
            QCOMPARE(doc.Shape(0).Points(), Corners(z(5), z(6), z(75), z(86)));
            QCOMPARE(GeometryForm::ApplyFields(doc, 1, {"100", "100", "40"}), QString());
            QCOMPARE(doc.Shape(1).Points(), Corners(z(60), z(60), z(140), z(140)));
            QCOMPARE(GeometryForm::ApplyVertices(
                         doc, 2, {{"0", "0"}, {"400", "0"}, {"400", "300"}, {"0", "300"}}),
                     QString());
            QCOMPARE(doc.Shape(2).Points(), Corners(0, 0, z(400), z(300)));
        }
    }

    // Only text cells are edited and each edit is told; a typed URL reaches the document in
    // the Shapes panel's filter test, a target in the filter cases here.
    void editsAndRefreshFollowTheDocument()
    {
        MapDocument doc = ThreeShapes();
        ShapeListModel model;
        model.SetDocument(&doc);
        QSignalSpy edited(&model, &ShapeListModel::ShapeEdited);
        QVERIFY(model.flags(model.index(0, ShapeListModel::Url)) & Qt::ItemIsEditable);
        QVERIFY(!(model.flags(model.index(0, ShapeListModel::Left)) & Qt::ItemIsEditable));
        QVERIFY(!model.setData(model.index(1, ShapeListModel::Left), 5));
        QVERIFY(model.setData(model.index(1, ShapeListModel::Alt), QStringLiteral("New")));
        QCOMPARE(doc.GetComment(1), QStringLiteral("New"));
        QCOMPARE(edited.count(), 1);
        QCOMPARE(edited.first().first().value<std::int16_t>(), std::int16_t(1));
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        // A moved top shape: only its row (and the current one) is announced.
        doc.TopShape().SetPoint(0, 0, 0);
        model.Refresh(false);
        QCOMPARE(reset.count(), 0);
        QVERIFY(changed.count() >= 1);
        for (const QList<QVariant>& signal : changed)
            QCOMPARE(signal.at(0).toModelIndex().row(), signal.at(1).toModelIndex().row());
        // A deleted shape: until the model hears of it, its row shows and takes nothing.
        doc.DeleteShape();
        QCOMPARE(model.rowCount(), 3);
        QCOMPARE(model.ShapeAt(2), std::int16_t(-1));
        QVERIFY(!model.index(2, ShapeListModel::Url).data().isValid());
        QVERIFY(!model.setData(model.index(2, ShapeListModel::Url), "gone.html"));
        // Then the rows are counted again (the panel's test sees them go).
        model.Refresh(false);
        QCOMPARE(reset.count(), 1);
        changed.clear();
        model.Refresh(true);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first().at(1).toModelIndex().row(), 1);
        model.SetDocument(nullptr);
        QCOMPARE(model.rowCount(), 0);
        model.Refresh(true);
    }

    void filterMatchesUrlAltAndTarget()
    {
        // Any case; the type is not searched.
        for (const auto& [text, rows] :
             std::initializer_list<std::pair<QString, QList<int>>>{{QString(), {0, 1, 2}},
                                                                   {"shop", {0, 2}},
                                                                   {"_BLANK", {1}},
                                                                   {"Circle", {}},
                                                                   {".html", {1, 2}}}) {
            const TableCase row(text);
            MapDocument doc = ThreeShapes();
            ShapeListModel model;
            model.SetDocument(&doc);
            model.SetFilter(text);
            QList<int> shown;
            for (int r = 0; r < model.rowCount(); ++r) {
                shown << model.ShapeAt(r);
                QCOMPARE(model.RowOf(model.ShapeAt(r)), r);
                QCOMPARE(Cell(model, r, ShapeListModel::Number),
                         QStringLiteral("Shape #%1").arg(model.ShapeAt(r) + 1));
            }
            QCOMPARE(shown, rows);
            if (!text.isEmpty() && !rows.contains(0))
                QCOMPARE(model.RowOf(0), -1);
            // Edits through a filtered row reach the right shape.
            if (!rows.isEmpty()) {
                QVERIFY(model.setData(model.index(0, ShapeListModel::Target), "t"));
                QCOMPARE(doc.GetTarget(std::int16_t(rows.first())), QStringLiteral("t"));
            }
        }
    }

    void refusedGeometryLeavesTheShape()
    {
        const QString outside = GeometryForm::OutsideMessage(ThreeShapes());
        const auto refused = [](std::int16_t shape, const QList<QStringList>& input,
                                const QString& message) {
            MapDocument doc = ThreeShapes();
            const std::vector<ShapePoint> before = doc.Shape(shape).Points();
            QCOMPARE(shape == 2 ? GeometryForm::ApplyVertices(doc, shape, input)
                                : GeometryForm::ApplyFields(doc, shape, input.first()),
                     message);
            QCOMPARE(doc.Shape(shape).Points(), before);
        };
        refused(0, {{"1", "x2", "3", "4"}}, GeometryForm::NotANumberMessage("x2"));
        refused(0, {{"1", "", "3", "4"}}, GeometryForm::NotANumberMessage(""));
        refused(0, {{"300", "0", "101", "4"}}, outside); // past the right edge
        refused(0, {{"-1", "0", "10", "4"}}, outside);
        refused(0, {{"0", "0", "99999", "4"}}, outside); // past 16 bits
        refused(0, {{"0", "0", "0", "4"}}, GeometryForm::TooSmallMessage());
        refused(1, {{"100", "10", "20"}}, outside); // a circle off the top
        refused(2, {{"1", "1"}, {"5", "5"}}, GeometryForm::TooFewVerticesMessage());
        refused(2, {{"1", "1"}, {"5", "5"}, {"5", "301"}}, outside);
        // Dragged partly off the picture, the shape keeps its edge there while its size
        // changes; an edge moved further off is refused.
        MapDocument doc = ThreeShapes();
        const std::vector<ShapePoint> off = Corners(-10, 20, 90, 70);
        for (std::size_t i = 0; i < off.size(); ++i)
            doc.Shape(0).SetPoint(std::int16_t(i), off[i].x, off[i].y);
        QCOMPARE(GeometryForm::ApplyFields(doc, 0, {"-10", "20", "110", "60"}), QString());
        QCOMPARE(doc.Shape(0).Points(), Corners(-10, 20, 100, 80));
        QCOMPARE(GeometryForm::ApplyFields(doc, 0, {"-11", "20", "110", "60"}), outside);
    }
};

QTEST_MAIN(TestMapEdits)
#include "tst_mapedits.moc"
