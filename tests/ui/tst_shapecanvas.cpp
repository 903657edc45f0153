#include "FakeCanvasHost.h"
#include "canvas/CanvasSurface.h"
#include "canvas/OpenMapCount.h"
#include "canvas/ShapeCanvas.h"
#include "shape/PatShape.h"
#include "shape/ShapePainter.h"

#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <cmath>
#include <memory>

namespace {

QImage WhitePicture(int width, int height)
{
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(Qt::white);
    return picture;
}

std::vector<ShapePoint> Pts(std::initializer_list<ShapePoint> points)
{
    return points;
}

} // namespace

class TestShapeCanvas : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<FakeCanvasHost> m_host;
    std::unique_ptr<ShapeCanvas> m_canvas;

    ShapeCanvas& NewCanvas(int pictureWidth = 400, int pictureHeight = 300, int width = 640,
                           int height = 480)
    {
        m_canvas.reset();
        m_host = std::make_unique<FakeCanvasHost>();
        m_canvas = std::make_unique<ShapeCanvas>(*m_host);
        m_host->active = m_canvas.get();
        m_canvas->resize(width, height);
        m_canvas->show();
        m_canvas->SetNewPicture(WhitePicture(pictureWidth, pictureHeight),
                                QStringLiteral("/maps/pic.png"));
        QCoreApplication::processEvents();
        return *m_canvas;
    }
    QWidget* Surface() { return &m_canvas->Surface(); }
    MapDocument& Doc() { return m_canvas->Document(); }
    void Drag(QPoint from, QPoint to, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(Surface(), button, {}, from);
        QTest::mouseMove(Surface(), to);
        QTest::mouseRelease(Surface(), button, {}, to);
    }
    void Click(QPoint at) { QTest::mouseClick(Surface(), Qt::LeftButton, {}, at); }
    void Draw(CanvasHost::DrawingMode mode, QPoint from, QPoint to)
    {
        m_host->mode = mode;
        Drag(from, to);
        m_host->mode = CanvasHost::DrawingMode::Pointer;
    }
    void CheckConsistent()
    {
        const MapDocument& d = Doc();
        QCOMPARE(int(d.ShapeOrder().size()), d.ItemCount() + 1);
        std::vector<bool> seen(d.ShapeOrder().size(), false);
        for (std::int16_t entry : d.ShapeOrder()) {
            QVERIFY(entry >= 0 && entry <= d.ItemCount());
            QVERIFY(!seen[static_cast<std::size_t>(entry)]);
            seen[static_cast<std::size_t>(entry)] = true;
        }
        if (d.ItemCount() >= 0 && !d.PolygonInProgress) {
            for (std::int16_t i = 0; i <= d.ItemCount(); ++i)
                QCOMPARE(d.Shape(i).ShapeColor,
                         i == d.ShapeOrder().front() ? d.FocusColor : d.NonFocusColor);
        }
    }

private slots:
    void cleanup()
    {
        m_canvas.reset();
        m_host.reset();
        QCOMPARE(OpenMapCount, std::int16_t(0));
    }

    void childWidgetsCarryTheirNames();
    void rectangleAndCircleByDrag_data();
    void rectangleAndCircleByDrag();
    void polygonClosesWithinTolerance_data();
    void polygonClosesWithinTolerance();
    void polygonRubberBandFollowsPointer();
    void pickTakesTopmostShapeOverLowerVertex();
    void pressInRectangleModeOnShapeGrabsIt();
    void bodyDragWithoutSnapping();
    void bodyDragWithSnappingKeepsShapeOnGrid();
    void rightButtonDragMovesNothing();
    void vertexDragOfRectangleCorner();
    void arrowKeysNudgeBodyAndVertex();
    void deleteRemovesTopShape();
    void keysIgnoredWhilePolygonInProgress();
    void doubleClickOpensTab_data();
    void doubleClickOpensTab();
    void zoomRescalesPointsAndKeepsHtml();
    void scrollBarRangesAndSteps_data();
    void scrollBarRangesAndSteps();
    void scrollingMovesSurface();
    void resizeLayout();
    void statusTextInPicturePixels();
    void confinementRectangle();
    void gridLinesInBuffer();
    void gridSnappingOfPresses();
    void openMapCountAndCommands();
    void closingQuestion();
    void faultsBecomeMessages();
    void paintingShowsShapesOverPicture();
};

