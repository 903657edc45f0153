#include "core/forms/CommonDialogStuff.h"
#include "core/forms/EditorCommandLine.h"
#include "core/forms/ScreenFit.h"
#include "core/forms/ZoomStep.h"

#include <QTest>

// The frame's rules that need no window: which command lines print and quit before any
// window exists and what the editor opens, save names, the zoom pixel limit, and where a
// window goes on a screen's free area.
class TestFrameCommands : public QObject
{
    Q_OBJECT
private slots:
    void saveNameGetsMapExtension()
    {
        for (const auto& [chosen, saved] :
             {std::pair("plan", "plan.imp"), std::pair("plan.IMP", "plan.IMP"),
              std::pair("my.imports.txt", "my.imports.txt"),
              std::pair("/home/ann/plan.map", "/home/ann/plan.map.imp")})
            QCOMPARE(CommonDialogStuff::WithMapExtension(chosen), QString(saved));
    }

    void zoomPixelLimitIsInclusive()
    {
        QCOMPARE(ZoomStep::Out(1.1, 2000, 2000).outcome, ZoomStep::Outcome::Zoomed);
        QCOMPARE(ZoomStep::Out(1.1, 2000, 2001).outcome, ZoomStep::Outcome::Refused);
        // 1.5 x 1335 = 2002.5 rounds half to even: 2002 x 1998 fits.
        QCOMPARE(ZoomStep::In(1.4, 1335, 1332).outcome, ZoomStep::Outcome::Zoomed);
    }

    void onlyPrints_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("onlyPrints");
        QTest::newRow("--version") << QStringList{"vantrel", "--version"} << true;
        QTest::newRow("-v") << QStringList{"vantrel", "-v"} << true;
        QTest::newRow("--help") << QStringList{"vantrel", "--help"} << true;
        QTest::newRow("-h beside a file") << QStringList{"vantrel", "map.imp", "-h"} << true;
        QTest::newRow("nothing") << QStringList{"vantrel"} << false;
        QTest::newRow("files") << QStringList{"vantrel", "map.imp", "pic.png"} << false;
        // Qt's own options are the windowing system's to read: the windowed path takes them.
        QTest::newRow("--help-all lists the display's options")
            << QStringList{"vantrel", "--help-all"} << false;
        QTest::newRow("a Qt option before --version")
            << QStringList{"vantrel", "-platform", "offscreen", "--version"} << false;
        QTest::newRow("unknown option") << QStringList{"vantrel", "--frobnicate", "-v"} << false;
    }
    void onlyPrints()
    {
        QFETCH(QStringList, arguments);
        QFETCH(bool, onlyPrints);
        QCOMPARE(EditorCommandLine::OnlyPrints(arguments), onlyPrints);
    }

    void filesAndTheTimingSwitch()
    {
        EditorCommandLine line;
        QVERIFY(line.Parse({"vantrel", "a.imp", "--quit-after-first-paint", "b c.png"}));
        QCOMPARE(line.Files(), QStringList({"a.imp", "b c.png"}));
        QVERIFY(line.QuitAfterFirstPaint());
        EditorCommandLine plain;
        QVERIFY(plain.Parse({"vantrel", "a.imp"}));
        QVERIFY(!plain.QuitAfterFirstPaint());
        QVERIFY(!plain.HelpText().contains(QStringLiteral("quit-after-first-paint")));
    }

    // 1280 x 1024 at 2x leaves 640 x 512, here less a 24-pixel panel at the top.
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

QTEST_GUILESS_MAIN(TestFrameCommands)
#include "tst_framecommands.moc"
