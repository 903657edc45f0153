#include "core/forms/EditorCommandLine.h"

#include <QTest>

// Which command lines print and quit before any window exists, and what the editor opens.
class TestEditorCommandLine : public QObject
{
    Q_OBJECT
private slots:
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
};

QTEST_GUILESS_MAIN(TestEditorCommandLine)
#include "tst_editorcommandline.moc"
