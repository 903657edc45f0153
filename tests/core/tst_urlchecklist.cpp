#include "FileSizeLimit.h"
#include "canvas/MapDocument.h"
#include "interchange/URLCheckList.h"
#include "interchange/URLHelpPage.h"
#include "shape/ShapeGeometry.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestURLCheckList : public QObject
{
    Q_OBJECT
private slots:
    void listsShapesThenTheDefaultArea();
    void emptyMapListsOnlyTheDefaultArea();
    void incompleteAddressesGetTheBase_data();
    void incompleteAddressesGetTheBase();
    void editingTheLastEntryChangesDefURL();
    void editingEntryZeroChangesShapeZero();
    void emptyAnswerChangesNothing();
    void firstClickAfterFillingIsSwallowed();
    void helpPageHasItsFourLines();
    void helpPageShortWriteFails();

private:
    static MapDocument ThreeShapes();
};

MapDocument TestURLCheckList::ThreeShapes()
{
    MapDocument doc;
    const QStringList urls = {"a.htm", "", "http://example.com/c"};
    for (const QString& url : urls) {
        const std::int16_t i = doc.AddShape();
        doc.Shape(i).SetInfo(nullptr, 0, Rectangle, 1.0, 10 * i, 10);
        doc.SetURL(i, url);
    }
    doc.DefURL = QStringLiteral("default.htm");
    return doc;
}

void TestURLCheckList::listsShapesThenTheDefaultArea()
{
    const URLCheckList list(ThreeShapes());
    QCOMPARE(list.Entries(), QStringList({"a.htm", "", "http://example.com/c", "default.htm"}));
    QVERIFY(list.IsDefaultEntry(3));
    QVERIFY(!list.IsDefaultEntry(0));
}

void TestURLCheckList::emptyMapListsOnlyTheDefaultArea()
{
    MapDocument doc;
    doc.DefURL = QStringLiteral("home.htm");
    QCOMPARE(URLCheckList(doc).Entries(), QStringList({"home.htm"}));
    QCOMPARE(URLCheckList(MapDocument()).Entries(), QStringList({QString()}));
}

void TestURLCheckList::incompleteAddressesGetTheBase_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("base");
    QTest::addColumn<QString>("address");
    QTest::newRow("base with slash") << "page.htm"
                                     << "http://site.com/"
                                     << "http://site.com/page.htm";
    QTest::newRow("base without slash") << "page.htm"
                                        << "http://site.com"
                                        << "http://site.compage.htm";
    QTest::newRow("complete") << "http://other.org/x"
                              << "http://site.com/"
                              << "http://other.org/x";
    QTest::newRow("capital scheme") << "HTTP://Other.org/X"
                                    << "b/"
                                    << "HTTP://Other.org/X";
    QTest::newRow("ftp") << "FTP://files.org/f"
                         << "b/"
                         << "FTP://files.org/f";
    QTest::newRow("scheme anywhere") << "go?to=http://x"
                                     << "b/"
                                     << "go?to=http://x";
    QTest::newRow("secure scheme") << "https://safe.org/"
                                   << "b/"
                                   << "b/https://safe.org/";
    QTest::newRow("mail link") << "mailto:ann@x.org"
                               << "b/"
                               << "b/mailto:ann@x.org";
    QTest::newRow("empty base") << "page.htm"
                                << ""
                                << "page.htm";
}

void TestURLCheckList::incompleteAddressesGetTheBase()
{
    QFETCH(QString, entry);
    QFETCH(QString, base);
    QFETCH(QString, address);
    QCOMPARE(URLCheckList::CompleteURL(entry, base), address);
}

void TestURLCheckList::editingTheLastEntryChangesDefURL()
{
    MapDocument doc = ThreeShapes();
    URLCheckList list(doc);
    QVERIFY(list.Edit(3, QStringLiteral("new-default.htm"), doc));
    QCOMPARE(doc.DefURL, QStringLiteral("new-default.htm"));
    QCOMPARE(list.Entries()[3], QStringLiteral("new-default.htm"));
    QCOMPARE(doc.GetURL(2), QStringLiteral("http://example.com/c"));
}

void TestURLCheckList::editingEntryZeroChangesShapeZero()
{
    MapDocument doc = ThreeShapes();
    URLCheckList list(doc);
    QVERIFY(list.Edit(0, QStringLiteral("fixed.htm"), doc));
    QCOMPARE(doc.GetURL(0), QStringLiteral("fixed.htm"));
    QCOMPARE(list.Entries()[0], QStringLiteral("fixed.htm"));
    QCOMPARE(doc.DefURL, QStringLiteral("default.htm"));
}

void TestURLCheckList::emptyAnswerChangesNothing()
{
    MapDocument doc = ThreeShapes();
    URLCheckList list(doc);
    QVERIFY(!list.Edit(0, QString(), doc));
    QCOMPARE(doc.GetURL(0), QStringLiteral("a.htm"));
    QCOMPARE(list.Entries()[0], QStringLiteral("a.htm"));
}

void TestURLCheckList::firstClickAfterFillingIsSwallowed()
{
    URLCheckList list{MapDocument()};
    QVERIFY(!list.TakeClick());
    QVERIFY(list.TakeClick());
    QVERIFY(list.TakeClick());
    list.ResetClicks();
    QVERIFY(!list.TakeClick());
}

void TestURLCheckList::helpPageHasItsFourLines()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(URLHelpPage::FileName());
    QVERIFY(URLHelpPage::Write(path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    QCOMPARE(lines.size(), 5); // four lines, each ended by CR LF
    QCOMPARE(lines[0], QByteArray("<HTML><HEAD><TITLE>About URL Testing</TITLE></HEAD>\r"));
    QCOMPARE(lines[1], QByteArray("<BODY BGCOLOR=\"#FFFFFF\" TEXT=\"#000000\">\r"));
    QCOMPARE(lines[2], QByteArray("This feature allows you to check and see if the URLs you set "
                                  "in the shapes are correct (must be connected to the Internet "
                                  "for this feature to work).  The Base URL is your site's "
                                  "location.  It's used with any URLs that aren't complete (ones "
                                  "that don't give the complete path).\r"));
    QCOMPARE(lines[3], QByteArray("</BODY></HTML>\r"));
    QCOMPARE(lines[4], QByteArray());
}

void TestURLCheckList::helpPageShortWriteFails()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(URLHelpPage::FileName());
    bool written = true;
    {
        // The disk fills up part way through the page.
        const FileSizeLimit limit(64);
        QVERIFY(limit.Active());
        written = URLHelpPage::Write(path);
    }
    QVERIFY(!written);
    QVERIFY(!QFile::exists(path));
}

QTEST_APPLESS_MAIN(TestURLCheckList)
#include "tst_urlchecklist.moc"
