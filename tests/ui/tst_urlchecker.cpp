#include "FakeCanvasHost.h"
#include "canvas/ShapeCanvas.h"
#include "frame/Module1.h"
#include "interchange/URLChecker.h"
#include "interchange/URLHelpPage.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QWebEngineView>
#include <memory>

namespace {

constexpr int LoadTimeout = 60000;

} // namespace

class TestURLChecker : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void listsShapesThenTheDefaultArea();
    void showsTheHelpPageOnOpen();
    void checkJoinsIncompleteAddressesToTheBase();
    void enterInTheListChecks();
    void laterClicksOnTheListCheck();
    void editOfTheLastEntryChangesDefURL();
    void editOfEntryZeroChangesShapeZero();
    void cancelledEditChangesNothing();
    void browsesALocalPage();
    void browserFillsTheSpaceBelowTheControls();

private:
    URLChecker& Open();
    QComboBox* Combo() { return m_checker->findChild<QComboBox*>("URLCombo"); }
    QLineEdit* Base() { return m_checker->findChild<QLineEdit*>("txtURL"); }
    QWebEngineView* Browser() { return m_checker->findChild<QWebEngineView*>("WebBrowser1"); }
    QPushButton* Button(const char* name) { return m_checker->findChild<QPushButton*>(name); }

    std::unique_ptr<FakeCanvasHost> m_host;
    std::unique_ptr<ShapeCanvas> m_map;
    std::unique_ptr<URLChecker> m_checker;
};

void TestURLChecker::init()
{
    m_host = std::make_unique<FakeCanvasHost>();
    m_map = std::make_unique<ShapeCanvas>(*m_host);
    m_host->active = m_map.get();
    MapDocument& doc = m_map->Document();
    const QStringList urls = {"first.htm", "http://example.com/two", ""};
    for (const QString& url : urls) {
        const std::int16_t i = doc.AddShape();
        doc.Shape(i).SetInfo(doc.Surface(), doc.NonFocusColor, Rectangle, 1.0, 10 + 20 * i, 10);
        doc.SetURL(i, url);
    }
    doc.DefURL = QStringLiteral("home.htm");
}

void TestURLChecker::cleanup()
{
    m_checker.reset();
    m_map.reset();
    m_host.reset();
}

URLChecker& TestURLChecker::Open()
{
    m_checker = std::make_unique<URLChecker>(*m_map, m_host->ui);
    m_checker->show();
    return *m_checker;
}

void TestURLChecker::listsShapesThenTheDefaultArea()
{
    Open();
    QComboBox* combo = Combo();
    QCOMPARE(combo->count(), 4);
    QCOMPARE(combo->itemText(0), QStringLiteral("first.htm"));
    QCOMPARE(combo->itemText(1), QStringLiteral("http://example.com/two"));
    QCOMPARE(combo->itemText(2), QString());
    QCOMPARE(combo->itemText(3), QStringLiteral("home.htm"));
    QCOMPARE(combo->currentIndex(), 0);
    QCOMPARE(m_checker->findChild<QGroupBox*>("Frame1")->title(), QStringLiteral("URL Checker"));
    QCOMPARE(Button("Command1")->text(), QStringLiteral("Check"));
    QCOMPARE(Button("Command4")->text(), QStringLiteral("Edit"));
    QCOMPARE(Button("Command2")->text(), QStringLiteral("About"));
    QCOMPARE(Button("Command3")->text(), QStringLiteral("Close"));
}

void TestURLChecker::showsTheHelpPageOnOpen()
{
    // The browser exists before the dialog loads anything, so the spy sees the load.
    m_checker = std::make_unique<URLChecker>(*m_map, m_host->ui);
    QSignalSpy loaded(Browser(), &QWebEngineView::loadFinished);
    m_checker->show();
    const QString page = Module1::WritableProgramFolder() + URLHelpPage::FileName();
    // Opening selects entry 0 without checking it; the help page is shown instead.
    QCOMPARE(m_checker->LastAddress(), page);
    if (loaded.isEmpty())
        QVERIFY(loaded.wait(LoadTimeout));
    QCOMPARE(loaded.first().first().toBool(), true);
    QCOMPARE(Browser()->url(), QUrl::fromLocalFile(page));
    QTRY_COMPARE_WITH_TIMEOUT(Browser()->title(), QStringLiteral("About URL Testing"), LoadTimeout);
    QFile file(page);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("The Base URL is your site's location.  It's used"));
}

