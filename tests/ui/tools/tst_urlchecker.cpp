#include "FakeCanvasHost.h"
#include "FileBytes.h"
#include "LocalHttpServer.h"
#include "core/base/Module1.h"
#include "core/interchange/LinkTableModel.h"
#include "core/interchange/URLHelpPage.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/dialogs/WidePrompt.h"
#include "ui/tools/URLChecker.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QWebEngineProfile>
#include <QWebEngineUrlRequestInterceptor>
#include <QWebEngineView>

namespace {

// Shapes with these links, then the default area's.
void AddLinks(MapDocument& doc, const QStringList& urls, const QString& defaultUrl)
{
    for (const QString& url : urls) {
        const std::int16_t i = doc.AddShape();
        doc.Shape(i).SetInfo(doc.Surface(), 0, Rectangle, 1.0, 10 + 20 * i, 10);
        doc.SetURL(i, url);
    }
    doc.DefURL = defaultUrl;
}

QString TableText(const QTableView& table, int row, int column)
{
    return table.model()->index(row, column).data().toString();
}

} // namespace

class TestURLChecker : public QObject
{
    Q_OBJECT
private slots:
    void opensOnTheHelpPageAndEditsTheList()
    {
        FakeCanvasHost host;
        ShapeCanvas map(host);
        MapDocument& doc = map.Document();
        AddLinks(doc, {"first.htm", ""}, QStringLiteral("home.htm"));
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
        // A cancelled prompt changes nothing.
        checker.Edit();
        QCOMPARE(doc.GetURL(0), QStringLiteral("fixed.htm"));

        // Each edit is one undo step of the map, which is now modified.
        QVERIFY(map.IsModified());
        QCOMPARE(map.UndoStack().count(), 2);
        QCOMPARE(map.UndoStack().undoText(), QStringLiteral("Edit URL"));
        map.Undo();
        QCOMPARE(doc.GetURL(0), QStringLiteral("first.htm"));
        QCOMPARE(doc.DefURL, QStringLiteral("index.htm"));
        map.Undo();
        QCOMPARE(doc.DefURL, QStringLiteral("home.htm"));
        QVERIFY(!map.IsModified());
    }

