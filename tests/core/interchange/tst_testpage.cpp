#include "FileBytes.h"
#include "FileSizeLimit.h"
#include "core/interchange/TestPage.h"

#include <QTemporaryDir>
#include <QTest>

class TestTestPage : public QObject
{
    Q_OBJECT
private slots:
    // The page's name is checked where the map test writes and opens it.
    void fourLinesOverwriteThePreviousPage()
    {
        const QString path = m_dir.filePath(TestPage::FileName());
        QVERIFY(TestPage::Write(path, QStringLiteral("first, a longer code than the second")));
        QVERIFY(
            TestPage::Write(path, QStringLiteral("<map name=\"m\">\r\n</map>\r\n<img src=\"x\">")));
        QCOMPARE(ReadBytes(path), QByteArray("<HTML><HEAD><TITLE>This Is A Test</TITLE></HEAD>\r\n"
                                             "<BODY BGCOLOR=\"#FFFFFF\">\r\n"
                                             "<map name=\"m\">\r\n</map>\r\n<img src=\"x\">\r\n"
                                             "</BODY></HTML>\r\n"));
        QVERIFY(!TestPage::Write(m_dir.path(), QStringLiteral("x"))); // a folder, not a file
    }

    void shortWriteFailsAndKeepsThePreviousPage()
    {
        const QString path = m_dir.filePath(QStringLiteral("short.htm"));
        QVERIFY(TestPage::Write(path, QStringLiteral("first")));
        const QByteArray previous = ReadBytes(path);
        bool written = true;
        {
            // The disk fills up part way through the page.
            const FileSizeLimit limit(1024);
            QVERIFY(limit.Active());
            written = TestPage::Write(path, QString(4096, QLatin1Char('x')));
        }
        QVERIFY(!written);
        QCOMPARE(ReadBytes(path), previous);
    }

private:
    QTemporaryDir m_dir;
};

QTEST_APPLESS_MAIN(TestTestPage)
#include "tst_testpage.moc"
