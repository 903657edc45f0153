#include "FileSizeLimit.h"
#include "interchange/TestPage.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray ReadAll(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

} // namespace

class TestTestPage : public QObject
{
    Q_OBJECT
private slots:
    void fourLinesEachEndedByCrLf();
    void writeCreatesAndOverwrites();
    void nonAsciiPageIsMarkedAsUtf8();
    void unwritablePathFails();
    void shortWriteFailsAndKeepsThePreviousPage();
};

void TestTestPage::fourLinesEachEndedByCrLf()
{
    const QString code = QStringLiteral("<map name=\"m\">\r\n</map>\r\n<img src=\"x\">");
    QCOMPARE(TestPage::Text(code),
             QStringLiteral("<HTML><HEAD><TITLE>This Is A Test</TITLE></HEAD>\r\n"
                            "<BODY BGCOLOR=\"#FFFFFF\">\r\n"
                            "<map name=\"m\">\r\n</map>\r\n<img src=\"x\">\r\n"
                            "</BODY></HTML>\r\n"));
    QCOMPARE(TestPage::FileName(), QStringLiteral("Image_Map_Test.htm"));
}

void TestTestPage::writeCreatesAndOverwrites()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString path = dir.filePath(TestPage::FileName());
    QVERIFY(TestPage::Write(path, QStringLiteral("first, a longer code than the second")));
    QVERIFY(TestPage::Write(path, QStringLiteral("second")));
    QCOMPARE(ReadAll(path), QByteArray("<HTML><HEAD><TITLE>This Is A Test</TITLE></HEAD>\r\n"
                                       "<BODY BGCOLOR=\"#FFFFFF\">\r\n"
                                       "second\r\n"
                                       "</BODY></HTML>\r\n"));
}

void TestTestPage::nonAsciiPageIsMarkedAsUtf8()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("page.htm"));
    QVERIFY(TestPage::Write(path, QStringLiteral("caf\u00e9")));
    const QByteArray bytes = ReadAll(path);
    QVERIFY(bytes.startsWith("\xEF\xBB\xBF<HTML>"));
    QVERIFY(bytes.contains("caf\xC3\xA9\r\n</BODY>"));
}

void TestTestPage::unwritablePathFails()
{
    QTemporaryDir dir;
    QVERIFY(!TestPage::Write(dir.filePath(QStringLiteral("missing/folder/page.htm")),
                             QStringLiteral("x")));
    QVERIFY(!TestPage::Write(dir.path(), QStringLiteral("x"))); // a folder, not a file
}

void TestTestPage::shortWriteFailsAndKeepsThePreviousPage()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(TestPage::FileName());
    QVERIFY(TestPage::Write(path, QStringLiteral("first")));
    const QByteArray previous = ReadAll(path);
    bool written = true;
    {
        // The disk fills up part way through the page.
        const FileSizeLimit limit(1024);
        QVERIFY(limit.Active());
        written = TestPage::Write(path, QString(4096, QLatin1Char('x')));
    }
    QVERIFY(!written);
    QCOMPARE(ReadAll(path), previous);
}

QTEST_APPLESS_MAIN(TestTestPage)
#include "tst_testpage.moc"
