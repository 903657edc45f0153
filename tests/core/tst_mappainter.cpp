#include "canvas/MapDocument.h"
#include "canvas/MapPainter.h"
#include "shape/ShapePainter.h"

#include <QImage>
#include <QPainter>
#include <QRegion>
#include <QTest>

// What the map window paints for a region: the picture, the shapes in index order with
// the top one again above them, the rubber band, and nothing outside the region.
class TestMapPainter : public QObject
{
    Q_OBJECT
private slots:
    void topShapeLiesAboveTheOthers();
    void paintsOnlyInsideTheRegion();
    void rubberBandOfPolygonInProgress();
};

namespace {

void AddRectangle(MapDocument& d, int left, int top, int right, int bottom)
{
    const std::int16_t i = d.AddShape();
    PatShape& s = d.Shape(i);
    s.SetInfo(nullptr, d.FocusColor, Rectangle, 1.0, left, top);
    s.SetPoint(1, right, top);
    s.SetPoint(2, right, bottom);
    s.SetPoint(3, left, bottom);
    d.BringToTop(i);
}

QImage Picture(QColor colour)
{
    QImage picture(200, 150, QImage::Format_RGB32);
    picture.fill(colour);
    return picture;
}

QImage Paint(const MapDocument& d, const QImage& background, const QRegion& region)
{
    QImage target(200, 150, QImage::Format_RGB32);
    target.fill(Qt::magenta);
    QPainter painter(&target);
    MapPainter::Paint(painter, d, background, region);
    return target;
}

} // namespace

void TestMapPainter::topShapeLiesAboveTheOthers()
{
    MapDocument d;
    AddRectangle(d, 20, 20, 120, 100);
    AddRectangle(d, 60, 60, 180, 140);
    const QImage background = Picture(Qt::white);
    const QColor focus = ShapePainter::ToQColor(d.FocusColor);
    // Where the two outlines cross the other shape: solid in the focus colour when that
    // outline is on top, broken by the other's colour showing through when it is below.
    const auto colours = [&](const QImage& shot, bool vertical) {
        QList<QColor> seen;
        for (int k = 70; k < 94; ++k) { // clear of the handles
            const QColor c(vertical ? shot.pixel(120, k) : shot.pixel(k, 60));
            if (!seen.contains(c))
                seen.append(c);
        }
        return seen;
    };
    QImage shot = Paint(d, background, QRegion(0, 0, 200, 150));
    QCOMPARE(colours(shot, false), QList<QColor>{focus});
    QVERIFY(colours(shot, true).size() > 1);
    // Shape 0 on top, though drawn first by index.
    d.BringToTop(0);
    shot = Paint(d, background, QRegion(0, 0, 200, 150));
    QCOMPARE(colours(shot, true), QList<QColor>{focus});
    QVERIFY(colours(shot, false).size() > 1);
    QCOMPARE(QColor(shot.pixel(190, 10)), QColor(Qt::white));
}

void TestMapPainter::paintsOnlyInsideTheRegion()
{
    MapDocument d;
    AddRectangle(d, 20, 20, 60, 60);
    AddRectangle(d, 120, 20, 180, 60);
    const QRegion region = QRegion(10, 10, 60, 60) + QRegion(0, 120, 200, 10);
    const QImage shot = Paint(d, Picture(Qt::white), region);
    for (int y = 0; y < 150; y += 3) {
        for (int x = 0; x < 200; x += 3) {
            const bool inside = region.contains(QPoint(x, y));
            QVERIFY2((QColor(shot.pixel(x, y)) == QColor(Qt::magenta)) != inside,
                     qPrintable(QStringLiteral("%1,%2").arg(x).arg(y)));
        }
    }
    QCOMPARE(QColor(shot.pixel(40, 20)), ShapePainter::ToQColor(d.NonFocusColor));
    // Beyond the picture the surface is white.
    const QImage small = Paint(d, QImage(50, 50, QImage::Format_RGB32), QRegion(100, 100, 20, 20));
    QCOMPARE(QColor(small.pixel(110, 110)), QColor(Qt::white));
}

void TestMapPainter::rubberBandOfPolygonInProgress()
{
    MapDocument d;
    const std::int16_t i = d.AddShape();
    PatShape& polygon = d.Shape(i);
    polygon.SetInfo(nullptr, d.FocusColor, Polygon, 1.0, 20, 20);
    polygon.AddPointToShape(20, 20);
    polygon.AddPointToShape(100, 20);
    polygon.DrawLine(100, 20, 100, 120);
    d.PolygonInProgress = true;
    d.CurrentShape = i;
    const QImage shot = Paint(d, Picture(Qt::white), QRegion(0, 0, 200, 150));
    const QColor focus = ShapePainter::ToQColor(d.FocusColor);
    QCOMPARE(QColor(shot.pixel(60, 20)), focus);  // the open chain
    QCOMPARE(QColor(shot.pixel(100, 80)), focus); // the band to the pointer
    QCOMPARE(QColor(shot.pixel(60, 70)), QColor(Qt::white));
    d.PolygonInProgress = false;
    QCOMPARE(QColor(Paint(d, Picture(Qt::white), QRegion(0, 0, 200, 150)).pixel(100, 80)),
             QColor(Qt::white));
}

QTEST_APPLESS_MAIN(TestMapPainter)
#include "tst_mappainter.moc"
