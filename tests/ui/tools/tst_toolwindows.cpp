#include "FakeCanvasHost.h"
#include "FileBytes.h"
#include "LocalHttpServer.h"
#include "ShapeRow.h"
#include "core/base/Module1.h"
#include "core/interchange/AreaGeometry.h"
#include "core/interchange/FormattedMapCode.h"
#include "core/interchange/LinkTableModel.h"
#include "core/interchange/MapArea.h"
#include "core/interchange/MapCodeGenerator.h"
#include "core/interchange/MapFormatSetting.h"
#include "core/interchange/MapTest.h"
#include "core/interchange/URLHelpPage.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/dialogs/WidePrompt.h"
#include "ui/tools/ConvertHTMLtoMap.h"
#include "ui/tools/GeneratedCodeForm.h"
#include "ui/tools/ImportWithOptions.h"
#include "ui/tools/MapImport.h"
#include "ui/tools/URLChecker.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSettings>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineUrlRequestInterceptor>
#include <QWebEngineView>
#include <cmath>
#include <memory>

namespace {

// Shapes with these links, then the default area's.
void AddLinks(MapDocument& doc, const QStringList& urls, const QString& defaultUrl)
{
    for (const QString& url : urls)
        AddShapeRow(doc, "1|10,10,30,10,30,30,10,30|" + url + "||||0|");
    doc.DefURL = defaultUrl;
}

QString TableText(const QTableView& table, int row, int column)
{
    return table.model()->index(row, column).data().toString();
}

constexpr int Width = 400;
constexpr int Height = 300;

// A point of each shape that no earlier shape covers, with a margin of two pixels on every
// side so that edge rules cannot matter; none when earlier shapes cover it. Hrefs gets the
// link each point leads to.
QList<QPoint> ClickablePoints(MapDocument& d, QStringList& hrefs)
{
    std::vector<MapArea> areas;
    for (int i = 0; i <= d.ItemCount(); ++i)
        areas.push_back(MapArea::FromShape(d.Shape(std::int16_t(i)), i));
    QList<QPoint> points;
    for (std::size_t i = 0; i < areas.size(); ++i) {
        const QPainterPath own = AreaGeometry::PathOf(areas[i], Width, Height);
        const QRect box =
            AreaGeometry::BoundsOf(areas[i], Width, Height) & QRect(0, 0, Width, Height);
        const auto inside = [&](QPoint p) {
            for (QPoint o :
                 {QPoint(0, 0), QPoint(-2, -2), QPoint(2, -2), QPoint(2, 2), QPoint(-2, 2)}) {
                const QPointF q = p + o + QPointF(0.5, 0.5);
                if (!own.contains(q))
                    return false;
                for (std::size_t j = 0; j < i; ++j) {
                    if (AreaGeometry::PathOf(areas[j], Width, Height).contains(q))
                        return false;
                }
            }
            return true;
        };
        bool found = false;
        for (int y = box.top() + 3; y < box.bottom() - 2 && !found; y += 3) {
            for (int x = box.left() + 3; x < box.right() - 2 && !found; x += 3) {
                if (inside(QPoint(x, y))) {
                    points << QPoint(x, y);
                    hrefs << QStringLiteral("s%1.htm").arg(i);
                    found = true;
                }
            }
        }
    }
    return points;
}

void AddShape(MapDocument& d, int type, const QString& coords)
{
    const int index = d.ItemCount() + 1;
    AddShapeRow(d, QStringLiteral("%1|%2|s%3.htm|Shape %3|||0|").arg(type).arg(coords).arg(index));
}

// Rectangles, circles and star-shaped polygons scattered over the picture, overlapping.
MapDocument RandomMap(quint32 seed)
{
    QRandomGenerator random(seed);
    MapDocument d;
    for (int i = 0; i < 14; ++i) {
        const int type = random.bounded(3);
        const int x = random.bounded(20, Width - 80), y = random.bounded(20, Height - 80);
        const int w = random.bounded(20, 70), h = random.bounded(20, 70);
        if (type == Polygon) {
            QStringList xy;
            const int corners = random.bounded(3, 8);
            for (int k = 0; k < corners; ++k) {
                const double angle = 2 * M_PI * k / corners;
                const double r = random.bounded(15, 35);
                xy << QString::number(x + 35 + qRound(r * std::cos(angle)))
                   << QString::number(y + 35 + qRound(r * std::sin(angle)));
            }
            AddShape(d, type, xy.join(','));
        } else {
            AddShape(d, type,
                     QStringLiteral("%1,%2,%3,%2,%3,%4,%1,%4").arg(x).arg(y).arg(x + w).arg(y + h));
        }
    }
    return d;
}

} // namespace

