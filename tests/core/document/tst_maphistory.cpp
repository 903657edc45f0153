#include "ShapeBuilders.h"
#include "core/base/Numeric.h"
#include "core/document/CanvasEditor.h"
#include "core/document/DeleteShapeCommand.h"
#include "core/document/MapDocument.h"
#include "core/document/MapHistory.h"
#include "core/document/NudgeShapeCommand.h"
#include "core/document/StepTarget.h"
#include "core/interchange/MapFile.h"

#include <QTest>

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

} // namespace

class TestMapHistory : public QObject
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
};

QTEST_MAIN(TestMapHistory)
#include "tst_maphistory.moc"