void TestURLChecker::checkJoinsIncompleteAddressesToTheBase()
{
    Open();
    Base()->setText(QStringLiteral("http://site.org/"));
    QTest::mouseClick(Button("Command1"), Qt::LeftButton);
    QCOMPARE(m_checker->LastAddress(), QStringLiteral("http://site.org/first.htm"));
    Base()->setText(QStringLiteral("http://site.org"));
    m_checker->Check();
    QCOMPARE(m_checker->LastAddress(), QStringLiteral("http://site.orgfirst.htm"));
    Combo()->setCurrentIndex(1);
    m_checker->Check();
    QCOMPARE(m_checker->LastAddress(), QStringLiteral("http://example.com/two"));
}

void TestURLChecker::enterInTheListChecks()
{
    Open();
    Base()->setText(QStringLiteral("http://site.org/"));
    Combo()->setCurrentIndex(3);
    QTest::keyClick(Combo(), Qt::Key_Return);
    QCOMPARE(m_checker->LastAddress(), QStringLiteral("http://site.org/home.htm"));
    QVERIFY(m_checker->isVisible());
}

void TestURLChecker::laterClicksOnTheListCheck()
{
    Open();
    Base()->setText(QStringLiteral("http://site.org/"));
    Combo()->setCurrentIndex(3);
    emit Combo()->activated(3);
    QCOMPARE(m_checker->LastAddress(), QStringLiteral("http://site.org/home.htm"));
    Combo()->setCurrentIndex(0);
    emit Combo()->activated(0);
    QCOMPARE(m_checker->LastAddress(), QStringLiteral("http://site.org/first.htm"));
}

void TestURLChecker::editOfTheLastEntryChangesDefURL()
{
    Open();
    Combo()->setCurrentIndex(3);
    m_host->ui.promptAnswers.enqueue(QStringLiteral("index.htm"));
    QTest::mouseClick(Button("Command4"), Qt::LeftButton);
    QCOMPARE(m_host->ui.prompts, QStringList({"Changing URL to...|Change URL|home.htm"}));
    QCOMPARE(m_map->Document().DefURL, QStringLiteral("index.htm"));
    QCOMPARE(Combo()->itemText(3), QStringLiteral("index.htm"));
    QCOMPARE(Combo()->currentIndex(), 3);
    QCOMPARE(m_map->Document().GetURL(2), QString());
}

void TestURLChecker::editOfEntryZeroChangesShapeZero()
{
    Open();
    m_host->ui.promptAnswers.enqueue(QStringLiteral("fixed.htm"));
    m_checker->Edit();
    QCOMPARE(m_map->Document().GetURL(0), QStringLiteral("fixed.htm"));
    QCOMPARE(Combo()->itemText(0), QStringLiteral("fixed.htm"));
    QCOMPARE(m_map->Document().DefURL, QStringLiteral("home.htm"));
}

void TestURLChecker::cancelledEditChangesNothing()
{
    Open();
    m_host->ui.promptAnswers.enqueue(std::nullopt);
    m_host->ui.promptAnswers.enqueue(QString());
    m_checker->Edit();
    m_checker->Edit();
    QCOMPARE(m_host->ui.prompts.size(), 2);
    QCOMPARE(m_map->Document().GetURL(0), QStringLiteral("first.htm"));
    QCOMPARE(Combo()->itemText(0), QStringLiteral("first.htm"));
}

void TestURLChecker::browsesALocalPage()
{
    QTemporaryDir dir;
    QFile page(dir.filePath(QStringLiteral("first.htm")));
    QVERIFY(page.open(QIODevice::WriteOnly));
    page.write("<html><head><title>First Page</title></head><body>Hello</body></html>");
    page.close();

    Open();
    QSignalSpy loaded(Browser(), &QWebEngineView::loadFinished);
    // Let the help page finish first so its loadFinished is not mistaken for ours.
    QTRY_COMPARE_WITH_TIMEOUT(Browser()->title(), QStringLiteral("About URL Testing"), LoadTimeout);
    loaded.clear();
    Base()->setText(QUrl::fromLocalFile(dir.path()).toString() + QLatin1Char('/'));
    m_checker->Check();
    QVERIFY(loaded.wait(LoadTimeout));
    QCOMPARE(loaded.last().first().toBool(), true);
    QCOMPARE(Browser()->url(), QUrl::fromLocalFile(page.fileName()));
    QTRY_COMPARE_WITH_TIMEOUT(Browser()->title(), QStringLiteral("First Page"), LoadTimeout);
}

void TestURLChecker::browserFillsTheSpaceBelowTheControls()
{
    Open();
    m_checker->resize(900, 700);
    QCoreApplication::processEvents();
    const QRect frame = m_checker->findChild<QGroupBox*>("Frame1")->geometry();
    const QRect browser = Browser()->geometry();
    QVERIFY(browser.top() > frame.bottom());
    const int before = browser.height();
    m_checker->resize(900, 800);
    QCoreApplication::processEvents();
    QCOMPARE(Browser()->geometry().height(), before + 100);
    QVERIFY(Browser()->geometry().width() > 800);
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
