#include "CanvasFixture.h"
#include "core/document/VertexEditor.h"

// The keys and Ctrl+clicks that build, trim and step through polygons and shapes.
class TestPolygonKeys : public QObject, CanvasFixture
{
    Q_OBJECT
private:
    void Key(Qt::Key key, Qt::KeyboardModifiers keys = {})
    {
        QTest::keyClick(Surface(), key, keys);
    }
    void Rectangle(QPoint from, QPoint to) { Draw(Mode::Rectangle, from, to); }
    void StartPolygon(std::initializer_list<QPoint> vertices)
    {
        m_host->mode = Mode::Polygon;
        for (const QPoint p : vertices)
            Click(p);
        m_host->mode = Mode::Pointer;
    }
    std::vector<ShapePoint> Triangle() { return {{10, 10}, {100, 10}, {100, 100}}; }

private slots:
    void cleanup() { CloseCanvas(); }

    void escapeAbandonsThePolygonAndKeepsTheRest()
    {
        NewCanvas();
        Rectangle({200, 200}, {250, 250});
        StartPolygon({{10, 10}, {100, 10}});
        QVERIFY(m_canvas->PointerConfined());
        Key(Qt::Key_Escape);
        QCOMPARE(Doc().ItemCount(), std::int16_t(0));
        QCOMPARE(Doc().Shape(0).GetShapeType(), std::int16_t(::Rectangle));
        QVERIFY(!Doc().PolygonInProgress);
        QVERIFY(!m_canvas->PointerConfined());
        Consistent();
        // The next press starts afresh instead of adding to the abandoned polygon.
        StartPolygon({{300, 20}});
        QCOMPARE(Doc().ItemCount(), std::int16_t(1));
        QCOMPARE(Doc().Shape(1).Points().size(), std::size_t(1));
        // Escape with nothing being drawn changes nothing.
        Key(Qt::Key_Escape);
        Key(Qt::Key_Escape);
        QCOMPARE(Doc().ItemCount(), std::int16_t(0));
    }

    void backspaceTakesBackVerticesOneByOne()
    {
        NewCanvas();
        StartPolygon({{10, 10}, {100, 10}, {150, 80}});
        Key(Qt::Key_Backspace);
        QCOMPARE(Doc().Shape(0).Points(), (std::vector<ShapePoint>{{10, 10}, {100, 10}}));
        QVERIFY(Doc().PolygonInProgress);
        // Building goes on from the shorter chain.
        StartPolygon({{100, 100}, {10, 10}});
        QVERIFY(Doc().Shape(0).IsShapeDone());
        QCOMPARE(Doc().Shape(0).Points(), Triangle());
        Consistent();

        NewCanvas();
        StartPolygon({{10, 10}, {100, 10}});
        Key(Qt::Key_Backspace);
        Key(Qt::Key_Backspace);
        QCOMPARE(Doc().ItemCount(), std::int16_t(-1));
        QVERIFY(!Doc().PolygonInProgress);
        QVERIFY(!m_canvas->PointerConfined());
    }

    void enterClosesOnlyFromThreeVertices()
    {
        NewCanvas();
        Rectangle({200, 200}, {250, 250});
        StartPolygon({{10, 10}, {100, 10}});
        Key(Qt::Key_Return);
        QVERIFY(Doc().PolygonInProgress);
        StartPolygon({{100, 100}});
        Key(Qt::Key_Enter);
        QVERIFY(!Doc().PolygonInProgress);
        QVERIFY(Doc().Shape(1).IsShapeDone());
        QCOMPARE(Doc().Shape(1).Points(), Triangle());
        QCOMPARE(Doc().ShapeOrder().front(), std::int16_t(1));
        QVERIFY(!m_canvas->PointerConfined());
        Consistent();
    }