// The tool windows: a map's HTML code shown in the format chosen and copied, tried in a
// browser, and read back into shapes with the import dialog's two options as a user ticks
// them; the link checker's pages; and the generated maps in the embedded browser, where each
// point goes to the area a visitor expects, the earlier shape winning where they overlap.
class TestToolWindows : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_dir.path());
        QCoreApplication::setOrganizationName(QStringLiteral("VantrelTest"));
        QImage picture(Width, Height, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        QVERIFY(picture.save(m_dir.filePath("pic.png")));
        m_view = std::make_unique<QWebEngineView>();
        m_view->resize(900, 700);
        m_view->show();
    }

    // A map of one old shape, its import dialog open.
    void init()
    {
        m_s = std::make_unique<Session>();
        AddShapeRow(Doc(), "1|50,50,60,50,60,60,50,60|old.htm|Old|||0|");
        Doc().DefURL = QStringLiteral("old.htm");
        Doc().MapName = QStringLiteral("Mine");
        m_s->dialog.show();
    }

    // Without a map only the classic code is offered, whatever format was chosen last; Copy
    // puts the whole of it on the clipboard.
    void codeWithoutAMapIsCopiedWhole()
    {
        MapFormatSetting::Save(MapFormat::Svg);
        const QString code =
            QStringLiteral("<area shape=\"rect\" coords=\"1,0,9,9\">\r\n").repeated(400) + "</map>";
        GeneratedCodeForm form(code, m_s->host.ui);
        MapFormatSetting::Save(MapFormat::Classic);
        QVERIFY(!form.findChild<QComboBox*>("cboFormat")->isEnabled());
        QCOMPARE(form.ShownCode(), code);
        QGuiApplication::clipboard()->setText(QStringLiteral("something else"));
        QTest::mouseClick(form.findChild<QPushButton*>("Command1"), Qt::LeftButton);
        QCOMPARE(QGuiApplication::clipboard()->text(), code);
        QTest::mouseClick(form.findChild<QPushButton*>("Command2"), Qt::LeftButton);
        QCOMPARE(
            m_s->host.ui.messageTexts(),
            QStringList(
                {"This is the HTML code for the image map.  Just copy and paste it into your HTML "
                 "document.  Note that you may want to change the SRC property of the IMG tag if "
                 "your image is located in a certain directory at your site.  Also, if you are "
                 "using an HTML editor and aren't too familiar with what to do, here are two "
                 "things you can do:\n\n1) Open up Notepad or Wordpad and load the *.htm or "
                 "*.html file.  Then go to the area where you want the picture to appear and paste "
                 "the code in.\n\n2) Many editors let you edit the code to the document manually, "
                 "I'm not sure what this feature is called in most, but if you are familiar with "
                 "it, you can do it that way too."}));
    }

    // The page's bytes are TestPage's to check; here, that the page is written and opened.
    void testPageOpensInTheBrowser()
    {
        ScriptedModalUi ui;
        const QString folder = m_dir.path() + QLatin1Char('/');
        const QString code = QStringLiteral("<map name=\"MyMap\">\r\n</map>");
        MapTest::Run(code, ui, folder);
        QVERIFY(ui.messages.isEmpty());
        ui.desktopOpens = false;
        const QString page = MapTest::Run(code, ui, folder);
        QCOMPARE(page, folder + QStringLiteral("Image_Map_Test.htm"));
        QVERIFY(ReadBytes(page).contains(code.toLatin1()));
        QCOMPARE(ui.opened, QStringList({page, page}));
        QCOMPARE(ui.messageTexts(),
                 QStringList({"There was an error while trying to open the default browser."}));
        // Beside it, where the page is, to open by hand.
        QCOMPARE(ui.messages.front().detail, MapTest::PageWrittenDetail(page));
    }

    void choosingAFormatShowsAndCopiesIt()
    {
        ShapeCanvas& map = m_s->map;
        MapDocument& d = Doc();
        AddShapeRow(d, "1|10,20,30,20,30,40,10,40|a.htm?x&y|Ann|||0|");
        const QString classic =
            MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Viewing);
        MapFormatSetting::Save(MapFormat::Classic);

        {
            GeneratedCodeForm form(classic, m_s->host.ui);
            form.SetFormats(GeneratedCodeForm::FormatsOf(map));
            auto* text = form.findChild<QPlainTextEdit*>("Text1");
            auto* format = form.findChild<QComboBox*>("cboFormat");
            QVERIFY(format && format->isEnabled());
            QCOMPARE(format->currentText(), QStringLiteral("Classic"));
            QCOMPARE(text->toPlainText(), QString(classic).replace("\r\n", "\n"));

            // Choose HTML5 with the keyboard, as a user would.
            format->setFocus();
            QTest::keyClick(format, Qt::Key_Down);
            QCOMPARE(format->currentText(), QStringLiteral("HTML5"));
            QVERIFY(text->toPlainText().contains("href=\"a.htm?x&amp;y\""));
            QTest::mouseClick(form.findChild<QPushButton*>("Command1"), Qt::LeftButton);
            QCOMPARE(
                QGuiApplication::clipboard()->text(),
                FormattedMapCode::Generate(d, MapFormat::Html5, MapCodeGenerator::Form::Viewing)
                    .Text);
        }
        QCOMPARE(MapFormatSetting::Load(), MapFormat::Html5);

        // The next window opens on the remembered format.
        GeneratedCodeForm again(classic, m_s->host.ui);
        again.SetFormats(GeneratedCodeForm::FormatsOf(map));
        QCOMPARE(again.findChild<QComboBox*>("cboFormat")->currentText(), QStringLiteral("HTML5"));
        again.ShowFormat(MapFormat::Svg);
        QVERIFY(again.ShownCode().contains("<svg "));
        again.ShowFormat(MapFormat::Classic);
        QCOMPARE(again.ShownCode(), classic);
        MapFormatSetting::Save(MapFormat::Classic);
    }

    // The options start off: the dialog converts as it always did, tags of any case, text
    // lower-cased.
    void optionsStartOffAndReadUpperCaseTags()
    {
        auto* keep = m_s->dialog.findChild<QCheckBox*>("chkKeepText");
        auto* add = m_s->dialog.findChild<QCheckBox*>("chkAddShapes");
        QCOMPARE(keep->text(), QStringLiteral("&Keep text as written"));
        QCOMPARE(add->text(), QStringLiteral("&Add to the current shapes"));
        QVERIFY(!keep->isChecked() && !add->isChecked());
        Generate(QStringLiteral(
            "<MAP NAME=\"Shop\">\n"
            "<AREA SHAPE=RECT COORDS=\"10,20,60,80\" HREF=\"Pages/Shoes.HTM\" "
            "ALT=\"Shoes\">\n<AREA SHAPE=\"CIRCLE\" COORDS=\"100,100,25\" HREF=\"a.htm\">\n"
            "<AREA SHAPE=\"DEFAULT\" COORDS=\"0,0,9,9\" HREF=\"Index.HTM\" ALT=\"Home\">\n</MAP>"));
        QVERIFY(m_s->host.ui.messages.isEmpty());
        QVERIFY(!m_s->dialog.isVisible());
        QCOMPARE(Doc().ItemCount(), std::int16_t(1));
        QCOMPARE(Doc().Shape(0).GetShapeType(), std::int16_t(Rectangle));
        QCOMPARE(Doc().GetURL(0), QStringLiteral("pages/shoes.htm"));
        QCOMPARE(Doc().GetComment(0), QStringLiteral("shoes"));
        QCOMPARE(Doc().DefURL, QStringLiteral("index.htm"));
        QCOMPARE(Doc().DefComment, QStringLiteral("home"));
    }

    void importRefusalKeepsDialogAndMap_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<bool>("add");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("detail");
        const QString area = QStringLiteral("<area shape=\"rect\" coords=\"1,2,3,4\">");
        const QString error = QStringLiteral("There was an error, please check the HTML code "
                                             "you paste in.");
        const QString noCoords = QStringLiteral("Area 1 of the map: it has no coords.");
        QTest::newRow("no map tag") << area << false << "Map tag not found."
                                    << "";
        QTest::newRow("no coords")
            << "<map name=\"m\"><area shape=\"rect\"></map>" << false << error << noCoords;
        QTest::newRow("single quotes")
            << "<map name=\"m\"><area shape='rect' coords='1,2,3,4'></map>" << false << error
            << "Area 1 of the map: a value in it is not closed with a double quote.\n\n" +
                   MapImport::KeepTextHint();
        QTest::newRow("no coords, adding")
            << "<map name=\"m\"><area shape=\"rect\"></map>" << true << error << noCoords;
        QTest::newRow("the paste hint") << "Paste HTML Code Here\n"
                                        << false << "Map tag not found."
                                        << "";
    }

    void importRefusalKeepsDialogAndMap()
    {
        QFETCH(QString, code);
        QFETCH(bool, add);
        QFETCH(QString, message);
        QFETCH(QString, detail);
        Generate(code, false, add);
        QCOMPARE(m_s->host.ui.messageTexts(), QStringList({message}));
        QCOMPARE(m_s->host.ui.messages.front().detail, detail);
        QVERIFY(m_s->dialog.isVisible());
        QCOMPARE(m_s->dialog.findChild<QPlainTextEdit*>("Text1")->toPlainText(), code);
        QCOMPARE(Doc().ItemCount(), std::int16_t(0));
        QCOMPARE(Doc().GetURL(0), QStringLiteral("old.htm"));
        QCOMPARE(Doc().DefURL, QStringLiteral("old.htm"));
    }

    // The hint goes with the first paste or keystroke, as a user expects of it.
    void pastedCodeReplacesTheHint()
    {
        auto* text = m_s->dialog.findChild<QPlainTextEdit*>("Text1");
        QCOMPARE(text->toPlainText(), QStringLiteral("Paste HTML Code Here\n"));
        QGuiApplication::clipboard()->setText(QStringLiteral("<map name=\"m\">"));
        QTest::keyClick(text, Qt::Key_V, Qt::ControlModifier);
        QTest::keyClicks(text, QStringLiteral("</map>"));
        QCOMPARE(text->toPlainText(), QStringLiteral("<map name=\"m\"></map>"));
        // Tab goes on to the options; Ctrl+Enter generates (here: refused, no area).
        QVERIFY(QTest::qWaitForWindowActive(&m_s->dialog));
        text->setFocus();
        QTest::keyClick(text, Qt::Key_Tab);
        QCOMPARE(text->toPlainText(), QStringLiteral("<map name=\"m\"></map>"));
        QCOMPARE(QApplication::focusWidget(), m_s->dialog.findChild<QCheckBox*>("chkKeepText"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(m_s->host.ui.messageTexts(), QStringList{"No shape objects found."});
    }

    // What the lossless reading keeps is its own test's; here, that the option reaches it.
    void keepTextKeepsCase()
    {
        Generate("<map name=\"Nav\"><area shape=rect coords=1,2,30,40 href=\"Page.HTM\"></map>",
                 true, false);
        QCOMPARE(m_s->dialog.result(), int(QDialog::Accepted));
        QCOMPARE(Doc().ItemCount(), std::int16_t(0));
        QCOMPARE(Doc().Shape(0).URL, QStringLiteral("Page.HTM"));
        QVERIFY(m_s->host.ui.messages.isEmpty());
    }

    void addKeepsTheCurrentShapes()
    {
        Generate("<map name=\"x\"><area shape=\"rect\" coords=\"1,1,5,5\" href=\"New.htm\"></map>",
                 false, true);
        QCOMPARE(Doc().ItemCount(), std::int16_t(1));
        QCOMPARE(Doc().Shape(0).URL, QStringLiteral("old.htm"));
        QCOMPARE(Doc().Shape(1).URL, QStringLiteral("new.htm")); // classic reading: lower case
        QCOMPARE(Doc().MapName, QStringLiteral("Mine"));
    }

    void theUserPicksOneOfSeveralMaps()
    {
        const QString twoMaps =
            "<map name=\"Top\"><area shape=rect coords=1,1,5,5 href=A.htm></map><MAP "
            "NAME=\"Bottom\"><AREA SHAPE=CIRCLE COORDS=20,20,5 HREF=B.htm><AREA SHAPE=RECT "
            "COORDS=0,0,9,9 HREF=C.htm></MAP>";
        // Cancelling the pick, or a failure, leaves the map and the dialog as they were.
        m_s->host.ui.choiceAnswers.enqueue(std::nullopt);
        Generate(twoMaps, true, false);
        Generate("<map name=x><area shape=rect coords=\"1,x\"></map>", true, false);
        QCOMPARE(m_s->host.ui.messageTexts(),
                 QStringList({"Area #1 has coordinates that cannot be read: \"1,x\"."}));
        QCOMPARE(Doc().ItemCount(), std::int16_t(0));
        QCOMPARE(Doc().Shape(0).URL, QStringLiteral("old.htm"));
        QVERIFY(m_s->dialog.isVisible());

        m_s->host.ui.choiceAnswers.enqueue(1);
        Generate(twoMaps, true, true);
        QCOMPARE(m_s->host.ui.choices,
                 QStringList(2, ImportWithOptions::ChooseMapPrompt() +
                                    "|Convert HTML to Map|Top (1 areas);Bottom (2 areas)"));
        QCOMPARE(Doc().ItemCount(), std::int16_t(2));
        QCOMPARE(Doc().Shape(1).URL, QStringLiteral("B.htm"));
        QCOMPARE(Doc().Shape(2).URL, QStringLiteral("C.htm"));
    }

    void pointsReachTheirAreas_data()
    {
        QTest::addColumn<int>("format");
        QTest::addColumn<quint32>("seed");
        for (MapFormat format : {MapFormat::Html5, MapFormat::Svg}) {
            QTest::addRow("%s, overlapping shapes", qPrintable(MapFormats::Name(format)))
                << int(format) << 0u;
            for (quint32 seed : {7u, 1234u})
                QTest::addRow("%s, random map %u", qPrintable(MapFormats::Name(format)), seed)
                    << int(format) << seed;
        }
    }

    void pointsReachTheirAreas()
    {
        QFETCH(int, format);
        QFETCH(quint32, seed);
        MapDocument d;
        if (seed == 0) {
            AddShape(d, Rectangle, "20,20,160,20,160,140,20,140");
            AddShape(d, Circle, "120,60,220,60,220,160,120,160");    // half under the rectangle
            AddShape(d, Rectangle, "40,40,80,40,80,80,40,80");       // wholly under it: never wins
            AddShape(d, Polygon, "180,130,380,170,300,280,170,260"); // partly under the circle
            d.DefURL = QStringLiteral("rest.htm");
        } else {
            d = RandomMap(seed);
        }
        d.SWidth = Width;
        d.SHeight = Height;
        d.ImageName = QStringLiteral("pic.png");
        d.MapName = QStringLiteral("Hits");
        d.MapStyle = 1; // effects must not get in the way

        QStringList expected;
        QList<QPoint> points = ClickablePoints(d, expected);
        if (seed == 0) {
            QCOMPARE(points.size(), 3); // shape 2 is covered
            // Where the rectangle and the circle overlap, the rectangle (written first) wins;
            // where the circle and the polygon do, the circle.
            points << QPoint(140, 100) << QPoint(190, 140) << QPoint(390, 10);
            expected << QStringLiteral("s0.htm") << QStringLiteral("s1.htm")
                     << QStringLiteral("rest.htm");
        }

        const MapFormat chosen = static_cast<MapFormat>(format);
        const FormattedMapCode code =
            FormattedMapCode::Generate(d, chosen, MapCodeGenerator::Form::Viewing);
        QVERIFY(Load(code.TestPageText(chosen)));
        QCOMPARE(HrefsAt(points), expected);

        if (chosen == MapFormat::Svg) {
            // The overlay scales with the picture.
            Run(QStringLiteral("document.querySelector('.map-Hits').style.width = '%1px';")
                    .arg(Width / 2));
            QCOMPARE(HrefsAt(points), expected);
        }
    }

    void opensOnTheHelpPageAndEditsTheList()
    {
        FakeCanvasHost host;
        ShapeCanvas map(host);
        MapDocument& doc = map.Document();
        AddLinks(doc, {"first.htm", ""}, QStringLiteral("home.htm"));
        doc.ImagePath = QStringLiteral("/pics/");
        URLChecker checker(map, host.ui);
        auto* browser = checker.findChild<QWebEngineView*>("WebBrowser1");
        QSignalSpy loaded(browser, &QWebEngineView::loadFinished);
        checker.show();
        const QString page = Module1::WritableProgramFolder() + URLHelpPage::FileName();
        QTRY_VERIFY_WITH_TIMEOUT(!loaded.isEmpty(), 60000);
        QCOMPARE(loaded.first().first().toBool(), true);
        QCOMPARE(browser->url(), QUrl::fromLocalFile(page));
        QCOMPARE(
            ReadBytes(page),
            QByteArray("<HTML><HEAD><TITLE>About URL Testing</TITLE></HEAD>\r\n"
                       "<BODY BGCOLOR=\"#FFFFFF\" TEXT=\"#000000\">\r\n"
                       "This feature allows you to check and see if the URLs you set in the "
                       "shapes are correct (must be connected to the Internet for this feature "
                       "to work).  The Base URL is your site's location.  It's used with any "
                       "URLs that aren't complete (ones that don't give the complete path).\r\n"
                       "</BODY></HTML>\r\n"));

        // Shapes first, then the default area.
        auto* combo = checker.findChild<QComboBox*>("URLCombo");
        QCOMPARE(combo->count(), 3);
        QCOMPARE(combo->itemText(0), QStringLiteral("first.htm"));
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
        // Check opens the link resolved against the typed base, or else the picture's folder.
        // Nobody listens on port 1: the browser's error page is all there is to see.
        for (const auto& [base, address] :
             {std::pair<QString, QString>{"http://127.0.0.1:1/d/",
                                          "http://127.0.0.1:1/d/fixed.htm"},
              {"", QUrl::fromLocalFile("/pics/fixed.htm").toString()}}) {
            checker.findChild<QLineEdit*>("txtURL")->setText(base);
            checker.Check();
            QCOMPARE(checker.LastAddress(), address);
            QTRY_COMPARE(browser->url(), QUrl(address));
        }

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

    void checkAllFillsTheTable()
    {
        LocalHttpServer server;
        FakeCanvasHost host;
        ShapeCanvas map(host);
        MapDocument& doc = map.Document();
        AddLinks(doc, {"ok", "missing", "error", "mailto:ann@x.org", "my page.htm"}, QString());
        URLChecker checker(map, host.ui);
        checker.show();
        auto* table = checker.findChild<QTableView*>("LinkTable");
        auto* summary = checker.findChild<QLabel*>("lblSummary");
        auto* checkAll = checker.findChild<QPushButton*>("btnCheckAll");
        auto* base = checker.findChild<QLineEdit*>("txtURL");
        QCOMPARE(table->model()->rowCount(), 6);

        // Typing the base resolves the rows again, still without asking anybody.
        QTest::keyClicks(base, server.Url("/").toString());
        QTRY_COMPARE(TableText(*table, 0, LinkTableModel::AddressColumn),
                     server.Url("/ok").toString());
        QTest::qWait(100);
        QCOMPARE(server.TotalRequests(), 0);
        QCOMPARE(summary->text(), QStringLiteral("6 links: 1 broken, 2 not checked, 3 to check."));

        QTest::mouseClick(checkAll, Qt::LeftButton);
        QVERIFY(!checkAll->isEnabled());
        QTRY_VERIFY_WITH_TIMEOUT(checkAll->isEnabled(), 20000);
        // The statuses themselves are the link table's test.
        const QStringList expected{
            "OK 200",
            "Broken 404",
            "Server error 500",
            "Not checked (mailto)",
            "Malformed: space in address",
            "No address",
        };
        for (int row = 0; row < expected.size(); ++row)
            QCOMPARE(TableText(*table, row, LinkTableModel::StatusColumn), expected[row]);
        QCOMPARE(summary->text(), QStringLiteral("6 links: 3 broken, 1 OK, 2 not checked."));

        // Broken only: the three, in order; choosing one selects it in the list too.
        checker.findChild<QCheckBox*>("chkBrokenOnly")->setChecked(true);
        QCOMPARE(table->model()->rowCount(), 3);
        QCOMPARE(TableText(*table, 0, LinkTableModel::UrlColumn), QStringLiteral("missing"));
        table->setCurrentIndex(table->model()->index(1, 0));
        auto* combo = checker.findChild<QComboBox*>("URLCombo");
        QCOMPARE(combo->currentIndex(), 2);

        // Edit writes the answer back and checks that row again; fixed, it leaves the list.
        host.ui.promptAnswers.enqueue(QStringLiteral("ok"));
        checker.Edit();
        QCOMPARE(host.ui.prompts.last(), QStringLiteral("Changing URL to...|Change URL|error"));
        QCOMPARE(doc.GetURL(2), QStringLiteral("ok"));
        QTRY_COMPARE(checker.Links().Status(2).Text(), QStringLiteral("OK 200"));
        QTRY_COMPARE(table->model()->rowCount(), 2);
        QTRY_COMPARE(summary->text(), QStringLiteral("6 links: 2 broken, 2 OK, 2 not checked."));
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

private:
    // Pastes the code into the dialog, sets the options and generates.
    void Generate(const QString& code, bool keepText = false, bool add = false)
    {
        m_s->dialog.findChild<QPlainTextEdit*>("Text1")->setPlainText(code);
        auto* keep = m_s->dialog.findChild<QCheckBox*>("chkKeepText");
        auto* adding = m_s->dialog.findChild<QCheckBox*>("chkAddShapes");
        if (keep->isChecked() != keepText)
            QTest::mouseClick(keep, Qt::LeftButton, {}, QPoint(5, keep->height() / 2));
        if (adding->isChecked() != add)
            QTest::mouseClick(adding, Qt::LeftButton, {}, QPoint(5, adding->height() / 2));
        QTest::mouseClick(m_s->dialog.findChild<QPushButton*>("Command1"), Qt::LeftButton);
    }
    MapDocument& Doc() { return m_s->map.Document(); }

    struct Session
    {
        FakeCanvasHost host;
        ShapeCanvas map{host};
        ConvertHTMLtoMap dialog{map, host.ui};
    };
    bool Load(const QString& page)
    {
        QSignalSpy loaded(m_view.get(), &QWebEngineView::loadFinished);
        m_view->setHtml(page, QUrl::fromLocalFile(m_dir.path() + QLatin1Char('/')));
        return loaded.wait(60000) && loaded.first().first().toBool();
    }
    // The script's value as text, once the page has answered.
    QString Run(const QString& script)
    {
        QString result;
        bool done = false;
        m_view->page()->runJavaScript(script, [&](const QVariant& value) {
            result = value.toString();
            done = true;
        });
        return QTest::qWaitFor([&] { return done; }, 30000) ? result : QStringLiteral("no answer");
    }
    // The href of the area or link under each point (picture pixels scaled to the
    // picture's current size on the page).
    QStringList HrefsAt(const QList<QPoint>& points)
    {
        QJsonArray xy;
        for (const QPoint& point : points)
            xy.append(QJsonArray{point.x(), point.y()});
        const QString result =
            Run(QStringLiteral(
                    "(function(points){"
                    "var r = document.querySelector('img').getBoundingClientRect();"
                    "return JSON.stringify(points.map(function(p){"
                    "  var e = document.elementFromPoint(r.left + (p[0] + 0.5) * r.width / %1,"
                    "                                    r.top + (p[1] + 0.5) * r.height / %2);"
                    "  var link = e && e.closest('area, a');"
                    "  return link ? link.getAttribute('href') : (e ? e.tagName : 'nothing');"
                    "}));})(%3)")
                    .arg(Width)
                    .arg(Height)
                    .arg(QString::fromUtf8(QJsonDocument(xy).toJson(QJsonDocument::Compact))));
        QStringList hrefs; // none when the page did not answer
        for (const QJsonValue& v : QJsonDocument::fromJson(result.toUtf8()).array())
            hrefs << v.toString();
        return hrefs;
    }

    std::unique_ptr<Session> m_s;
    QTemporaryDir m_dir;
    std::unique_ptr<QWebEngineView> m_view;
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
    TestToolWindows test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_toolwindows.moc"
