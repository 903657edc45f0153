#include "CanvasFixture.h"
#include "FileBytes.h"
#include "ShapeBuilders.h"
#include "TableCase.h"
#include "core/document/VertexEditor.h"
#include "core/document/ViewScale.h"
#include "core/interchange/MapFile.h"
#include "core/interchange/PictureLoader.h"
#include "core/shape/ShapePainter.h"

#include <QApplication>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QWheelEvent>
#include <cmath>

// The map window: drawing and editing with the mouse and keys, scrolling and zooming, and
// the commands the frame calls, with maps as files: whatever the reader accepts opens and
// edits, and a save goes back to the file that was opened.
class TestShapeCanvas : public QObject, CanvasFixture
{
    Q_OBJECT
private:
    QTemporaryDir m_dir;

    QString Path(const QString& name) const { return m_dir.filePath(name); }
    MapDocument Blank() const
    {
        MapDocument doc;
        doc.ImagePath = m_dir.path() + QLatin1Char('/');
        doc.ImageName = QStringLiteral("pic.png");
        doc.RealWidth = doc.SWidth = 320;
        doc.RealHeight = doc.SHeight = 200;
        return doc;
    }
    bool Open(const QString& path)
    {
        NewCanvas();
        return m_canvas->OpenMapFile(path);
    }
    // The map saved under name in the folder, then opened in a new window.
    bool Open(const MapDocument& doc, const QString& name)
    {
        return MapFile::SaveMap(doc, Path(name)).ok && Open(Path(name));
    }
    ShapeCanvas& Untitled()
    {
        NewCanvas(300, 200).setWindowTitle(QStringLiteral("Untitled"));
        return *m_canvas;
    }
    void CheckMessage(const QString& text)
    {
        QCOMPARE(m_host->ui.messageTexts(), QStringList{text});
        QCOMPARE(m_host->ui.messages.front().icon, ModalUi::Icon::Critical);
    }

    template <typename T = QWidget> T* Child(const char* name)
    {
        return m_canvas->findChild<T*>(QLatin1String(name));
    }
    QScrollBar* Bar(const char* name) { return Child<QScrollBar>(name); }
    void Key(Qt::Key key, Qt::KeyboardModifiers keys = {})
    {
        QTest::keyClick(Surface(), key, keys);
    }
    void StartPolygon(std::initializer_list<QPoint> vertices)
    {
        m_host->mode = Mode::Polygon;
        for (const QPoint p : vertices)
            Click(p);
        m_host->mode = Mode::Pointer;
    }
    std::vector<ShapePoint> Triangle() { return {{10, 10}, {100, 10}, {100, 100}}; }
    QWidget* Viewport() { return Surface()->parentWidget(); }
    void Wheel(QPoint at, QPoint angle, Qt::KeyboardModifiers keys = {})
    {
        // Sent where an unhandled wheel over the surface ends up: the map window.
        const QPointF local = Surface()->mapTo(m_canvas.get(), QPointF(at));
        QWheelEvent event(local, QPointF(Surface()->mapToGlobal(at)), QPoint(), angle, Qt::NoButton,
                          keys, Qt::NoScrollPhase, false);
        QApplication::sendEvent(m_canvas.get(), &event);
    }
    // The document point shown at a viewport position.
    QPointF DocumentAt(QPointF viewport)
    {
        return (viewport - QPointF(Surface()->pos())) / m_canvas->ViewScaleFactor();
    }
    // Draws a rectangle between two document points, pressing where they are shown.
    void DrawAt(QPoint from, QPoint to)
    {
        const double f = m_canvas->ViewScaleFactor();
        Draw(Mode::Rectangle, (QPointF(from) * f).toPoint(), (QPointF(to) * f).toPoint());
    }

private slots:
    void initTestCase() { QVERIFY(WhitePicture(320, 200).save(Path("pic.png"))); }
    void cleanup() { CloseCanvas(); }

    void rectangleAndCircleByDrag()
    {
        for (const Mode mode : {Mode::Rectangle, Mode::Circle}) {
            NewCanvas();
            Draw(mode, {50, 40}, {120, 90});
            QCOMPARE(int(Doc().Shape(0).GetShapeType()),
                     int(mode == Mode::Circle ? Circle : Rectangle));
            QCOMPARE(Doc().Shape(0).Points(), Corners(50, 40, 120, 90));
        }
    }

    void polygonClosesWithinTolerance()
    {
        // A click 4 pixels from the first vertex closes it, 5 do not: the limits on either
        // axis are the shape's own test.
        for (const auto& [last, closed] : {std::pair(QPoint(14, 6), true), {{15, 10}, false}}) {
            const TableCase row(last);
            NewCanvas();
            Draw(Mode::Rectangle, {200, 200}, {250, 250});
            StartPolygon({{10, 10}, {100, 10}, {100, 100}, last});
            QCOMPARE(int(Doc().Shape(1).Points().size()), closed ? 3 : 4);
            QCOMPARE(m_canvas->PointerConfined(), !closed);
            Consistent();
        }
    }

