#include "ShapeBuilders.h"
#include "core/base/Numeric.h"
#include "core/document/CanvasEditor.h"
#include "core/document/DeleteShapeCommand.h"
#include "core/document/MapDocument.h"
#include "core/document/MapHistory.h"
#include "core/document/MapLayer.h"
#include "core/document/MapPainter.h"
#include "core/document/NudgeShapeCommand.h"
#include "core/document/StepTarget.h"
#include "core/interchange/MapFile.h"

#include <QImage>
#include <QPainter>
#include <QTest>
#include <numeric>
#include <random>

// Edits of a map and their undo history; and the spatial index behind repaints and picks
// and the kept layer of drawn pixels, which must give exactly what visiting every shape
// gives, through every kind of edit, undo and redo.
namespace {

// A map without a window: the history's target.
class Headless : public StepTarget
{
public:
    MapDocument doc;
    int viewRebuilds = 0;
    MapHistory history{*this};

    explicit Headless(int shapes = 0)
    {
        std::vector<PatShape> list;
        for (int i = 0; i < shapes; ++i) {
            PatShape s = MakeShape(Rectangle, Corners(40 * i, 40 * i, 40 * i + 20, 40 * i + 10));
            s.URL = QStringLiteral("s%1").arg(i);
            list.push_back(s);
        }
        if (shapes > 0)
            doc.ReSetShapeArray(list, static_cast<std::int16_t>(shapes - 1));
        doc.SetShapeColors();
    }
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
        const int l = x(random), t = y(random), w = size(random), h = size(random);
        const int k = kind(random);
        PatShape s;
        if (k <= 1) {
            s = MakeShape(k == 0 ? Circle : Rectangle, Corners(l, t, l + w, t + h), nullptr, 1.0);
        } else {
            std::vector<ShapePoint> points;
            const int n = 3 + k;
            for (int p = 0; p < n; ++p)
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
    for (int y = 0; y < Height; ++y) {
        for (int x = 0; x < Width; ++x)
            picture.setPixel(x, y, qRgb(x % 256, y % 256, (x * y) % 256));
    }
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
    for (std::size_t i = 0; i < doc.Shapes().size(); ++i) {
        if (doc.Shapes()[i].PaintBounds().toQRect().intersects(area))
            found.push_back(static_cast<std::int16_t>(i));
    }
    return found;
}

void Edit(MapDocument& doc, std::mt19937& random, int kind)
{
    std::uniform_int_distribution<int> step(-15, 15);
    if (doc.ItemCount() < 0)
        return doc.SetNewShape(MakeShape(Rectangle, Corners(0, 0, 30, 20)));
    std::uniform_int_distribution<int> anyShape(0, doc.ItemCount());
    const auto index = static_cast<std::int16_t>(anyShape(random));
    PatShape copy;
    switch (kind) {
    case 0: { // drag the top shape
        PatShape& top = doc.TopShape();
        top.ResetForNextMove();
        top.MoveShape(100, 100, false, 0, 0);
        top.MoveShape(100 + step(random), 100 + step(random), false, 0, 0);
        break;
    }
    case 1: // drag a vertex
        doc.Shape(index).MoveVertex(0, step(random) * 10 + 150, step(random) * 10 + 150);
        break;
    case 2:
        doc.ReStackArrayFromOptions(index);
        break;
    case 3:
        doc.DeleteShape();
        break;
    case 4: // paste a copy of the top shape
        doc.SetShapeEqualToTopShape(copy);
        doc.SetNewShape(copy);
        break;
    case 5:
        doc.MorphShape(static_cast<std::int16_t>(index % 3));
        break;
    case 6:
        doc.FocusColor = 0x102030 * (1 + index % 5);
        doc.SetShapeColors();
        break;
    default: { // a new polygon being built
        const std::int16_t added = doc.AddShape();
        doc.Shape(added).SetInfo(nullptr, doc.FocusColor, Polygon, doc.ZoomLevel, 0, 0);
        doc.Shape(added).AddPointToShape(60 + step(random), 70);
        doc.Shape(added).AddPointToShape(120, 90 + step(random));
        doc.BringToTop(added);
        break;
    }
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

} // namespace

class TestMapEdits : public QObject
{
    Q_OBJECT
private slots:
    void recordedEditsUndoAndRedoExactly()
    {
        Headless map(3);
        const QByteArray start = map.Bytes();
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
    }

    void aFailedEditLeavesTheMapAndTheStackAlone()
    {
        Headless map(2);
        const QByteArray start = map.Bytes();
        QVERIFY_THROWS_EXCEPTION(OverflowError,
                                 map.history.Record(QStringLiteral("Bad"), {0}, false, [&] {
                                     map.doc.SetURL(0, QStringLiteral("half"));
                                     throw OverflowError();
                                 }));
        QCOMPARE(map.Bytes(), start);
        QCOMPARE(map.history.Stack().count(), 0);
    }

    void deleteAndRestackComeBackAtTheirIndex()
    {
        Headless map(4);
        map.doc.BringToTop(2);
        map.doc.BringToTop(1);
        const QByteArray start = map.Bytes();
        const std::vector<std::int16_t> order = map.doc.ShapeOrder();
        map.Delete(); // shape 1, on top
        map.Delete(); // shape 2 (now 1)
        QCOMPARE(map.doc.ItemCount(), std::int16_t(1));
        map.history.Undo();
        map.history.Undo();
        QCOMPARE(map.doc.ShapeOrder(), order);
        QCOMPARE(map.Bytes(), start);
        QCOMPARE(map.doc.TopShape().ShapeColor, map.doc.FocusColor);
        map.history.Redo();
        QCOMPARE(map.doc.ItemCount(), std::int16_t(2));
        QCOMPARE(map.doc.TopShape().URL, QStringLiteral("s2"));
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

        // A polygon being drawn is cancelled by Undo, which does not touch the steps.
        map.history.BeginGesture();
        editor.Press(300, 300, CanvasHost::DrawingMode::Polygon);
        editor.Release();
        QVERIFY(map.doc.PolygonInProgress);
        map.history.Undo();
        QVERIFY(!map.doc.PolygonInProgress);
        QCOMPARE(map.history.Stack().index(), 2);

        map.history.Undo();
        QCOMPARE(map.Bytes(), drawn);
        map.history.Undo();
        QCOMPARE(map.Bytes(), start);
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
    }

    void theHistoryStaysWithinItsBudget()
    {
        Headless map(1000);
        map.history.SetBudget(4 << 20);
        for (int i = 0; i < 300; ++i) {
            map.history.RecordAll(QStringLiteral("Import"), false, [&] {
                for (std::int16_t k = 0; k <= map.doc.ItemCount(); ++k)
                    map.doc.SetComment(k, QStringLiteral("pass %1").arg(i));
            });
            QVERIFY(map.history.Cost() <= 4 << 20);
        }
        // The newest steps still undo; the dropped ones end the history harmlessly.
        map.history.Undo();
        QCOMPARE(map.doc.GetComment(0), QStringLiteral("pass 298"));
        while (map.history.Stack().canUndo())
            map.history.Undo();
        QVERIFY(map.doc.GetComment(0).startsWith(QStringLiteral("pass ")));
        QVERIFY(map.history.Stack().count() > 0);
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

    // The layer, repainting only what changed, against a fresh full paint after each of
    // a run of random edits; parts of the window repainted in between, as a window does.
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
        std::uniform_int_distribution<int> x(0, Width), y(0, Height), size(10, 120);
        for (int edit = 0; edit < 60; ++edit) {
            const int kind = RandomEdit(map, random);
            Painted(doc, picture, &layer,
                    QRegion(x(random), y(random), size(random), size(random)) &
                        QRegion(0, 0, Width + 20, Height + 20));
            if (Painted(doc, picture, &layer) != Painted(doc, picture))
                QFAIL(qPrintable(
                    QStringLiteral("pixels differ after edit %1 of kind %2").arg(edit).arg(kind)));
        }
    }

    void aCopiedDocumentIsRepaintedWhole()
    {
        std::mt19937 random(9);
        MapDocument doc = RandomMap(random, 60, 1.0);
        const QImage picture = Picture();
        MapLayer layer;
        Painted(doc, picture, &layer);
        // As a failed command puts its snapshot back.
        const MapDocument before = doc;
        doc.DeleteShape();
        Painted(doc, picture, &layer);
        doc = before;
        QCOMPARE(Painted(doc, picture, &layer), Painted(doc, picture));
    }

    void findsWhatVisitingEveryShapeFinds()
    {
        std::mt19937 random(5);
        Headless map;
        map.doc = RandomMap(random, 300, 1.0);
        MapDocument& doc = map.doc;
        std::uniform_int_distribution<int> x(-30, Width + 30), y(-30, Height + 30), size(1, 80);
        for (int round = 0; round < 40; ++round) {
            for (int probe = 0; probe < 50; ++probe) {
                const int px = x(random), py = y(random);
                const MapDocument::Hit indexed = doc.ShapeAt(px, py);
                const MapDocument::Hit linear = LinearHit(doc, px, py);
                QCOMPARE(indexed.Index, linear.Index);
                QCOMPARE(indexed.State, linear.State);
                const QRect area(px, py, size(random), size(random));
                QCOMPARE(doc.ShapesMeeting(area), LinearMeeting(doc, area));
            }
            RandomEdit(map, random);
        }
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
};

QTEST_MAIN(TestMapEdits)
#include "tst_mapedits.moc"
