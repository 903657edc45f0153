#include "core/document/CanvasGrid.h"

#include <QImage>
#include <QTest>

namespace {

QImage White(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

int BlackColumns(const QImage& image, int row)
{
    int count = 0;
    for (int x = 0; x < image.width(); ++x)
        count += image.pixel(x, row) == qRgb(0, 0, 0);
    return count;
}

} // namespace

class TestCanvasGrid : public QObject
{
    Q_OBJECT
private slots:
    void drawsLinesAtThePitch()
    {
        QImage image = White(100, 60);
        CanvasGrid::DrawGridLines(image, 20.0, 0, 0);
        for (int x = 0; x < 100; ++x)
            QCOMPARE(image.pixel(x, 7) == qRgb(0, 0, 0), x % 20 == 0);
        // Two pixels is the finest grid still drawn: every other column.
        QImage fine = White(100, 60);
        CanvasGrid::DrawGridLines(fine, 2.0, 0, 0);
        QCOMPARE(BlackColumns(fine, 7), 50);
    }

    // A pitch from a file that the grid dialog could never set: finer than two screen
    // pixels the grid would only paint the picture over, and a pitch that no longer
    // moves a single-precision position would never end the loop.
    void finerThanTwoPixelsDrawsNothing_data()
    {
        QTest::addColumn<double>("step");
        QTest::newRow("just under two pixels") << 1.99;
        QTest::newRow("one pixel") << 1.0;
        QTest::newRow("too small to advance the position") << 1e-5;
        QTest::newRow("1E-300") << 1e-300;
    }

    void finerThanTwoPixelsDrawsNothing()
    {
        QFETCH(double, step);
        QImage image = White(2000, 40);
        const QImage before = image;
        CanvasGrid::DrawGridLines(image, step, 0, 0);
        QCOMPARE(image, before);
    }
};

QTEST_GUILESS_MAIN(TestCanvasGrid)
#include "tst_canvasgrid.moc"
