#include "FakeCanvasHost.h"
#include "core/base/Module1.h"
#include "core/interchange/URLHelpPage.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/tools/URLChecker.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QWebEngineView>

class TestURLChecker : public QObject
{
    Q_OBJECT
private slots:
    void opensOnTheHelpPageAndEditsTheList();
    void incompleteAddressesGetTheBase_data();
    void incompleteAddressesGetTheBase();
    void helpPageHasItsFourLines();
};

void TestURLChecker::opensOnTheHelpPageAndEditsTheList()
{
    FakeCanvasHost host;
    ShapeCanvas map(host);
    MapDocument& doc = map.Document();
    for (const char* url : {"first.htm", ""}) {
        const std::int16_t i = doc.AddShape();
        doc.Shape(i).SetInfo(doc.Surface(), 0, Rectangle, 1.0, 10 + 20 * i, 10);
        doc.SetURL(i, url);
    }
    doc.DefURL = QStringLiteral("home.htm");
    URLChecker checker(map, host.ui);
    auto* browser = checker.findChild<QWebEngineView*>("WebBrowser1");
    QSignalSpy loaded(browser, &QWebEngineView::loadFinished);
    checker.show();
    const QString page = Module1::WritableProgramFolder() + URLHelpPage::FileName();
    QTRY_VERIFY_WITH_TIMEOUT(!loaded.isEmpty(), 60000);
    QCOMPARE(loaded.first().first().toBool(), true);
    QCOMPARE(browser->url(), QUrl::fromLocalFile(page));

    // Shapes first, then the default area.
    auto* combo = checker.findChild<QComboBox*>("URLCombo");
    QCOMPARE(combo->count(), 3);
    QCOMPARE(combo->itemText(0), QStringLiteral("first.htm"));
    QCOMPARE(combo->itemText(2), QStringLiteral("home.htm"));
    combo->setCurrentIndex(2);
    host.ui.promptAnswers.enqueue(QStringLiteral("index.htm"));
    QTest::mouseClick(checker.findChild<QPushButton*>("Command4"), Qt::LeftButton);
    QCOMPARE(host.ui.prompts, QStringList({"Changing URL to...|Change URL|home.htm"}));
    QCOMPARE(doc.DefURL, QStringLiteral("index.htm"));
    QCOMPARE(combo->itemText(2), QStringLiteral("index.htm"));
    combo->setCurrentIndex(0);
    host.ui.promptAnswers.enqueue(QStringLiteral("fixed.htm"));
    checker.Edit();
    QCOMPARE(doc.GetURL(0), QStringLiteral("fixed.htm"));
    QCOMPARE(combo->itemText(0), QStringLiteral("fixed.htm"));
    QCOMPARE(doc.GetURL(1), QString());
    QCOMPARE(doc.DefURL, QStringLiteral("index.htm"));
}

void TestURLChecker::incompleteAddressesGetTheBase_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("base");
    QTest::addColumn<QString>("address");
    const auto row = [](const char* name, const char* entry, const char* base, const char* to) {
        QTest::newRow(name) << QString(entry) << QString(base) << QString(to);
    };
    row("final slash", "p.htm", "http://s.com/", "http://s.com/p.htm");
    row("no final slash", "p.htm", "http://s.com", "http://s.comp.htm");
    row("complete", "http://o.org/x", "b/", "http://o.org/x");
    row("capitals", "HTTP://O.org/X", "b/", "HTTP://O.org/X");
    row("ftp capitals", "FTP://f.org/f", "b/", "FTP://f.org/f");
    row("secure scheme", "https://s.org/", "b/", "b/https://s.org/");
    row("mail link", "mailto:a@x.org", "b/", "b/mailto:a@x.org");
}

void TestURLChecker::incompleteAddressesGetTheBase()
{
    QFETCH(QString, entry);
    QFETCH(QString, base);
    QFETCH(QString, address);
    QCOMPARE(URLCheckList::CompleteURL(entry, base), address);
}

void TestURLChecker::helpPageHasItsFourLines()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(URLHelpPage::FileName());
    QVERIFY(URLHelpPage::Write(path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(),
             QByteArray("<HTML><HEAD><TITLE>About URL Testing</TITLE></HEAD>\r\n"
                        "<BODY BGCOLOR=\"#FFFFFF\" TEXT=\"#000000\">\r\n"
                        "This feature allows you to check and see if the URLs you set in the "
                        "shapes are correct (must be connected to the Internet for this feature "
                        "to work).  The Base URL is your site's location.  It's used with any "
                        "URLs that aren't complete (ones that don't give the complete path).\r\n"
                        "</BODY></HTML>\r\n"));
}

int main(int argc, char** argv)
{
    // The embedded browser shares its graphics context with the widgets.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    TestURLChecker test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_urlchecker.moc"