    void pickTakesTopmostShapeOverLowerVertex()
    {
        NewCanvas();
        Draw(Mode::Rectangle, {10, 10}, {100, 100});
        Draw(Mode::Rectangle, {150, 150}, {50, 50});
        // The pointer shows what a press would do.
        const auto over = [this](QPoint at) {
            QTest::mouseMove(Surface(), at);
            return Surface()->cursor().shape();
        };
        QCOMPARE(over({120, 120}), Qt::SizeAllCursor);
        QCOMPARE(over({150, 150}), Qt::PointingHandCursor);
        QCOMPARE(over({300, 250}), Qt::ArrowCursor);
        m_host->mode = Mode::Polygon;
        QCOMPARE(over({310, 250}), Qt::CrossCursor);
        // Space held pans: its hand stays.
        QTest::keyPress(Surface(), Qt::Key_Space);
        QCOMPARE(over({120, 120}), Qt::OpenHandCursor);
        QTest::keyRelease(Surface(), Qt::Key_Space);
        m_host->mode = Mode::Pointer;
        // Vertex 2 of shape 0 lies inside shape 1, which is on top: the body wins.
        for (const std::int16_t top : {1, 0}) {
            m_canvas->ReStackArrayFromOptions(top);
            QTest::mousePress(Surface(), Qt::LeftButton, {}, {100, 100});
            QCOMPARE(Doc().CurrentShape, top);
            QCOMPARE(Doc().HitState, std::int16_t(top == 1 ? -1 : 2));
            QTest::mouseRelease(Surface(), Qt::LeftButton, {}, {100, 100});
        }
    }

    void doubleClickOpensTheTabOfWhatWasPressed()
    {
        NewCanvas();
        // A user's double click is a click, then the double-click event.
        const auto doubleClick = [this](QPoint at) {
            Click(at);
            QTest::mouseDClick(Surface(), Qt::LeftButton, {}, at);
            return m_host->propertiesTab;
        };
        QCOMPARE(doubleClick({300, 250}), 2); // no shapes: the default area's tab
        for (int i = 0; i < 3; ++i)
            Draw(Mode::Rectangle, QPoint(10 + 60 * i, 10), QPoint(50 + 60 * i, 50));
        QCOMPARE(doubleClick({300, 250}), 5); // empty surface: the default area's tab
        QCOMPARE(doubleClick({90, 30}), 3);   // shape 1's tab
        m_canvas->ShapeProperties(-1);
        QCOMPARE(m_host->propertiesTab, 1);
        // With 32,767 shapes the default area's tab lies past a shape index's range.
        Doc().ReSetShapeArray(
            std::vector<PatShape>(32767, MakeShape(Rectangle, Corners(1, 1, 5, 5), nullptr, 1.0)),
            32766);
        QCOMPARE(doubleClick({300, 250}), 32769);
    }

    void bodyDrag()
    {
        // Snapped: grabbed 17 and 13 pixels inside, one whole step each, and (71, 69) snaps
        // to (80, 60). A drawing mode grabs a shape too; the right button moves nothing.
        const std::tuple<Mode, Qt::MouseButton, bool, QPoint, QPoint> cases[] = {
            {Mode::Pointer, Qt::LeftButton, false, {40, 45}, {23, 32}},
            {Mode::Pointer, Qt::LeftButton, true, {71, 69}, {60, 40}},
            {Mode::Rectangle, Qt::LeftButton, false, {40, 45}, {23, 32}},
            {Mode::Pointer, Qt::RightButton, false, {40, 45}, {13, 17}}};
        for (const auto& [mode, button, snap, to, corner] : cases) {
            const TableCase row(int(mode), button, snap, to);
            NewCanvas();
            Draw(Mode::Rectangle, {13, 17}, {53, 57});
            Doc().GridSnap = snap;
            m_host->mode = mode;
            Drag({30, 30}, to, button);
            QCOMPARE(Doc().ItemCount(), std::int16_t(0));
            QCOMPARE(Doc().Shape(0).Points(),
                     Corners(corner.x(), corner.y(), corner.x() + 40, corner.y() + 40));
        }
    }