    void checkOpensTheResolvedAddress_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("base");
        QTest::addColumn<QString>("address");
        const auto row = [](const char* name, const char* entry, const char* base, const char* to) {
            QTest::newRow(name) << QString(entry) << QString(base) << QString(to);
        };
        // Nobody listens on port 1: the browser's error page is all there is to see.
        row("final slash", "p.htm", "http://127.0.0.1:1/d/", "http://127.0.0.1:1/d/p.htm");
        row("complete", "http://127.0.0.1:1/x", "http://s.com/", "http://127.0.0.1:1/x");
        row("no base", "p.htm", "", "/pics/p.htm");
    }

    void checkOpensTheResolvedAddress()
    {
        QFETCH(QString, entry);
        QFETCH(QString, base);
        QFETCH(QString, address);
        FakeCanvasHost host;
        ShapeCanvas map(host);
        map.Document().ImagePath = QStringLiteral("/pics/");
        AddLinks(map.Document(), {entry}, QString());
        URLChecker checker(map, host.ui);
        checker.findChild<QLineEdit*>("txtURL")->setText(base);
        checker.Check();
        const QString expected = address.startsWith(QLatin1Char('/'))
                                     ? QUrl::fromLocalFile(address).toString()
                                     : address;
        QCOMPARE(checker.LastAddress(), expected);
        QTRY_COMPARE(checker.findChild<QWebEngineView*>("WebBrowser1")->url(), QUrl(expected));
    }

    void checkAllFillsTheTable()
    {
        LocalHttpServer server;
        QVERIFY(server.IsListening());
        FakeCanvasHost host;
        ShapeCanvas map(host);
        MapDocument& doc = map.Document();
        AddLinks(doc, {"ok", "moved", "missing", "error", "mailto:ann@x.org", "my page.htm"},
                 QString());
        URLChecker checker(map, host.ui);
        checker.show();
        auto* table = checker.findChild<QTableView*>("LinkTable");
        auto* summary = checker.findChild<QLabel*>("lblSummary");
        auto* checkAll = checker.findChild<QPushButton*>("btnCheckAll");
        auto* base = checker.findChild<QLineEdit*>("txtURL");
        QCOMPARE(table->model()->rowCount(), 7);
        QCOMPARE(TableText(*table, 0, LinkTableModel::LinkColumn), QStringLiteral("Shape #1"));
        QCOMPARE(TableText(*table, 6, LinkTableModel::LinkColumn), QStringLiteral("Default area"));

        // Typing the base resolves the rows again, still without asking anybody.
        QTest::keyClicks(base, server.Url("/").toString());
        QTRY_COMPARE(TableText(*table, 0, LinkTableModel::AddressColumn),
                     server.Url("/ok").toString());
        QTest::qWait(100);
        QCOMPARE(server.TotalRequests(), 0);
        QCOMPARE(summary->text(), QStringLiteral("7 links: 1 broken, 2 not checked, 4 to check."));

        QTest::mouseClick(checkAll, Qt::LeftButton);
        QVERIFY(!checkAll->isEnabled());
        QTRY_VERIFY_WITH_TIMEOUT(checkAll->isEnabled(), 20000);
        const QStringList expected{
            "OK 200",
            "Moved → " + server.Url("/ok").toString(),
            "Broken 404",
            "Server error 500",
            "Not checked (mailto)",
            "Malformed: space in address",
            "No address",
        };
        for (int row = 0; row < expected.size(); ++row)
            QCOMPARE(TableText(*table, row, LinkTableModel::StatusColumn), expected[row]);
        QCOMPARE(summary->text(),
                 QStringLiteral("7 links: 3 broken, 1 OK, 1 moved, 2 not checked."));

        // Broken only: the three, in order; choosing one selects it in the list too.
        checker.findChild<QCheckBox*>("chkBrokenOnly")->setChecked(true);
        QCOMPARE(table->model()->rowCount(), 3);
        QCOMPARE(TableText(*table, 0, LinkTableModel::UrlColumn), QStringLiteral("missing"));
        table->setCurrentIndex(table->model()->index(1, 0));
        auto* combo = checker.findChild<QComboBox*>("URLCombo");
        QCOMPARE(combo->currentIndex(), 3);

        // Edit writes the answer back and checks that row again; fixed, it leaves the list.
        host.ui.promptAnswers.enqueue(QStringLiteral("ok"));
        checker.Edit();
        QCOMPARE(host.ui.prompts.last(), QStringLiteral("Changing URL to...|Change URL|error"));
        QCOMPARE(doc.GetURL(3), QStringLiteral("ok"));
        QCOMPARE(combo->itemText(3), QStringLiteral("ok"));
        QTRY_COMPARE(checker.Links().Status(3).Text(), QStringLiteral("OK 200"));
        QTRY_COMPARE(table->model()->rowCount(), 2);
        QTRY_COMPARE(summary->text(),
                     QStringLiteral("7 links: 2 broken, 2 OK, 1 moved, 2 not checked."));
    }

    void closingStopsTheChecks()
    {
        LocalHttpServer server;
        FakeCanvasHost host;
        ShapeCanvas map(host);
        AddLinks(map.Document(), {server.Url("/slow").toString()}, QString());
        URLChecker checker(map, host.ui);
        checker.show();
        checker.CheckAll();
        QTRY_COMPARE(server.Requests("HEAD /slow"), 1);
        QVERIFY(checker.Links().IsChecking());
        QVERIFY(checker.findChild<QPushButton*>("btnStop")->isEnabled());
        QTest::mouseClick(checker.findChild<QPushButton*>("Command3"), Qt::LeftButton);
        QVERIFY(!checker.isVisible());
        QVERIFY(!checker.Links().IsChecking());
        QCOMPARE(checker.Links().Status(0).Text(), QString());
    }

    void promptIsWideEnoughForALongAddress()
    {
        const QString label = QStringLiteral("Changing URL to..."), title = "Change URL";
        const QString address = "https://www.example.com/a/rather/long/path/to/the/page/index.html";
        WidePrompt prompt(label, title, address);
        prompt.show();
        QVERIFY(QTest::qWaitForWindowExposed(&prompt));
        QCOMPARE(prompt.windowTitle(), title);
        QCOMPARE(prompt.labelText(), label);
        auto* field = prompt.findChild<QLineEdit*>();
        QCOMPARE(field->text(), address);
        QVERIFY2(field->width() > field->fontMetrics().horizontalAdvance(address),
                 QByteArray::number(field->width()));
        // A short address keeps an ordinary prompt; an endless one stays on the screen.
        WidePrompt small(label, title, "a.htm");
        QVERIFY(small.findChild<QLineEdit*>()->minimumWidth() < field->minimumWidth());
        WidePrompt endless(label, title, QString(5000, QLatin1Char('x')));
        endless.show();
        QVERIFY(QTest::qWaitForWindowExposed(&endless));
        QVERIFY(endless.width() <= endless.screen()->availableGeometry().width());
    }

    void helpPageHasItsFourLines()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(URLHelpPage::FileName());
        QVERIFY(URLHelpPage::Write(path));
        QCOMPARE(
            ReadBytes(path),
            QByteArray("<HTML><HEAD><TITLE>About URL Testing</TITLE></HEAD>\r\n"
                       "<BODY BGCOLOR=\"#FFFFFF\" TEXT=\"#000000\">\r\n"
                       "This feature allows you to check and see if the URLs you set in the "
                       "shapes are correct (must be connected to the Internet for this feature "
                       "to work).  The Base URL is your site's location.  It's used with any "
                       "URLs that aren't complete (ones that don't give the complete path).\r\n"
                       "</BODY></HTML>\r\n"));
    }
};

// Whatever a test navigates to, the embedded browser asks no machine but this one.
class LocalOnly : public QWebEngineUrlRequestInterceptor
{
public:
    void interceptRequest(QWebEngineUrlRequestInfo& info) override
    {
        const QUrl url = info.requestUrl();
        const bool local = url.isLocalFile() || url.host() == QLatin1String("127.0.0.1") ||
                           url.scheme() == QLatin1String("data") ||
                           url.scheme() == QLatin1String("qrc");
        info.block(!local);
    }
};

int main(int argc, char** argv)
{
    // The embedded browser shares its graphics context with the widgets.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    LocalOnly localOnly;
    QWebEngineProfile::defaultProfile()->setUrlRequestInterceptor(&localOnly);
    TestURLChecker test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_urlchecker.moc"
