#include "core/forms/ScreenFit.h"

#include <QTest>

// Where a window goes on a screen's free area: 1280 x 1024 at 2x leaves 640 x 512, here
// less a 24-pixel panel at the top.
class TestScreenFit : public QObject
{
    Q_OBJECT
private slots:
    void place_data()
    {
        QTest::addColumn<QRect>("window");
        QTest::addColumn<QSize>("minimum");
        QTest::addColumn<QRect>("placed");
        QTest::newRow("fits: untouched")
            << QRect(100, 100, 300, 200) << QSize(100, 100) << QRect(100, 100, 300, 200);
        QTest::newRow("fits exactly, frame and all")
            << QRect(4, 50, 632, 458) << QSize(100, 100) << QRect(4, 50, 632, 458);
        QTest::newRow("off the right and bottom edges: moved in, size kept")
            << QRect(500, 400, 300, 200) << QSize(100, 100) << QRect(336, 308, 300, 200);
        QTest::newRow("off the left and top edges: moved in")
            << QRect(-50, 0, 300, 200) << QSize(100, 100) << QRect(4, 50, 300, 200);
        // 920 x 680 centred on the whole screen: shrunk to the free area about its centre.
        QTest::newRow("too large: shrunk to the free area")
            << QRect(-140, -84, 920, 680) << QSize(400, 200) << QRect(4, 50, 632, 458);
        QTest::newRow("too wide only: height and centre kept")
            << QRect(-100, 150, 840, 200) << QSize(300, 100) << QRect(4, 150, 632, 200);
        QTest::newRow("never below the minimum; its top left stays on the screen")
            << QRect(0, 0, 920, 680) << QSize(700, 500) << QRect(4, 50, 700, 500);
    }
    void place()
    {
        QFETCH(QRect, window);
        QFETCH(QSize, minimum);
        QFETCH(QRect, placed);
        const QRect available(0, 24, 640, 488);
        const QMargins decoration(4, 26, 4, 4);
        const QRect result = ScreenFit::Place(available, window, decoration, minimum);
        QCOMPARE(result, placed);
        QCOMPARE(ScreenFit::Fits(available, result, decoration),
                 minimum.width() <= 632 && minimum.height() <= 458);
        // Placing again changes nothing.
        QCOMPARE(ScreenFit::Place(available, result, decoration, minimum), result);
    }

    void secondScreenToTheRight()
    {
        // A window on the second screen stays there, moved in from its right edge.
        const QRect available(1280, 0, 853, 682);
        const QRect result =
            ScreenFit::Place(available, QRect(2000, 100, 400, 300), QMargins(), QSize(50, 50));
        QCOMPARE(result, QRect(1733, 100, 400, 300));
        QVERIFY(!ScreenFit::Fits(available, QRect(1200, 100, 400, 300), QMargins()));
    }
};

QTEST_GUILESS_MAIN(TestScreenFit)
#include "tst_screenfit.moc"