    void vertexDragNudgeAndDelete()
    {
        NewCanvas();
        Draw(Mode::Rectangle, {10, 10}, {50, 40});
        Drag({12, 9}, {20, 5}); // the top-left corner
        QCOMPARE(Doc().Shape(0).Points(), Corners(20, 5, 50, 40));
        Click({30, 25}); // the body
        for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Down, Qt::Key_Left})
            Key(key);
        Key(Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(Doc().Shape(0).Points(), Corners(20, 6, 50, 41));
        Click({50, 41}); // vertex 2
        Key(Qt::Key_Right);
        Key(Qt::Key_A);
        QCOMPARE(Doc().Shape(0).Points(), Corners(20, 6, 51, 41));
        // Delete takes the shape; with none left it says nothing.
        Key(Qt::Key_Delete);
        Key(Qt::Key_Delete);
        QCOMPARE(Doc().ItemCount(), std::int16_t(-1));
        QVERIFY(m_host->ui.messages.isEmpty());
    }

    void paintingShowsTopShapeOverPicture()
    {
        NewCanvas(200, 150);
        Draw(Mode::Rectangle, {10, 10}, {100, 80});
        Draw(Mode::Rectangle, {150, 120}, {50, 50});
        const QImage shot = Surface()->grab().toImage();
        const QColor focus = ShapePainter::ToQColor(Doc().FocusColor);
        QCOMPARE(QColor(shot.pixel(30, 10)), ShapePainter::ToQColor(Doc().NonFocusColor));
        QCOMPARE(QColor(shot.pixel(100, 50)), focus); // where the outlines cross
        QCOMPARE(QColor(shot.pixel(49, 51)), focus);  // inside the top shape's corner handle
        QCOMPARE(QColor(shot.pixel(180, 140)), QColor(Qt::white));
    }

    void zoomRescalesPointsKeepsHtmlAndViewScale()
    {
        NewCanvas(400, 300);
        Draw(Mode::Rectangle, {11, 21}, {101, 151});
        Draw(Mode::Circle, {200, 100}, {260, 140});
        const QString html0 = Doc().Shape(0).GenerateHTML();
        const QString html1 = Doc().Shape(1).GenerateHTML();
        m_canvas->SetZoomLevel(2.0);
        QCOMPARE(Surface()->size(), QSize(800, 600));
        QCOMPARE(Doc().Shape(0).Points(), Corners(22, 42, 202, 302));
        QCOMPARE(Doc().Shape(0).GenerateHTML(), html0);
        m_canvas->SetZoomLevel(0.5);
        QCOMPARE(Surface()->size(), QSize(200, 150));
        m_canvas->SetZoomLevel(1.0);
        QCOMPARE(Doc().Shape(1).GenerateHTML(), html1);
        // The map's zoom leaves the view scale, and multiplies with it.
        m_canvas->SetViewScale(2.0);
        m_canvas->SetZoomLevel(1.5);
        QCOMPARE(m_canvas->ViewScaleFactor(), 2.0);
        QCOMPARE(Surface()->size(), QSize(1200, 900));
        QCOMPARE(m_canvas->HoldImageBuffer().size(), QSize(600, 450));
        m_canvas->ActualSize();
        QCOMPARE(Surface()->size(), QSize(600, 450));
    }

    void scrollBarRangesAndSteps()
    {
        // Maximum, large and small change for a picture this much larger than the viewport.
        const std::pair<int, QList<int>> cases[] = {
            {1000, {1000, 41, 6}}, {1, {1, 1, 1}}, {0, {}}}; // hidden when it just fits
        for (const auto& [extra, steps] : cases) {
            const TableCase row(extra);
            NewCanvas(100, 100);
            const QSize viewport = Child("HoldPicbox")->size() + QSize(extra, extra);
            m_canvas->SetNewPicture(WhitePicture(viewport.width(), viewport.height()),
                                    QStringLiteral("/maps/big.png"));
            for (const char* name : {"HScroll1", "VScroll1"}) {
                const auto* bar = Bar(name);
                QCOMPARE(bar->isVisible(), !steps.isEmpty());
                if (bar->isVisible())
                    QCOMPARE((QList<int>{bar->maximum(), bar->pageStep(), bar->singleStep()}),
                             steps);
            }
        }
    }

    void scrollingAndResizeLayout()
    {
        ShapeCanvas& c = NewCanvas(2000, 1500);
        auto* h = Bar("HScroll1");
        auto* v = Bar("VScroll1");
        h->setValue(h->maximum());
        v->setValue(120);
        QCOMPARE(Surface()->pos(), QPoint(-h->maximum(), -120));
        // Zoomed out so far that the old position lies past the new range: the surface
        // follows the bar to the end instead of leaving an empty strip.
        c.SetZoomLevel(0.5);
        QCOMPARE(Surface()->pos(), QPoint(-h->maximum(), -120));
        QCOMPARE(Surface()->geometry().right() + 1, Child("HoldPicbox")->width());
        // Every resize scrolls back to the top-left corner and lays the children out.
        const auto* corner = Child("BntScrollEnd");
        c.resize(500, 400);
        QCOMPARE(Surface()->pos(), QPoint(0, 0));
        QCOMPARE(Child("HoldPicbox")->size(), QSize(500 - v->width() - 16, 400 - h->height() - 16));
        QCOMPARE(v->geometry(), QRect(500 - v->width(), 0, v->width(), 400 - corner->height()));
        QCOMPARE(h->geometry(), QRect(0, 400 - h->height(), 500 - corner->width(), h->height()));
        QCOMPARE(corner->pos(), QPoint(500 - corner->width(), 400 - corner->height()));
        QCOMPARE(Child("HoldImage")->y(), 500);
        // Below 50 pixels high nothing moves vertically; the width still counts.
        c.resize(300, 40);
        QCOMPARE(Child("HoldPicbox")->size(), QSize(300 - v->width() - 16, 400 - h->height() - 16));
        QCOMPARE(corner->pos(), QPoint(300 - corner->width(), 400 - corner->height()));
    }

    void statusTextInPicturePixels()
    {
        NewCanvas(400, 300);
        m_canvas->SetZoomLevel(2.0);
        QTest::mouseMove(Surface(), {101, 40});
        QCOMPARE(m_host->statusText, QStringLiteral("X:50 Y:20"));
        // The surface goes on beyond the viewport: the visible area's right edge still
        // counts, hidden parts show nothing.
        const int edge = m_canvas->VisibleArea().right - Surface()->mapToGlobal(QPoint()).x();
        QTest::mouseMove(Surface(), QPoint(edge, 60));
        QCOMPARE(m_host->statusText, QStringLiteral("X:%1 Y:30").arg(std::lrint(edge / 2.0)));
        QTest::mouseMove(Surface(), QPoint(edge + 1, 60));
        QCOMPARE(m_host->statusText, QString());
        QTest::mouseMove(Surface(), {101, 40});
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(Surface(), &leave);
        QCOMPARE(m_host->statusText, QString());
        // Over a window that is not the active map, nothing is shown.
        m_host->active = nullptr;
        QTest::mouseMove(Surface(), {120, 60});
        QCOMPARE(m_host->statusText, QString());
    }

    void confinementRectangle()
    {
        ShapeCanvas& c = NewCanvas(200, 150);
        const QPoint origin = Surface()->mapToGlobal(QPoint());
        // A picture smaller than the viewport: confined to the picture itself.
        QCOMPARE(c.VisibleArea(),
                 (ShapeRect{origin.x(), origin.y(), origin.x() + 200, origin.y() + 150}));
        // A larger one: the viewport less 4 pixels on the right and at the bottom.
        c.SetNewPicture(WhitePicture(2000, 1500), QStringLiteral("/maps/big.png"));
        const QRect v(Child("HoldPicbox")->mapToGlobal(QPoint()), Child("HoldPicbox")->size());
        QCOMPARE(c.VisibleArea(), (ShapeRect{v.left(), v.top(), v.right() - 3, v.bottom() - 3}));
        QTest::mousePress(Surface(), Qt::LeftButton, {}, {30, 30});
        QVERIFY(c.PointerConfined());
        QTest::mouseRelease(Surface(), Qt::LeftButton, {}, {30, 30});
        QVERIFY(!c.PointerConfined());
        // While a polygon is drawn a move past the visible area lands on its edge.
        m_host->mode = Mode::Polygon;
        Click({30, 30});
        Click({80, 30});
        const QPoint edge(c.VisibleArea().right - origin.x(), c.VisibleArea().bottom - origin.y());
        QTest::mouseMove(Surface(), edge + QPoint(2, 3));
        QCOMPARE(QPoint(Doc().Shape(0).LastLineX(), Doc().Shape(0).LastLineY()), edge);
    }

    void gridLinesInBuffer()
    {
        NewCanvas(100, 60);
        Doc().ShouldDrawGrid = true;
        m_canvas->DrawGrid();
        const QImage shown = Surface()->grab().toImage();
        for (int x = 0; x < 100; ++x)
            QCOMPARE(shown.pixel(x, 7) == qRgb(0, 0, 0), x % 20 == 0);
        Doc().ShouldDrawGrid = false;
        m_canvas->DrawGrid();
        QCOMPARE(Surface()->grab().toImage().pixel(20, 7), qRgb(255, 255, 255));
    }

    void faultsBecomeMessages()
    {
        NewCanvas();
        Draw(Mode::Rectangle, {10, 10}, {50, 40});
        // A pitch so fine that the press lies beyond 32767 grid steps cannot be snapped;
        // the pointer is released before the message.
        Doc().GridSnap = true;
        Doc().GridSpacing = 0.001;
        m_host->mode = Mode::Rectangle;
        Click({200, 200});
        QCOMPARE(m_host->ui.messageTexts(), QStringList{QStringLiteral("Overflow")});
        QCOMPARE(m_host->ui.messages.front().icon, ModalUi::Icon::Critical);
        QCOMPARE(Doc().ItemCount(), std::int16_t(0));
        QVERIFY(!m_canvas->PointerConfined());
        Consistent();
        // A zoom past the 32-bit range, of a point or of the surface itself, changes nothing.
        Doc().GridSnap = false;
        m_canvas->SetZoomLevel(1e9);
        QCOMPARE(Doc().Shape(0).Points().front(), (ShapePoint{10, 10}));
        Key(Qt::Key_Delete);
        m_canvas->SetZoomLevel(1e9);
        QCOMPARE(m_host->ui.messageTexts(), QStringList(3, QStringLiteral("Overflow")));
        QCOMPARE(Doc().ZoomLevel, 1.0);
        QCOMPARE(Surface()->size(), QSize(400, 300));
    }

    void escapeOrBackspacingAwayAbandonsThePolygonAndKeepsTheRest()
    {
        for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Backspace}) {
            NewCanvas();
            Draw(Mode::Rectangle, {200, 200}, {250, 250});
            StartPolygon({{10, 10}, {100, 10}});
            // Backspace takes the vertices one by one; a second Escape has nothing to do.
            Key(key);
            Key(key);
            QCOMPARE(Doc().ItemCount(), std::int16_t(0));
            QCOMPARE(Doc().Shape(0).GetShapeType(), std::int16_t(Rectangle));
            QVERIFY(!Doc().PolygonInProgress);
            QVERIFY(!m_canvas->PointerConfined());
            Consistent();
            // The next press starts afresh instead of adding to the abandoned polygon.
            StartPolygon({{300, 20}});
            QCOMPARE(Doc().Shape(1).Points().size(), std::size_t(1));
        }
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
        QCOMPARE(Doc().Shape(0).Points(), Triangle());
        Consistent();
    }

    // Enter, or a command, closes a polygon of three vertices; a command abandons a
    // shorter one, as Escape does.
    void enterAndCommandsSettleThePolygon()
    {
        PatShape copied;
        for (const bool enter : {true, false}) {
            NewCanvas();
            Draw(Mode::Rectangle, {200, 200}, {250, 250});
            QVERIFY(m_canvas->SetShapeEqualToTopShape(copied));
            StartPolygon({{10, 10}, {100, 10}});
            Key(Qt::Key_Return); // too few vertices
            QVERIFY(Doc().PolygonInProgress);
            StartPolygon({{100, 100}});
            if (enter)
                Key(Qt::Key_Enter);
            else
                m_canvas->SetNewShape(copied); // and the paste lands on top
            QVERIFY(!Doc().PolygonInProgress);
            QVERIFY(!m_canvas->PointerConfined());
            QCOMPARE(Doc().Shape(1).Points(), Triangle());
            QCOMPARE(Doc().ItemCount(), std::int16_t(enter ? 1 : 2));
            QCOMPARE(Doc().ShapeOrder().front(), Doc().ItemCount());
            Consistent();
        }
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
        QCOMPARE(Doc().Shape(1).Points(), (std::vector<ShapePoint>{{300, 200}}));
    }

    void tabStepsThroughCoveredShapes()
    {
        NewCanvas();
        Draw(Mode::Rectangle, {50, 50}, {80, 80});   // 0: lies wholly under shape 1
        Draw(Mode::Rectangle, {10, 10}, {200, 200}); // 1
        Draw(Mode::Rectangle, {250, 20}, {300, 60}); // 2
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
        Draw(Mode::Rectangle, {300, 200}, {350, 250});
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
        Consistent(); // the rectangle still has its four corners
    }

    // Looking closer or farther: the wheel, the pointer-anchored zoom, panning, and editing
    // that stores the same coordinates at any view scale.
    void viewScaleStepsLimitsAndMapping()
    {
        QCOMPARE(ViewScale::StepOut(1.0), 2.0 / 3.0);
        // Off-step factors (after a fit) go to the neighbouring step.
        QCOMPARE(ViewScale::StepIn(0.3), 1.0 / 3.0);
        QCOMPARE(ViewScale::StepOut(0.3), 0.25);
        QCOMPARE(ViewScale::StepIn(ViewScale::Maximum), ViewScale::Maximum);
        QCOMPARE(ViewScale::StepOut(ViewScale::Minimum), ViewScale::Minimum);
        QCOMPARE(ViewScale::Fit(QSizeF(2400, 1600), QSizeF(600, 600)), 0.25);
        QCOMPARE(ViewScale::Fit(QSizeF(100000, 10), QSizeF(600, 600)), ViewScale::Minimum);
        QCOMPARE(ViewScale::Fit(QSizeF(10, 10), QSizeF(600, 600)), ViewScale::Maximum);
        ViewScale view;
        QVERIFY(!view.SetFactor(1.0));
        QVERIFY(view.SetFactor(20.0));
        QCOMPARE(view.Factor(), ViewScale::Maximum);
        QVERIFY(!view.SetFactor(qQNaN()));
        // The mapping covers what is drawn.
        view.SetFactor(1.0);
        QCOMPARE(view.ToScreen(QRect(3, 4, 5, 6)), QRect(3, 4, 5, 6));
        QCOMPARE(view.ToDocument(QRegion(3, 4, 5, 6)), QRegion(3, 4, 5, 6));
        for (const double f : {0.37, 4.0}) {
            view.SetFactor(f);
            const QRect document(10, 20, 30, 40);
            const QRect screen = view.ToScreen(document);
            // Every screen pixel of the rectangle and of a handle around its corners.
            QVERIFY(
                screen.contains(QRectF(QPointF(document.topLeft()) * f, QSizeF(document.size()) * f)
                                    .toAlignedRect()
                                    .adjusted(-5, -5, 5, 5)));
            // Painting a screen area takes in every document pixel shown there.
            QVERIFY(view.ToDocument(QRegion(screen)).boundingRect().contains(document));
        }
    }

    void wheelScrollsShiftWheelScrollsSidewaysAndSpaceDragPans()
    {
        NewCanvas(1200, 900);
        QVERIFY(Bar("VScroll1")->isVisible() && Bar("HScroll1")->isVisible());
        Wheel({100, 100}, {0, -120});
        QCOMPARE(Bar("VScroll1")->value(), 60);
        Wheel({100, 100}, {0, -120}, Qt::ShiftModifier);
        QCOMPARE(Bar("HScroll1")->value(), 60);
        QCOMPARE(m_canvas->ViewScaleFactor(), 1.0);
        // Scrolling past the start stops there.
        Wheel({100, 100}, {0, 600});
        QCOMPARE(Bar("VScroll1")->value(), 0);
        QCOMPARE(Doc().ZoomLevel, 1.0);
        Wheel({100, 100}, {0, 60});
        // A drag with Space held pans, and makes or grabs no shape.
        QTest::keyPress(Surface(), Qt::Key_Space);
        Drag({300, 300}, {250, 220});
        QTest::keyRelease(Surface(), Qt::Key_Space);
        QCOMPARE(Bar("HScroll1")->value(), 60 + 50);
        QCOMPARE(Bar("VScroll1")->value(), 80);
        QCOMPARE(Doc().ItemCount(), std::int16_t(-1));
        QVERIFY(!m_canvas->PointerConfined());
        // The page keys scroll by most of the window, with Shift sideways; Home and End go
        // to the ends.
        const int page = Viewport()->height() * 9 / 10;
        Key(Qt::Key_PageDown);
        QCOMPARE(Bar("VScroll1")->value(), qMin(80 + page, Bar("VScroll1")->maximum()));
        Key(Qt::Key_End, Qt::ShiftModifier);
        QCOMPARE(Bar("HScroll1")->value(), Bar("HScroll1")->maximum());
        Key(Qt::Key_PageUp, Qt::ShiftModifier);
        QCOMPARE(Bar("HScroll1")->value(),
                 Bar("HScroll1")->maximum() - Viewport()->width() * 9 / 10);
        Key(Qt::Key_Home);
        QCOMPARE(Bar("VScroll1")->value(), 0);
        QCOMPARE(Doc().ItemCount(), std::int16_t(-1));
        // A shape pasted into the top-left corner scrolls into sight.
        Key(Qt::Key_End);
        m_canvas->SetNewShape(MakeShape(Rectangle, Corners(0, 0, 40, 30), nullptr, 1.0));
        QCOMPARE(Bar("VScroll1")->value(), 0);
        QCOMPARE(Bar("HScroll1")->value(), 0);

        // The picture moves or grows under a still pointer: a polygon's rubber band goes on
        // ending under it.
        m_host->mode = Mode::Polygon;
        Click({100, 100});
        QTest::mouseMove(Surface(), {200, 150});
        const auto polygon = [this]() -> const PatShape& { return Doc().Shape(1); };
        const QPointF pointer = Surface()->mapTo(Viewport(), QPointF(200, 150));
        const auto bandEndsAtPointer = [&] {
            const QPointF at = DocumentAt(pointer);
            return QLineF(at, QPointF(polygon().LastLineX(), polygon().LastLineY())).length() < 1.0;
        };
        Wheel({200, 150}, {0, -120});
        QCOMPARE(polygon().LastLineY(), 150 + 60);
        Key(Qt::Key_PageDown);
        QVERIFY(bandEndsAtPointer());
        m_canvas->SetZoomLevel(0.5); // the picture about fits now: back to its top
        QVERIFY(bandEndsAtPointer());
        m_canvas->SetViewScale(2.0);
        QVERIFY(bandEndsAtPointer());
        m_canvas->resize(600, 450); // back to the picture's top-left corner
        QVERIFY(bandEndsAtPointer());
        QVERIFY(Doc().PolygonInProgress);
    }

    void controlWheelZoomsAboutThePointer()
    {
        NewCanvas(800, 600);
        Wheel({0, 0}, {0, -120});
        const QPoint pointer(210, 130);
        const QPointF viewport = Surface()->mapTo(Viewport(), QPointF(pointer));
        const QPointF before = DocumentAt(viewport);
        Wheel(pointer, {0, 120}, Qt::ControlModifier);
        QCOMPARE(m_canvas->ViewScaleFactor(), 1.5);
        QVERIFY(QLineF(DocumentAt(viewport), before).length() < 1.0);
        Wheel(Surface()->mapFrom(Viewport(), viewport.toPoint()), {0, 120}, Qt::ControlModifier);
        QCOMPARE(m_canvas->ViewScaleFactor(), 2.0);
        QVERIFY(QLineF(DocumentAt(viewport), before).length() < 1.0);
        // The map itself is untouched.
        QCOMPARE(Doc().ZoomLevel, 1.0);
        QCOMPARE(Doc().SWidth, 800);
        // At the limits more wheel does nothing more.
        for (int i = 0; i < 20; ++i)
            Wheel({10, 10}, {0, -120}, Qt::ControlModifier);
        QCOMPARE(m_canvas->ViewScaleFactor(), ViewScale::Minimum);
        QCOMPARE(Surface()->size(), QSize(40, 30));
    }

    void editingStoresTheSameCoordinatesAtAnyScale()
    {
        // Picture points that a screen pixel shows exactly at 37 % too (100 -> 37,
        // 127 -> 47, ...), so that the three runs press the same points.
        const std::vector<ShapePoint> moved{{127, 100}, {235, 100}, {235, 181}, {127, 181}};
        for (const double f : {1.0, 0.37, 4.0}) {
            NewCanvas();
            m_canvas->SetViewScale(f);
            QCOMPARE(m_canvas->ViewScaleFactor(), f);
            // Bring the work into sight: the pointer is kept inside the visible area.
            m_canvas->EnsureVisible(QRect(QPoint(100, 100), QPoint(235, 181)));
            const auto at = [f](int x, int y) { return (QPointF(x, y) * f).toPoint(); };
            DrawAt({100, 100}, {181, 154});
            // Four screen pixels from a corner grab it at any scale; twelve never do.
            for (const auto& [offset, grabs] :
                 {std::pair{QPoint(-4, -4), true}, std::pair{QPoint(-12, -12), false}}) {
                QTest::mousePress(Surface(), Qt::LeftButton, {}, at(181, 154) + offset);
                QCOMPARE(Doc().HitState, grabs ? std::int16_t(2) : std::int16_t(-1));
                QTest::mouseRelease(Surface(), Qt::LeftButton, {}, at(181, 154) + offset);
            }
            // The body dragged by 27 picture pixels, then a corner by (27, 27).
            Drag(at(127, 127), at(154, 127));
            Drag(at(208, 154), at(235, 181));
            QCOMPARE(Doc().Shape(0).Points(), moved);
            // The status bar shows picture pixels whatever the scale.
            QTest::mouseMove(Surface(), at(127, 154));
            QCOMPARE(m_host->statusText, QStringLiteral("X:127 Y:154"));
        }
    }

    void fitShowsTheWholePicture()
    {
        NewCanvas(2400, 1600);
        m_canvas->FitToWindow();
        QVERIFY(m_canvas->ViewScaleFactor() < 0.3);
        QVERIFY(!Bar("HScroll1")->isVisible() && !Bar("VScroll1")->isVisible());
        QVERIFY(Viewport()->rect().contains(Surface()->geometry()));
        // Drawing in the fitted view lands on picture pixels.
        DrawAt({1000, 800}, {2000, 1200});
        const ShapeRect b = PatShape::BoundingRect(Doc().Shape(0).Points(), false);
        QVERIFY(std::abs(b.left - 1000) <= 2 && std::abs(b.right - 2000) <= 2);
    }

    void unreadablePictureIsRefused()
    {
        ShapeCanvas& c = Untitled();
        c.SetNewPicture(QImage(), QStringLiteral("/maps/broken.jpg"));
        CheckMessage(PictureLoader::CannotReadMessage(QStringLiteral("/maps/broken.jpg")));
        QCOMPARE(c.Surface().size(), QSize(300, 200));
    }

    void generateCode()
    {
        ShapeCanvas& c = Untitled();
        QCOMPARE(c.GenerateMapCode(true), QString());
        CheckMessage(QStringLiteral("No shape areas have been created."));
        Draw(Mode::Rectangle, {10, 20}, {60, 80});
        c.SetZoomLevel(2.0);
        // The code is at zoom 1 whatever the view's zoom; the test page's is returned.
        QCOMPARE(c.GenerateMapCode(true), QString());
        QCOMPARE(m_host->codeShown.size(), 1);
        QVERIFY(m_host->codeShown.front().contains(QStringLiteral("coords=\"10,20,60,80\"")));
        QVERIFY(c.GenerateMapCode(false).contains(QStringLiteral("coords=\"10,20,60,80\"")));
        QCOMPARE(m_host->codeShown.size(), 1);
        QCOMPARE(m_host->ui.messages.size(), 1);
    }

    void openMapFile()
    {
        ShapeCanvas& c = Untitled();
        QVERIFY(c.OpenMapFile(QStringLiteral(VANTREL_SOURCE_DIR "/examples/sample.imp")));
        QVERIFY(m_host->ui.messages.isEmpty());
        QCOMPARE(c.windowTitle(), QStringLiteral("sample.imp"));
        const MapDocument& d = c.Document();
        QCOMPARE(d.MapName, QStringLiteral("Harbour"));
        // The stored zoom is applied to the view.
        QCOMPARE(c.Surface().size(),
                 QSize(qRound(d.SWidth * d.ZoomLevel), qRound(d.SHeight * d.ZoomLevel)));
    }

    // The message stays exact; why, when known, comes as the box's informative text.
    void mapThatCannotLoadChangesNothing()
    {
        QVERIFY(WriteBytes(Path("huge.png"), HugePng()));
        MapDocument doc = Blank();
        doc.ImageName = QStringLiteral("huge.png");
        QVERIFY(MapFile::SaveMap(doc, Path("huge.imp")).ok);
        ShapeCanvas& c = Untitled();
        Draw(Mode::Rectangle, {10, 10}, {40, 40});
        for (const QString& path : {QStringLiteral("/nonexistent/none.imp"), Path("huge.imp")}) {
            QVERIFY(!c.OpenMapFile(path));
            QCOMPARE(c.Document().ItemCount(), std::int16_t(0));
            QCOMPARE(c.windowTitle(), QStringLiteral("Untitled"));
        }
        QCOMPARE(m_host->ui.messageTexts(),
                 QStringList(2, QStringLiteral("Error, map cannot be loaded.")));
        QCOMPARE(m_host->ui.messages.front().icon, ModalUi::Icon::Critical);
        QVERIFY2(m_host->ui.messages.back().detail.startsWith(
                     QStringLiteral("The picture \"%1\" cannot be loaded. ").arg(Path("huge.png")) +
                     QString::fromUtf8("The picture is 30,000 \xc3\x97 30,000 pixels;")),
                 qPrintable(m_host->ui.messages.back().detail));
        // A picture that is gone: both messages, and the file that was looked for.
        m_host->ui.messages.clear();
        doc.ImageName = QStringLiteral("gone.png");
        QVERIFY(MapFile::SaveMap(doc, Path("gone.imp")).ok);
        QVERIFY(!c.OpenMapFile(Path("gone.imp")));
        QCOMPARE(m_host->ui.messageTexts(),
                 QStringList({"Image for map not found.", "Error, map cannot be loaded."}));
        QCOMPARE(m_host->ui.messages.back().detail,
                 MapFile::PictureMissingDetail(doc.ImagePath + "gone.png") +
                     QStringLiteral("\n\nThe map file is \"%1\".").arg(Path("gone.imp")));
    }

    void saveAsksForNameOnce()
    {
        ShapeCanvas& c = Untitled();
        c.SaveMap(); // cancelled
        QCOMPARE(c.FileName(), QString());
        // A name without the extension gets ".imp"; the second save asks nothing.
        m_host->ui.mapNamesToSave.enqueue(Path("garden"));
        c.SaveMap();
        const QString saved = Path("garden.imp");
        QCOMPARE(c.windowTitle(), QStringLiteral("garden.imp"));
        QVERIFY(QFile::remove(saved));
        c.SaveMap();
        QVERIFY(QFile::exists(saved));
        // Save As asks again; a name holding ".IMP" anywhere is kept as it is.
        m_host->ui.mapNamesToSave.enqueue(Path("copy.IMP.txt"));
        c.SaveMapAs();
        QCOMPARE(c.FileName(), Path("copy.IMP.txt"));
        QVERIFY(m_host->ui.messages.isEmpty());
    }

    void saveFailureKeepsCaption()
    {
        ShapeCanvas& c = Untitled();
        m_host->ui.mapNamesToSave.enqueue(QStringLiteral("/nonexistent/folder/map.imp"));
        c.SaveMap();
        CheckMessage(QStringLiteral("There was an error while trying to save the file."));
        // Why, in the system's words, beside the message.
        QCOMPARE(m_host->ui.messages.front().detail, QStringLiteral("No such file or directory"));
        QCOMPARE(c.windowTitle(), QStringLiteral("Untitled"));
        QCOMPARE(c.FileName(), QString());
    }
    // A grid pitch no dialog can set used to loop for ever before the window painted.
    void finestGridOpens()
    {
        MapDocument doc = Blank();
        doc.GridSpacing = 1e-300;
        doc.ShouldDrawGrid = true;
        QVERIFY(Open(doc, "fine.imp"));
        QCOMPARE(m_host->ui.messageTexts(), QStringList());
        QCOMPARE(Doc().GridSpacing, 1e-300);
        // Too fine to see: the picture shows as it is.
        QCOMPARE(Surface()->grab().toImage().pixel(1, 1), qRgb(255, 255, 255));
    }

    // The 16-bit indices allow shapes 0 to 32767, and as many vertices in one: such a map
    // opens, zooms and edits.
    void fullestMapOpensAndEdits()
    {
        MapDocument doc = Blank();
        std::vector<PatShape> shapes;
        std::vector<std::int16_t> order;
        for (int i = 0; i < 32767; ++i) {
            const int x = i % 300;
            const int y = (i / 300) % 180;
            shapes.push_back(MakeShape(Rectangle, Corners(x, y, x + 10, y + 10)));
            order.push_back(std::int16_t(32767 - i));
        }
        // On top, an ellipse of 32768 vertices.
        std::vector<ShapePoint> points;
        for (int i = 0; i < 32768; ++i) {
            const double angle = 2 * M_PI * i / 32768;
            points.push_back({160 + int(std::lround(80 * std::cos(angle))),
                              100 + int(std::lround(60 * std::sin(angle)))});
        }
        shapes.push_back(MakeShape(Polygon, points));
        order.push_back(0);
        doc.AdoptShapes(std::move(shapes), std::move(order));
        QVERIFY(Open(doc, "full.imp"));
        m_canvas->SetZoomLevel(2.0);
        QCOMPARE(Doc().Shape(32766).Points().back(), (ShapePoint{132, 238}));
        m_canvas->SetZoomLevel(1.0);
        // A drag on the polygon's body moves every vertex.
        Drag({160, 100}, {170, 105});
        QCOMPARE(Doc().Shape(32767).Points().front(), (ShapePoint{250, 105}));
        QCOMPARE(Doc().Shape(32767).Points().back(),
                 (ShapePoint{points.back().x + 10, points.back().y + 5}));
        Click({5, 5});
        QTest::keyClick(Surface(), Qt::Key_Delete);
        QCOMPARE(Doc().ItemCount(), std::int16_t(32766));
        QCOMPARE(m_host->ui.messageTexts(), QStringList());
        Consistent();
    }

    // A copy made to try a variant must never write over its original.
    void saveWritesTheFileThatWasOpened()
    {
        MapDocument doc = Blank();
        doc.AdoptShapes({MakeShape(Rectangle, Corners(10, 10, 50, 40)),
                         MakeShape(Circle, Corners(60, 60, 90, 90))},
                        {1, 0});
        QVERIFY(MapFile::SaveMap(doc, Path("A.imp")).ok);
        const QByteArray original = ReadBytes(Path("A.imp"));
        QVERIFY(QFile::copy(Path("A.imp"), Path("B.imp")));
        QVERIFY(Open(Path("B.imp")));
        m_canvas->DeleteShape();
        m_canvas->SaveMap();
        QCOMPARE(ReadBytes(Path("A.imp")), original);
        const MapFile::ReadResult saved = MapFile::OpenMapFile(Path("B.imp"));
        QCOMPARE(saved.document.ItemCount(), std::int16_t(0));
        // Line 2 records where the map now lives.
        QVERIFY(ReadBytes(Path("B.imp")).startsWith("1.0.0\r\n" + Path("B.imp").toUtf8() + "\r\n"));
    }
};

QTEST_MAIN(TestShapeCanvas)
#include "tst_shapecanvas.moc"
