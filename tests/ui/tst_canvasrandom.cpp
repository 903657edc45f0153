#include "FakeCanvasHost.h"
#include "canvas/CanvasSurface.h"
#include "canvas/OpenMapCount.h"
#include "canvas/ShapeCanvas.h"

#include <QRandomGenerator>
#include <QTest>

// Thousands of presses, drags, releases, double clicks and keys at random places, in
// every mode, with zoom and grid changes in between: after every event the shape list
// must still be whole and coloured by its stacking.
class TestCanvasRandom : public QObject
{
    Q_OBJECT
private slots:
    void randomEditingKeepsTheMapConsistent();
};

namespace {

QString Inconsistency(const MapDocument& d)
{
    if (int(d.ShapeOrder().size()) != d.ItemCount() + 1 ||
        int(d.Shapes().size()) != d.ItemCount() + 1)
        return QStringLiteral("list sizes differ from ItemCount");
    std::vector<bool> seen(d.ShapeOrder().size(), false);
    for (std::int16_t entry : d.ShapeOrder()) {
        if (entry < 0 || entry > d.ItemCount() || seen[static_cast<std::size_t>(entry)])
            return QStringLiteral("ShapeOrder is not a permutation");
        seen[static_cast<std::size_t>(entry)] = true;
    }
    if (d.ItemCount() >= 0 && !d.PolygonInProgress) {
        for (std::int16_t i = 0; i <= d.ItemCount(); ++i) {
            const std::int32_t expected =
                i == d.ShapeOrder().front() ? d.FocusColor : d.NonFocusColor;
            if (d.Shape(i).ShapeColor != expected)
                return QStringLiteral("shape %1 has the wrong colour").arg(i);
        }
    }
    return QString();
}

} // namespace

void TestCanvasRandom::randomEditingKeepsTheMapConsistent()
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
        const QSize size = surface->size();
        return QPoint(random.bounded(std::max(size.width(), 1)),
                      random.bounded(std::max(size.height(), 1)));
    };
    const Qt::Key keys[] = {Qt::Key_Left, Qt::Key_Up,     Qt::Key_Right,
                            Qt::Key_Down, Qt::Key_Delete, Qt::Key_Space};
    const double zooms[] = {0.5, 1.0, 1.5, 2.0, 3.0};
    int shapesSeen = 0;
    int polygonsClosed = 0;
    for (int step = 0; step < 4000; ++step) {
        host.mode = CanvasHost::DrawingMode(random.bounded(4));
        const int action = random.bounded(100);
        const bool wasBuilding = doc.PolygonInProgress;
        if (action < 30) {
            const QPoint from = point();
            const QPoint to = point();
            const Qt::MouseButton button =
                random.bounded(8) == 0 ? Qt::RightButton : Qt::LeftButton;
            QTest::mousePress(surface, button, {}, from);
            QVERIFY2(Inconsistency(doc).isEmpty(), qPrintable(Inconsistency(doc)));
            for (int moves = random.bounded(4); moves > 0; --moves)
                QTest::mouseMove(surface, point());
            QTest::mouseRelease(surface, button, {}, to);
        } else if (action < 50) {
            QTest::mouseClick(surface, Qt::LeftButton, {}, point());
        } else if (action < 58) {
            // Polygon vertices next to the first one, to close some polygons.
            if (doc.PolygonInProgress) {
                const ShapePoint first = doc.Shape(doc.CurrentShape).Points().front();
                QTest::mouseClick(
                    surface, Qt::LeftButton, {},
                    QPoint(first.x + random.bounded(-5, 6), first.y + random.bounded(-5, 6)));
            }
        } else if (action < 63) {
            QTest::mouseMove(surface, point());
        } else if (action < 68) {
            const QPoint at = point();
            QTest::mouseClick(surface, Qt::LeftButton, {}, at);
            QTest::mouseDClick(surface, Qt::LeftButton, {}, at);
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
        if (wasBuilding && !doc.PolygonInProgress)
            ++polygonsClosed;
        shapesSeen = std::max(shapesSeen, doc.ItemCount() + 1);
        const QString problem = Inconsistency(doc);
        QVERIFY2(problem.isEmpty(),
                 qPrintable(QStringLiteral("step %1: %2").arg(step).arg(problem)));
    }
    // The run really edited something.
    QVERIFY(shapesSeen > 5);
    QVERIFY(polygonsClosed > 0);
    QVERIFY(!host.propertiesShown.isEmpty());
    host.ui.answers << true;
    QVERIFY(canvas.close());
}

QTEST_MAIN(TestCanvasRandom)
#include "tst_canvasrandom.moc"
