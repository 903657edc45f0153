#include "CanvasFixture.h"
#include "core/document/ViewScale.h"

#include <QApplication>
#include <QScrollBar>
#include <QWheelEvent>

// Looking closer or farther: the wheel, the pointer-anchored zoom, panning, and editing
// that stores the same coordinates at any view scale.
class TestViewScale : public QObject, CanvasFixture
{
    Q_OBJECT
private:
    QWidget* Viewport() { return Surface()->parentWidget(); }
    QScrollBar* Bar(const char* name) { return m_canvas->findChild<QScrollBar*>(name); }
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
    void cleanup() { CloseCanvas(); }

    void stepsAndLimits()
    {
        QCOMPARE(ViewScale::StepIn(1.0), 1.5);
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
    }

    void mappingCoversWhatIsDrawn()
    {
        ViewScale view;
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

    void wheelScrollsAndShiftWheelScrollsSideways()
    {
        NewCanvas(1200, 900);
        QVERIFY(Bar("VScroll1")->isVisible() && Bar("HScroll1")->isVisible());
        Wheel({100, 100}, {0, -120});
        QCOMPARE(Bar("VScroll1")->value(), 60);
        QCOMPARE(Surface()->y(), -60);
        Wheel({100, 100}, {0, -120}, Qt::ShiftModifier);
        QCOMPARE(Bar("HScroll1")->value(), 60);
        QCOMPARE(Surface()->x(), -60);
        QCOMPARE(m_canvas->ViewScaleFactor(), 1.0);
        // Scrolling past the start stops there.
        Wheel({100, 100}, {0, 600});
        QCOMPARE(Bar("VScroll1")->value(), 0);
        QCOMPARE(Doc().ZoomLevel, 1.0);
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
        QCOMPARE(Surface()->size(), QSize(1600, 1200));
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
        std::vector<std::vector<ShapePoint>> drawn;
        for (const double f : {1.0, 0.37, 4.0}) {
            NewCanvas();
            m_canvas->SetViewScale(f);
            QCOMPARE(m_canvas->ViewScaleFactor(), f);
            // Bring the work into sight: the pointer is kept inside the visible area.
            m_canvas->EnsureVisible(QRect(QPoint(100, 100), QPoint(235, 181)));
            const auto at = [f](int x, int y) { return (QPointF(x, y) * f).toPoint(); };
            DrawAt({100, 100}, {181, 154});
            QCOMPARE(Doc().ItemCount(), std::int16_t(0));
            // The body dragged by 27 picture pixels, then a corner by (27, 27).
            Drag(at(127, 127), at(154, 127));
            Drag(at(208, 154), at(235, 181));
            drawn.push_back(Doc().Shape(0).Points());
            // The status bar shows picture pixels whatever the scale.
            QTest::mouseMove(Surface(), at(127, 154));
            QCOMPARE(m_host->statusText, QStringLiteral("X:127 Y:154"));
        }
        QCOMPARE(drawn[0],
                 (std::vector<ShapePoint>{{127, 100}, {235, 100}, {235, 181}, {127, 181}}));
        QCOMPARE(drawn[1], drawn[0]);
        QCOMPARE(drawn[2], drawn[0]);
    }

    void vertexReachIsTheSameOnScreen()
    {
        // Four screen pixels from a corner grab it at any scale; twelve never do.
        for (const double f : {0.37, 1.0, 4.0}) {
            NewCanvas();
            m_canvas->SetViewScale(f);
            m_canvas->EnsureVisible(QRect(QPoint(100, 100), QPoint(181, 154)));
            DrawAt({100, 100}, {181, 154});
            const QPoint corner = (QPointF(181, 154) * f).toPoint();
            for (const auto& [offset, grabs] :
                 {std::pair{QPoint(-4, -4), true}, std::pair{QPoint(-12, -12), false}}) {
                QTest::mousePress(Surface(), Qt::LeftButton, {}, corner + offset);
                QCOMPARE(Doc().HitState, grabs ? std::int16_t(2) : std::int16_t(-1));
                QTest::mouseRelease(Surface(), Qt::LeftButton, {}, corner + offset);
            }
        }
    }

    void mapZoomKeepsTheViewScale()
    {
        NewCanvas();
        m_canvas->SetViewScale(2.0);
        m_canvas->SetZoomLevel(1.5);
        QCOMPARE(m_canvas->ViewScaleFactor(), 2.0);
        QCOMPARE(Surface()->size(), QSize(1200, 900));
        QCOMPARE(m_canvas->HoldImageBuffer().size(), QSize(600, 450));
        m_canvas->ActualSize();
        QCOMPARE(Surface()->size(), QSize(600, 450));
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

    void spaceDragPans()
    {
        NewCanvas(1200, 900);
        QTest::keyPress(Surface(), Qt::Key_Space);
        QTest::mousePress(Surface(), Qt::LeftButton, {}, {300, 300});
        QTest::mouseMove(Surface(), {250, 220});
        QTest::mouseRelease(Surface(), Qt::LeftButton, {}, {250, 220});
        QTest::keyRelease(Surface(), Qt::Key_Space);
        QCOMPARE(Bar("HScroll1")->value(), 50);
        QCOMPARE(Bar("VScroll1")->value(), 80);
        // Panning made no shape and grabbed nothing.
        QCOMPARE(Doc().ItemCount(), std::int16_t(-1));
        QVERIFY(!m_canvas->PointerConfined());
    }
};

QTEST_MAIN(TestViewScale)
#include "tst_viewscale.moc"