    void commandsSettleThePolygonFirst()
    {
        NewCanvas();
        Rectangle({200, 200}, {250, 250});
        PatShape copied;
        QVERIFY(m_canvas->SetShapeEqualToTopShape(copied));
        // Three vertices: closed as Enter closes it, and the paste lands on top.
        StartPolygon({{10, 10}, {100, 10}, {100, 100}});
        m_canvas->SetNewShape(copied);
        QVERIFY(!Doc().PolygonInProgress);
        QVERIFY(!m_canvas->PointerConfined());
        QCOMPARE(Doc().Shape(1).Points(), Triangle());
        QCOMPARE(Doc().ItemCount(), std::int16_t(2));
        QCOMPARE(Doc().ShapeOrder().front(), std::int16_t(2));
        Consistent();
        // Each is a step of its own.
        QCOMPARE(m_canvas->UndoStack().undoText(), QStringLiteral("Paste Shape"));
        m_canvas->UndoStack().undo();
        QCOMPARE(m_canvas->UndoStack().undoText(), QStringLiteral("Draw Polygon"));
        QCOMPARE(Doc().ItemCount(), std::int16_t(1));
        Consistent();
        // Two vertices: abandoned as Escape abandons it; Cut then takes the top shape,
        // the same one it copies.
        StartPolygon({{300, 20}, {350, 20}});
        PatShape cut;
        QVERIFY(m_canvas->SetShapeEqualToTopShape(cut));
        m_canvas->DeleteShape(QStringLiteral("Cut Shape"));
        QCOMPARE(cut.Points(), (std::vector<ShapePoint>{{0, 0}, {90, 0}, {90, 90}}));
        QCOMPARE(Doc().ItemCount(), std::int16_t(0));
        QVERIFY(!Doc().PolygonInProgress);
        Consistent();
        // The next click starts a polygon of its own instead of adding to another shape.
        StartPolygon({{300, 200}});
        QCOMPARE(Doc().ItemCount(), std::int16_t(1));
        QCOMPARE(Doc().Shape(1).Points(), (std::vector<ShapePoint>{{300, 200}}));
    }

    void tabStepsThroughCoveredShapes()
    {
        NewCanvas();
        Rectangle({50, 50}, {80, 80});   // 0: lies wholly under shape 1
        Rectangle({10, 10}, {200, 200}); // 1
        Rectangle({250, 20}, {300, 60}); // 2
        QCOMPARE(Doc().ShapeOrder().front(), std::int16_t(2));
        Key(Qt::Key_Tab);
        QCOMPARE(Doc().ShapeOrder().front(), std::int16_t(0));
        Consistent();
        // The reached shape is grabbed: the arrows move it.
        Key(Qt::Key_Right);
        QCOMPARE(Doc().Shape(0).Points().front(), (ShapePoint{51, 50}));
        Key(Qt::Key_Tab);
        QCOMPARE(Doc().ShapeOrder().front(), std::int16_t(1));
        Key(Qt::Key_Tab, Qt::ShiftModifier);
        QCOMPARE(Doc().ShapeOrder().front(), std::int16_t(0));
        Key(Qt::Key_Backtab);
        QCOMPARE(Doc().ShapeOrder().front(), std::int16_t(2));
        // While a polygon is drawn Tab leaves the stack alone.
        StartPolygon({{300, 200}});
        Key(Qt::Key_Tab);
        QCOMPARE(Doc().ShapeOrder().front(), std::int16_t(2));
    }

    void controlClickInsertsAndDeletesVertices()
    {
        NewCanvas();
        StartPolygon({{10, 10}, {100, 10}, {100, 100}, {10, 10}});
        Rectangle({300, 200}, {350, 250});
        // On the top edge: a vertex there, and the polygon comes to the top.
        Click({50, 12}, Qt::ControlModifier);
        QCOMPARE(Doc().Shape(0).Points(),
                 (std::vector<ShapePoint>{{10, 10}, {50, 12}, {100, 10}, {100, 100}}));
        QCOMPARE(Doc().ShapeOrder().front(), std::int16_t(0));
        // Pressed with Ctrl and dragged: the new vertex follows.
        QTest::mousePress(Surface(), Qt::LeftButton, Qt::ControlModifier, {55, 58});
        QTest::mouseMove(Surface(), {40, 70});
        QTest::mouseRelease(Surface(), Qt::LeftButton, Qt::ControlModifier, {40, 70});
        QCOMPARE(Doc().Shape(0).Points().back(), (ShapePoint{40, 70}));
        QCOMPARE(Doc().Shape(0).Points().size(), std::size_t(5));
        // On a vertex: it goes.
        Click({50, 12}, Qt::ControlModifier);
        QCOMPARE(Doc().Shape(0).Points(),
                 (std::vector<ShapePoint>{{10, 10}, {100, 10}, {100, 100}, {40, 70}}));
        Click({40, 70}, Qt::ControlModifier);
        QCOMPARE(Doc().Shape(0).Points(), Triangle());
        // Not below three.
        Click({100, 100}, Qt::ControlModifier);
        QCOMPARE(Doc().Shape(0).Points(), Triangle());
        QCOMPARE(m_host->ui.messageTexts(), QStringList{VertexEditor::TooFewVerticesMessage()});
        QVERIFY(!m_canvas->PointerConfined());
        // Elsewhere Ctrl+click is an ordinary click: the rectangle is picked.
        Click({320, 220}, Qt::ControlModifier);
        QCOMPARE(Doc().ShapeOrder().front(), std::int16_t(1));
        QCOMPARE(Doc().Shape(1).Points().size(), std::size_t(4));
        Consistent();
    }
};

QTEST_MAIN(TestPolygonKeys)
#include "tst_polygonkeys.moc"
