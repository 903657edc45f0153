#include "FakeCanvasHost.h"
#include "ui/canvas/CanvasSurface.h"
#include "ui/canvas/ShapeCanvas.h"

#include <QRandomGenerator>
#include <QTest>

// Presses, drags, double clicks and keys at random places in every mode, with zoom and
// grid changes in between: after every event the shape list must still be whole and
// coloured by its stacking.
class TestCanvasRandom : public QObject
{
    Q_OBJECT
private slots:
    void randomEditingKeepsTheMapConsistent()
    {
        FakeCanvasHost host;
        ShapeCanvas canvas(host);
        host.active = &canvas;
        canvas.resize(500, 400);
        canvas.show();
        QImage picture(300, 220, QImage::Format_RGB32);
        picture.fill(Qt::white);
        canvas.SetNewPicture(picture, QStringLiteral("/maps/random.png"));
        QWidget* surface = &canvas.Surface();
        MapDocument& doc = canvas.Document();
        QRandomGenerator random(20261121);
        const auto point = [&] {
            return QPoint(random.bounded(surface->width()), random.bounded(surface->height()));
        };
        const Qt::Key keys[] = {Qt::Key_Left, Qt::Key_Up,     Qt::Key_Right,
                                Qt::Key_Down, Qt::Key_Delete, Qt::Key_Space};
        const double zooms[] = {0.5, 1.0, 1.5, 2.0, 3.0};
        int shapesSeen = 0;
        int polygonsClosed = 0;
        for (int step = 0; step < 1500; ++step) {
            host.mode = CanvasHost::DrawingMode(random.bounded(4));
            const int action = random.bounded(100);
            const bool wasBuilding = doc.PolygonInProgress;
            if (action < 30) {
                const auto button = random.bounded(8) == 0 ? Qt::RightButton : Qt::LeftButton;
                QTest::mousePress(surface, button, {}, point());
                QVERIFY2(MapInconsistency(doc).isEmpty(), qPrintable(MapInconsistency(doc)));
                for (int moves = random.bounded(4); moves > 0; --moves)
                    QTest::mouseMove(surface, point());
                QTest::mouseRelease(surface, button, {}, point());
            } else if (action < 50) {
                QTest::mouseClick(surface, Qt::LeftButton, {}, point());
            } else if (action < 58 && doc.PolygonInProgress) {
                // Next to the first vertex, to close some polygons.
                const ShapePoint first = doc.Shape(doc.CurrentShape).Points().front();
                QTest::mouseClick(
                    surface, Qt::LeftButton, {},
                    QPoint(first.x + random.bounded(-5, 6), first.y + random.bounded(-5, 6)));
            } else if (action < 68) {
                QTest::mouseDClick(surface, Qt::LeftButton, {}, point());
            } else if (action < 88) {
                QTest::keyClick(surface, keys[random.bounded(6)]);
            } else if (action < 93) {
                canvas.SetZoomLevel(zooms[random.bounded(5)]);
            } else if (action < 97) {
                doc.ShouldDrawGrid = !doc.ShouldDrawGrid;
                canvas.DrawGrid();
            } else {
                doc.GridSnap = !doc.GridSnap;
            }
            polygonsClosed += wasBuilding && !doc.PolygonInProgress;
            shapesSeen = std::max(shapesSeen, doc.ItemCount() + 1);
            QVERIFY2(
                MapInconsistency(doc).isEmpty(),
                qPrintable(QStringLiteral("step %1: %2").arg(step).arg(MapInconsistency(doc))));
        }
        // The run really edited something.
        QVERIFY(shapesSeen > 5);
        QVERIFY(polygonsClosed > 0);
        QVERIFY(host.propertiesShown > 0);
        host.ui.saveChoices << ModalUi::SaveChoice::Discard;
        QVERIFY(canvas.close());
    }
};

QTEST_MAIN(TestCanvasRandom)
#include "tst_canvasrandom.moc"
