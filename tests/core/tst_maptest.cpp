#include "ScriptedModalUi.h"
#include "interchange/MapTest.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestMapTest : public QObject
{
    Q_OBJECT
private slots:
    void writesTheFourLinesAndOpensThePage();
    void overwritesThePageOfAnEarlierTest();
    void emptyCodeStops();
    void browserFailureIsReported();
    void unwritablePageEndsSilently();

private:
    static QByteArray Read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

void TestMapTest::writesTheFourLinesAndOpensThePage()
{
    QTemporaryDir dir;
    ScriptedModalUi ui;
    const QString code = QStringLiteral("<map name=\"MyMap\">\r\n<area shape=\"rect\">\r\n</map>");
    const QString folder = dir.path() + QLatin1Char('/');
    const QString page = MapTest::Run(code, ui, folder);
    QCOMPARE(page, folder + QStringLiteral("Image_Map_Test.htm"));
    QCOMPARE(Read(page), QByteArray("<HTML><HEAD><TITLE>This Is A Test</TITLE></HEAD>\r\n"
                                    "<BODY BGCOLOR=\"#FFFFFF\">\r\n") +
                             code.toLatin1() + QByteArray("\r\n</BODY></HTML>\r\n"));
    QCOMPARE(ui.opened, QStringList({page}));
    QVERIFY(ui.messages.isEmpty());
}

void TestMapTest::overwritesThePageOfAnEarlierTest()
{
    QTemporaryDir dir;
    ScriptedModalUi ui;
    const QString folder = dir.path() + QLatin1Char('/');
    MapTest::Run(QStringLiteral("<map name=\"first\"></map> and a long tail of text"), ui, folder);
    const QString page = MapTest::Run(QStringLiteral("<map name=\"second\"></map>"), ui, folder);
    const QByteArray text = Read(page);
    QVERIFY(text.contains("second"));
    QVERIFY(!text.contains("first"));
    QVERIFY(!text.contains("tail"));
    QCOMPARE(ui.opened.size(), 2);
}

void TestMapTest::emptyCodeStops()
{
    QTemporaryDir dir;
    ScriptedModalUi ui;
    QVERIFY(MapTest::Run(QString(), ui, dir.path() + QLatin1Char('/')).isEmpty());
    QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("Image_Map_Test.htm"))));
    QVERIFY(ui.opened.isEmpty());
    QVERIFY(ui.messages.isEmpty());
}

void TestMapTest::browserFailureIsReported()
{
    QTemporaryDir dir;
    ScriptedModalUi ui;
    ui.desktopOpens = false;
    MapTest::Run(QStringLiteral("<map></map>"), ui, dir.path() + QLatin1Char('/'));
    QCOMPARE(ui.messageTexts(),
             QStringList({"There was an error while trying to open the default browser."}));
    QCOMPARE(ui.messages.first().icon, ModalUi::Icon::Critical);
}

void TestMapTest::unwritablePageEndsSilently()
{
    QTemporaryDir dir;
    ScriptedModalUi ui;
    const QString missing = dir.filePath(QStringLiteral("no/such/folder/"));
    QVERIFY(MapTest::Run(QStringLiteral("<map></map>"), ui, missing).isEmpty());
    QVERIFY(ui.opened.isEmpty());
    QVERIFY(ui.messages.isEmpty());
}

QTEST_GUILESS_MAIN(TestMapTest)
#include "tst_maptest.moc"
