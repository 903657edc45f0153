#include "shape/HandleSprites.h"
#include "shape/PatShape.h"
#include "shape/ShapePainter.h"

#include <QImage>
#include <QPainter>
#include <QTest>

// Handles blitted from pictures must look exactly like handles drawn as ellipses.
class TestHandleSprites : public QObject
{
    Q_OBJECT
private slots:
    void spritesMatchDrawnHandles_data();
    void spritesMatchDrawnHandles();
    void onePicturePerColour();
};

void TestHandleSprites::spritesMatchDrawnHandles_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("colour");
    QTest::newRow("rectangle") << int(Rectangle) << 0xB47800;
    QTest::newRow("circle") << int(Circle) << 0x787878;
    QTest::newRow("polygon") << int(Polygon) << 0x0000FF;
}

void TestHandleSprites::spritesMatchDrawnHandles()
{
    QFETCH(int, type);
    QFETCH(int, colour);
    // Corners on, near and past the image's edges.
    PatShape shape;
    shape.SetInfo(nullptr, colour, Rectangle, 1.0, 0, 0);
    shape.SetPoint(0, -2, 3);
    shape.SetPoint(1, 57, 1);
    shape.SetPoint(2, 63, 38);
    shape.SetPoint(3, 9, 41);
    shape.MorphTo(static_cast<std::int16_t>(type));
    QImage drawn(60, 40, QImage::Format_RGB32);
    drawn.fill(QColor(30, 160, 90));
    QImage blitted = drawn;
    {
        QPainter painter(&drawn);
        ShapePainter::ReDrawShape(painter, shape);
    }
    HandleSprites sprites;
    {
        QPainter painter(&blitted);
        // Clipped as a paint event clips, to the whole picture here.
        painter.setClipRegion(QRegion(blitted.rect()));
        ShapePainter::ReDrawShape(painter, shape, &sprites);
    }
    QCOMPARE(blitted, drawn);
}

void TestHandleSprites::onePicturePerColour()
{
    HandleSprites sprites;
    const QImage& blue = sprites.For(QColor(0, 120, 180));
    QCOMPARE(blue.size(), QSize(9, 9));
    // The rim is white, the middle the fill, the corners untouched.
    QCOMPARE(QColor(blue.pixel(4, 0)), QColor(Qt::white));
    QCOMPARE(QColor(blue.pixel(4, 4)), QColor(0, 120, 180));
    QCOMPARE(qAlpha(blue.pixel(0, 0)), 0);
    QCOMPARE(sprites.For(QColor(0, 120, 180)).constBits(), blue.constBits());
    QCOMPARE(QColor(sprites.For(QColor(120, 120, 120)).pixel(4, 4)), QColor(120, 120, 120));
}

QTEST_APPLESS_MAIN(TestHandleSprites)
#include "tst_handlesprites.moc"