void TestShapeCanvas::childWidgetsCarryTheirNames()
{
    ShapeCanvas& c = NewCanvas();
    for (const char* name :
         {"HoldPicbox", "TheCanvas", "HoldImage", "HScroll1", "VScroll1", "BntScrollEnd"})
        QVERIFY2(c.findChild<QWidget*>(QLatin1String(name)) != nullptr, name);
    QCOMPARE(c.findChild<QWidget*>(QStringLiteral("TheCanvas"))->parentWidget()->objectName(),
             QStringLiteral("HoldPicbox"));
    QVERIFY(!c.findChild<QWidget*>(QStringLiteral("HoldImage"))->isVisible());
}

void TestShapeCanvas::rectangleAndCircleByDrag_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("type");
    QTest::newRow("rectangle") << int(CanvasHost::DrawingMode::Rectangle) << int(Rectangle);
    QTest::newRow("circle") << int(CanvasHost::DrawingMode::Circle) << int(Circle);
}

void TestShapeCanvas::rectangleAndCircleByDrag()
{
    QFETCH(int, mode);
    QFETCH(int, type);
    NewCanvas();
    Draw(CanvasHost::DrawingMode(mode), {50, 40}, {120, 90});
    QCOMPARE(Doc().ItemCount(), std::int16_t(0));
    const PatShape& s = Doc().Shape(0);
    QCOMPARE(int(s.GetShapeType()), type);
    QVERIFY(s.IsShapeDone());
    QCOMPARE(s.Points(), Pts({{50, 40}, {120, 40}, {120, 90}, {50, 90}}));
    QCOMPARE(s.ShapeColor, Doc().FocusColor);
    // A second one on empty surface becomes the top; the first loses the focus colour.
    Draw(CanvasHost::DrawingMode(mode), {200, 150}, {260, 200});
    QCOMPARE(Doc().ItemCount(), std::int16_t(1));
    QCOMPARE(Doc().ShapeOrder().front(), std::int16_t(1));
    QCOMPARE(Doc().HitState, std::int16_t(2));
    CheckConsistent();
    // A press without a drag leaves a shape whose points coincide.
    m_host->mode = CanvasHost::DrawingMode(mode);
    Click({300, 250});
    QCOMPARE(Doc().Shape(2).Points(), Pts({{300, 250}, {300, 250}, {300, 250}, {300, 250}}));
}

void TestShapeCanvas::polygonClosesWithinTolerance_data()
{
    QTest::addColumn<QPoint>("last");
    QTest::addColumn<bool>("closed");
    QTest::newRow("4 right, 4 up") << QPoint(14, 6) << true;
    QTest::newRow("4 left, 4 down") << QPoint(6, 14) << true;
    QTest::newRow("5 right") << QPoint(15, 10) << false;
    QTest::newRow("5 up") << QPoint(10, 5) << false;
}

void TestShapeCanvas::polygonClosesWithinTolerance()
{
    QFETCH(QPoint, last);
    QFETCH(bool, closed);
    NewCanvas();
    Draw(CanvasHost::DrawingMode::Rectangle, {200, 200}, {250, 250});
    m_host->mode = CanvasHost::DrawingMode::Polygon;
    for (const QPoint p : {QPoint(10, 10), QPoint(100, 10), QPoint(100, 100)})
        Click(p);
    QVERIFY(Doc().PolygonInProgress);
    QVERIFY(m_canvas->PointerConfined());
    CheckConsistent();
    Click(last);
    QCOMPARE(!Doc().PolygonInProgress, closed);
    const PatShape& polygon = Doc().Shape(1);
    QCOMPARE(polygon.IsShapeDone(), closed);
    QCOMPARE(int(polygon.Points().size()), closed ? 3 : 4);
    QCOMPARE(m_canvas->PointerConfined(), !closed);
    if (closed) {
        QCOMPARE(Doc().ShapeOrder().front(), std::int16_t(1));
        CheckConsistent();
    }
}

void TestShapeCanvas::polygonRubberBandFollowsPointer()
{
    NewCanvas();
    m_host->mode = CanvasHost::DrawingMode::Polygon;
    Click({10, 10});
    Click({100, 10});
    QTest::mouseMove(Surface(), {80, 70});
    const PatShape& polygon = Doc().Shape(0);
    QCOMPARE(polygon.LastLineX(), 80);
    QCOMPARE(polygon.LastLineY(), 70);
    // The line is drawn from the last vertex to the pointer.
    const QImage shot = Surface()->grab().toImage();
    QCOMPARE(QColor(shot.pixel(90, 40)), ShapePainter::ToQColor(Doc().FocusColor));
    QCOMPARE(QColor(shot.pixel(60, 40)), QColor(Qt::white));
}

void TestShapeCanvas::pickTakesTopmostShapeOverLowerVertex()
{
    NewCanvas();
    Draw(CanvasHost::DrawingMode::Rectangle, {10, 10}, {100, 100});
    Draw(CanvasHost::DrawingMode::Rectangle, {150, 150}, {50, 50});
    // Vertex 2 of shape 0 lies inside shape 1, which is on top: the body wins.
    QTest::mousePress(Surface(), Qt::LeftButton, {}, {100, 100});
    QCOMPARE(Doc().CurrentShape, std::int16_t(1));
    QCOMPARE(Doc().HitState, std::int16_t(-1));
    QTest::mouseRelease(Surface(), Qt::LeftButton, {}, {100, 100});
    // Once shape 0 is on top, the same press takes its vertex.
    m_canvas->ReStackArrayFromOptions(0);
    QTest::mousePress(Surface(), Qt::LeftButton, {}, {100, 100});
    QCOMPARE(Doc().CurrentShape, std::int16_t(0));
    QCOMPARE(Doc().HitState, std::int16_t(2));
    QTest::mouseRelease(Surface(), Qt::LeftButton, {}, {100, 100});
    // On empty surface nothing is grabbed.
    QTest::mousePress(Surface(), Qt::LeftButton, {}, {300, 250});
    QCOMPARE(Doc().HitState, std::int16_t(-2));
    QTest::mouseRelease(Surface(), Qt::LeftButton, {}, {300, 250});
    CheckConsistent();
}

void TestShapeCanvas::pressInRectangleModeOnShapeGrabsIt()
{
    NewCanvas();
    Draw(CanvasHost::DrawingMode::Rectangle, {10, 10}, {100, 100});
    Draw(CanvasHost::DrawingMode::Rectangle, {200, 10}, {250, 100});
    m_host->mode = CanvasHost::DrawingMode::Rectangle;
    Drag({50, 50}, {60, 70});
    QCOMPARE(Doc().ItemCount(), std::int16_t(1));
    QCOMPARE(Doc().ShapeOrder().front(), std::int16_t(0));
    QCOMPARE(Doc().Shape(0).Points().front(), (ShapePoint{20, 30}));
    CheckConsistent();
}

void TestShapeCanvas::bodyDragWithoutSnapping()
{
    NewCanvas();
    Draw(CanvasHost::DrawingMode::Rectangle, {20, 30}, {80, 90});
    QTest::mousePress(Surface(), Qt::LeftButton, {}, {50, 60});
    QTest::mouseMove(Surface(), {55, 62});
    QTest::mouseMove(Surface(), {60, 75});
    QTest::mouseRelease(Surface(), Qt::LeftButton, {}, {60, 75});
    QCOMPARE(Doc().Shape(0).Points(), Pts({{30, 45}, {90, 45}, {90, 105}, {30, 105}}));
    QCOMPARE(Doc().Shape(0).LastLineX(), -1);
}

void TestShapeCanvas::bodyDragWithSnappingKeepsShapeOnGrid()
{
    NewCanvas();
    Draw(CanvasHost::DrawingMode::Rectangle, {13, 17}, {53, 57});
    Doc().GridSnap = true;
    QTest::mousePress(Surface(), Qt::LeftButton, {}, {30, 30});
    // Grabbed 17 and 13 pixels inside: one whole grid step each.
    QCOMPARE(m_canvas->Editor().GrabOffsetX(), -20);
    QCOMPARE(m_canvas->Editor().GrabOffsetY(), -20);
    QTest::mouseMove(Surface(), {71, 69}); // snaps to (80, 60)
    QTest::mouseRelease(Surface(), Qt::LeftButton, {}, {71, 69});
    QCOMPARE(Doc().Shape(0).Points(), Pts({{60, 40}, {100, 40}, {100, 80}, {60, 80}}));
}

void TestShapeCanvas::rightButtonDragMovesNothing()
{
    NewCanvas();
    Draw(CanvasHost::DrawingMode::Rectangle, {20, 30}, {80, 90});
    Drag({50, 60}, {90, 100}, Qt::RightButton);
    QCOMPARE(Doc().HitState, std::int16_t(-1));
    QCOMPARE(Doc().Shape(0).Points().front(), (ShapePoint{20, 30}));
}

void TestShapeCanvas::vertexDragOfRectangleCorner()
{
    NewCanvas();
    Draw(CanvasHost::DrawingMode::Rectangle, {10, 10}, {50, 40});
    Drag({12, 9}, {20, 5});
    QCOMPARE(Doc().Shape(0).Points(), Pts({{20, 5}, {50, 5}, {50, 40}, {20, 40}}));
}

void TestShapeCanvas::arrowKeysNudgeBodyAndVertex()
{
    NewCanvas();
    Draw(CanvasHost::DrawingMode::Rectangle, {10, 10}, {50, 40});
    Click({30, 25}); // the body
    QTest::keyClick(Surface(), Qt::Key_Right);
    QTest::keyClick(Surface(), Qt::Key_Down);
    QTest::keyClick(Surface(), Qt::Key_Down);
    QCOMPARE(Doc().Shape(0).Points(), Pts({{11, 12}, {51, 12}, {51, 42}, {11, 42}}));
    QTest::keyClick(Surface(), Qt::Key_Left);
    QTest::keyClick(Surface(), Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(Doc().Shape(0).Points(), Pts({{10, 11}, {50, 11}, {50, 41}, {10, 41}}));
    Click({50, 41}); // vertex 2
    QCOMPARE(Doc().HitState, std::int16_t(2));
    QTest::keyClick(Surface(), Qt::Key_Right);
    QCOMPARE(Doc().Shape(0).Points(), Pts({{10, 11}, {51, 11}, {51, 41}, {10, 41}}));
    QTest::keyClick(Surface(), Qt::Key_A);
    QCOMPARE(Doc().Shape(0).Points(), Pts({{10, 11}, {51, 11}, {51, 41}, {10, 41}}));
}

void TestShapeCanvas::deleteRemovesTopShape()
{
    NewCanvas();
    QTest::keyClick(Surface(), Qt::Key_Delete); // nothing to delete, nothing said
    Draw(CanvasHost::DrawingMode::Rectangle, {10, 10}, {50, 40});
    Draw(CanvasHost::DrawingMode::Circle, {100, 100}, {150, 140});
    Draw(CanvasHost::DrawingMode::Rectangle, {200, 10}, {250, 40});
    Click({30, 25});
    QTest::keyClick(Surface(), Qt::Key_Delete);
    QCOMPARE(Doc().ItemCount(), std::int16_t(1));
    QCOMPARE(int(Doc().Shape(0).GetShapeType()), int(Circle));
    QCOMPARE(Doc().ShapeOrder().front(), std::int16_t(1));
    CheckConsistent();
    QTest::keyClick(Surface(), Qt::Key_Delete);
    QTest::keyClick(Surface(), Qt::Key_Delete);
    QCOMPARE(Doc().ItemCount(), std::int16_t(-1));
    QVERIFY(m_host->ui.messages.isEmpty());
}

void TestShapeCanvas::keysIgnoredWhilePolygonInProgress()
{
    NewCanvas();
    Draw(CanvasHost::DrawingMode::Rectangle, {200, 200}, {250, 250});
    m_host->mode = CanvasHost::DrawingMode::Polygon;
    Click({10, 10});
    Click({60, 10});
    QTest::keyClick(Surface(), Qt::Key_Delete);
    QTest::keyClick(Surface(), Qt::Key_Right);
    QCOMPARE(Doc().ItemCount(), std::int16_t(1));
    QCOMPARE(Doc().Shape(0).Points().front(), (ShapePoint{200, 200}));
    // A double click is ignored too.
    QTest::mouseDClick(Surface(), Qt::LeftButton, {}, {60, 60});
    QVERIFY(m_host->propertiesShown.isEmpty());
}

void TestShapeCanvas::doubleClickOpensTab_data()
{
    QTest::addColumn<int>("shapes");
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<int>("tab");
    QTest::newRow("empty map") << 0 << QPoint(30, 30) << 2;
    QTest::newRow("empty surface, three shapes") << 3 << QPoint(390, 290) << 5;
    QTest::newRow("first shape") << 3 << QPoint(15, 15) << 2;
    QTest::newRow("third shape") << 3 << QPoint(215, 15) << 4;
}

void TestShapeCanvas::doubleClickOpensTab()
{
    QFETCH(int, shapes);
    QFETCH(QPoint, at);
    QFETCH(int, tab);
    NewCanvas();
    for (int i = 0; i < shapes; ++i)
        Draw(CanvasHost::DrawingMode::Rectangle, {10 + 100 * i, 10}, {40 + 100 * i, 40});
    // The platform delivers a click before the double click.
    Click(at);
    QTest::mouseDClick(Surface(), Qt::LeftButton, {}, at);
    QVERIFY(!m_host->propertiesShown.isEmpty());
    QCOMPARE(m_host->propertiesShown.back().first, m_canvas.get());
    QCOMPARE(m_host->propertiesShown.back().second, tab);
    m_canvas->ShapeProperties(-1);
    QCOMPARE(m_host->propertiesShown.back().second, 1);
}

void TestShapeCanvas::zoomRescalesPointsAndKeepsHtml()
{
    NewCanvas(400, 300);
    Draw(CanvasHost::DrawingMode::Rectangle, {11, 21}, {101, 151});
    Draw(CanvasHost::DrawingMode::Circle, {200, 100}, {260, 140});
    const QString html0 = Doc().Shape(0).GenerateHTML();
    const QString html1 = Doc().Shape(1).GenerateHTML();
    m_canvas->SetZoomLevel(2.0);
    QCOMPARE(Doc().ZoomLevel, 2.0);
    QCOMPARE(Surface()->size(), QSize(800, 600));
    QCOMPARE(m_canvas->HoldImageBuffer().size(), QSize(800, 600));
    QCOMPARE(Doc().Shape(0).Points(), Pts({{22, 42}, {202, 42}, {202, 302}, {22, 302}}));
    QCOMPARE(Doc().Shape(0).GenerateHTML(), html0);
    m_canvas->SetZoomLevel(0.5);
    QCOMPARE(Surface()->size(), QSize(200, 150));
    QCOMPARE(Doc().Shape(0).Points(), Pts({{6, 10}, {50, 10}, {50, 76}, {6, 76}}));
    m_canvas->SetZoomLevel(1.0);
    QCOMPARE(Doc().Shape(1).GenerateHTML(), html1);
    // Back at a size that fits, the surface returns to the corner.
    QCOMPARE(Surface()->pos(), QPoint(0, 0));
    CheckConsistent();
}

void TestShapeCanvas::scrollBarRangesAndSteps_data()
{
    QTest::addColumn<int>("extra");
    QTest::addColumn<bool>("visible");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("large");
    QTest::addColumn<int>("small");
    QTest::newRow("1000 larger") << 1000 << true << 1000 << 41 << 6;
    QTest::newRow("1 larger") << 1 << true << 1 << 1 << 1;
    QTest::newRow("exactly fits") << 0 << false << 0 << 0 << 0;
    QTest::newRow("smaller") << -50 << false << 0 << 0 << 0;
}

void TestShapeCanvas::scrollBarRangesAndSteps()
{
    QFETCH(int, extra);
    QFETCH(bool, visible);
    QFETCH(int, maximum);
    QFETCH(int, large);
    QFETCH(int, small);
    NewCanvas(100, 100, 640, 480);
    const QWidget* viewport = m_canvas->findChild<QWidget*>(QStringLiteral("HoldPicbox"));
    m_canvas->SetNewPicture(WhitePicture(viewport->width() + extra, viewport->height() + extra),
                            QStringLiteral("/maps/big.png"));
    for (const char* name : {"HScroll1", "VScroll1"}) {
        const auto* bar = m_canvas->findChild<QScrollBar*>(QLatin1String(name));
        QCOMPARE(bar->isVisible(), visible);
        if (!visible)
            continue;
        QCOMPARE(bar->maximum(), maximum);
        QCOMPARE(bar->pageStep(), large);
        QCOMPARE(bar->singleStep(), small);
    }
}

void TestShapeCanvas::scrollingMovesSurface()
{
    NewCanvas(2000, 1500);
    auto* h = m_canvas->findChild<QScrollBar*>(QStringLiteral("HScroll1"));
    auto* v = m_canvas->findChild<QScrollBar*>(QStringLiteral("VScroll1"));
    h->setValue(300);
    v->setValue(120);
    QCOMPARE(Surface()->pos(), QPoint(-300, -120));
    // A zoom that still needs both bars keeps the surface where it was.
    m_canvas->SetZoomLevel(1.5);
    QCOMPARE(Surface()->pos(), QPoint(-300, -120));
    // Zoomed out so far that the old position lies past the new range: the surface
    // follows the bar to the end instead of leaving an empty strip.
    h->setValue(h->maximum());
    m_canvas->SetZoomLevel(0.5);
    QVERIFY(h->isVisible());
    QCOMPARE(Surface()->x(), -h->maximum());
    QCOMPARE(Surface()->x() + Surface()->width(),
             m_canvas->findChild<QWidget*>(QStringLiteral("HoldPicbox"))->width());
    QCOMPARE(Surface()->y(), -120);
    // Every resize scrolls back to the top-left corner.
    m_canvas->resize(600, 450);
    QCOMPARE(Surface()->pos(), QPoint(0, 0));
}

void TestShapeCanvas::resizeLayout()
{
    ShapeCanvas& c = NewCanvas();
    const auto* viewport = c.findChild<QWidget*>(QStringLiteral("HoldPicbox"));
    const auto* h = c.findChild<QWidget*>(QStringLiteral("HScroll1"));
    const auto* v = c.findChild<QWidget*>(QStringLiteral("VScroll1"));
    const auto* corner = c.findChild<QWidget*>(QStringLiteral("BntScrollEnd"));
    const auto* buffer = c.findChild<QWidget*>(QStringLiteral("HoldImage"));
    c.resize(500, 400);
    QCOMPARE(viewport->width(), 500 - v->width() - 16);
    QCOMPARE(viewport->height(), 400 - h->height() - 16);
    QCOMPARE(v->geometry(), QRect(500 - v->width(), 0, v->width(), 400 - corner->height()));
    QCOMPARE(h->geometry(), QRect(0, 400 - h->height(), 500 - corner->width(), h->height()));
    QCOMPARE(corner->pos(), QPoint(500 - corner->width(), 400 - corner->height()));
    QCOMPARE(buffer->y(), 500);
    // Below 50 pixels high nothing moves vertically; the width still counts.
    c.resize(300, 40);
    QCOMPARE(viewport->height(), 400 - h->height() - 16);
    QCOMPARE(h->y(), 400 - h->height());
    QCOMPARE(viewport->width(), 300 - v->width() - 16);
    QCOMPARE(corner->x(), 300 - corner->width());
}

void TestShapeCanvas::statusTextInPicturePixels()
{
    NewCanvas(400, 300);
    m_canvas->SetZoomLevel(2.0);
    QTest::mouseMove(Surface(), {101, 40});
    QCOMPARE(m_host->statusText, QStringLiteral("X:50 Y:20"));
    QTest::mouseMove(Surface(), {103, 43});
    QCOMPARE(m_host->statusText, QStringLiteral("X:52 Y:22"));
    // The surface (800 wide) goes on beyond the viewport: hidden parts show nothing,
    // and the right edge of the visible area still counts.
    const ShapeRect area = m_canvas->VisibleArea();
    const QPoint origin = Surface()->mapToGlobal(QPoint(0, 0));
    const int edge = area.right - origin.x();
    QTest::mouseMove(Surface(), QPoint(edge, 60));
    QCOMPARE(m_host->statusText,
             QStringLiteral("X:%1 Y:30").arg(std::lrint(edge / 2.0))); // halves to even
    QTest::mouseMove(Surface(), QPoint(area.right - origin.x() + 1, 60));
    QCOMPARE(m_host->statusText, QString());
    QTest::mouseMove(Surface(), {101, 40});
    QCOMPARE(m_host->statusText, QStringLiteral("X:50 Y:20"));
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(Surface(), &leave);
    QCOMPARE(m_host->statusText, QString());
    // Over a window that is not the active map, nothing is shown.
    m_host->active = nullptr;
    QTest::mouseMove(Surface(), {120, 60});
    QCOMPARE(m_host->statusText, QString());
}

void TestShapeCanvas::confinementRectangle()
{
    ShapeCanvas& c = NewCanvas(200, 150);
    const auto* viewport = c.findChild<QWidget*>(QStringLiteral("HoldPicbox"));
    const QPoint origin = Surface()->mapToGlobal(QPoint(0, 0));
    // A picture smaller than the viewport: confined to the picture itself.
    QCOMPARE(c.VisibleArea(),
             (ShapeRect{origin.x(), origin.y(), origin.x() + 200, origin.y() + 150}));
    // A larger one: the viewport less 4 pixels on the right and at the bottom.
    c.SetNewPicture(WhitePicture(2000, 1500), QStringLiteral("/maps/big.png"));
    const QPoint v = viewport->mapToGlobal(QPoint(0, 0));
    QCOMPARE(c.VisibleArea(), (ShapeRect{v.x(), v.y(), v.x() + viewport->width() - 4,
                                         v.y() + viewport->height() - 4}));
    QVERIFY(!c.PointerConfined());
    QTest::mousePress(Surface(), Qt::LeftButton, {}, {30, 30});
    QVERIFY(c.PointerConfined());
    QTest::mouseRelease(Surface(), Qt::LeftButton, {}, {30, 30});
    QVERIFY(!c.PointerConfined());
    // While a polygon is drawn the pointer is held inside: a move into the viewport's
    // last 4 pixels, past the visible area, lands on its edge.
    m_host->mode = CanvasHost::DrawingMode::Polygon;
    Click({30, 30});
    Click({80, 30});
    QVERIFY(c.PointerConfined());
    const int right = c.VisibleArea().right - origin.x();
    const int bottom = c.VisibleArea().bottom - origin.y();
    QTest::mouseMove(Surface(), {right + 2, bottom + 3});
    QCOMPARE(Doc().Shape(0).LastLineX(), right);
    QCOMPARE(Doc().Shape(0).LastLineY(), bottom);
}

void TestShapeCanvas::gridLinesInBuffer()
{
    NewCanvas(100, 60);
    Doc().ShouldDrawGrid = true;
    m_canvas->DrawGrid();
    const QImage shown = Surface()->grab().toImage();
    const QRgb black = qRgb(0, 0, 0);
    QCOMPARE(shown.size(), QSize(100, 60));
    for (int x = 0; x < 100; ++x) {
        const bool line = x % 20 == 0;
        QCOMPARE(shown.pixel(x, 7) == black, line);
    }
    for (int y = 0; y < 60; ++y)
        QCOMPARE(shown.pixel(7, y) == black, y % 20 == 0);
    // At zoom 1.5 the pitch is 30 pixels.
    m_canvas->SetZoomLevel(1.5);
    const QImage zoomed = m_canvas->HoldImageBuffer();
    for (int x = 0; x < 150; ++x)
        QCOMPARE(zoomed.pixel(x, 7) == black, x % 30 == 0);
    // Turned off, the bare picture is back.
    Doc().ShouldDrawGrid = false;
    m_canvas->DrawGrid(false);
    QCOMPARE(Surface()->grab().toImage().pixel(30, 7), black);
    m_canvas->DrawGrid();
    QCOMPARE(Surface()->grab().toImage().pixel(30, 7), qRgb(255, 255, 255));
}

void TestShapeCanvas::gridSnappingOfPresses()
{
    NewCanvas();
    Doc().GridSnap = true;
    Draw(CanvasHost::DrawingMode::Rectangle, {29, 31}, {50, 91});
    // 29 -> 20, 31 -> 40; 50 (2.5 steps) -> 40, 91 -> 100.
    QCOMPARE(Doc().Shape(0).Points(), Pts({{20, 40}, {40, 40}, {40, 100}, {20, 100}}));
}

void TestShapeCanvas::openMapCountAndCommands()
{
    FakeCanvasHost host;
    host.ui.answers << true << true;
    auto first = std::make_unique<ShapeCanvas>(host);
    auto second = std::make_unique<ShapeCanvas>(host);
    QCOMPARE(OpenMapCount, std::int16_t(2));
    QCOMPARE(host.commandsEnabled, QList<bool>{true});
    QVERIFY(first->close());
    QCOMPARE(OpenMapCount, std::int16_t(1));
    QCOMPARE(host.commandsEnabled, QList<bool>{true});
    QVERIFY(second->close());
    QCOMPARE(OpenMapCount, std::int16_t(0));
    QCOMPARE(host.commandsEnabled, (QList<bool>{true, false}));
}

void TestShapeCanvas::closingQuestion()
{
    ShapeCanvas& c = NewCanvas();
    Draw(CanvasHost::DrawingMode::Rectangle, {10, 10}, {50, 40});
    c.setWindowTitle(QStringLiteral("holiday.imp"));
    m_host->ui.answers << false;
    QVERIFY(!c.close());
    QCOMPARE(m_host->ui.questions,
             QStringList{QStringLiteral("Are you sure you are done editing \"holiday.imp\"?")});
    QVERIFY(c.isVisible());
    QCOMPARE(OpenMapCount, std::int16_t(1));
    QCOMPARE(Doc().ItemCount(), std::int16_t(0));
    c.setWindowTitle(QString());
    m_host->ui.answers << true;
    QVERIFY(c.close());
    QCOMPARE(m_host->ui.questions.back(),
             QStringLiteral("Are you sure you are done editing \"\"?"));
    QCOMPARE(OpenMapCount, std::int16_t(0));
}

void TestShapeCanvas::faultsBecomeMessages()
{
    NewCanvas();
    Draw(CanvasHost::DrawingMode::Rectangle, {10, 10}, {50, 40});
    // A pitch so fine that the press lies beyond 32767 grid steps cannot be snapped.
    Doc().GridSnap = true;
    Doc().GridSpacing = 0.001;
    m_host->mode = CanvasHost::DrawingMode::Rectangle;
    Click({200, 200});
    QCOMPARE(m_host->ui.messageTexts(), QStringList{QStringLiteral("Overflow")});
    QCOMPARE(m_host->ui.messages.front().icon, ModalUi::Icon::Critical);
    QCOMPARE(Doc().ItemCount(), std::int16_t(0));
    QVERIFY(!m_canvas->PointerConfined());
    CheckConsistent();
    // A zoom that would push a point past the 32-bit range leaves everything as it was.
    Doc().GridSnap = false;
    m_canvas->SetZoomLevel(1e9);
    QCOMPARE(m_host->ui.messageTexts().back(), QStringLiteral("Overflow"));
    QCOMPARE(Doc().ZoomLevel, 1.0);
    QCOMPARE(Doc().Shape(0).Points().front(), (ShapePoint{10, 10}));
    // Without shapes the surface itself cannot be that large.
    QTest::keyClick(Surface(), Qt::Key_Delete);
    m_canvas->SetZoomLevel(1e9);
    QCOMPARE(m_host->ui.messageTexts().size(), 3);
    QCOMPARE(Doc().ZoomLevel, 1.0);
    QCOMPARE(Surface()->size(), QSize(400, 300));
}

void TestShapeCanvas::paintingShowsShapesOverPicture()
{
    NewCanvas(200, 150);
    Draw(CanvasHost::DrawingMode::Rectangle, {10, 10}, {100, 80});
    // Started outside the first shape (a press on it would grab it).
    Draw(CanvasHost::DrawingMode::Rectangle, {150, 120}, {50, 50});
    const QImage shot = Surface()->grab().toImage();
    const QColor focus = ShapePainter::ToQColor(Doc().FocusColor);
    const QColor other = ShapePainter::ToQColor(Doc().NonFocusColor);
    QCOMPARE(QColor(shot.pixel(30, 10)), other);  // top edge of the lower shape
    QCOMPARE(QColor(shot.pixel(100, 50)), focus); // top shape's corner handle
    QCOMPARE(QColor(shot.pixel(120, 120)), focus);
    QCOMPARE(QColor(shot.pixel(180, 140)), QColor(Qt::white));
}

QTEST_MAIN(TestShapeCanvas)
#include "tst_shapecanvas.moc"
