#include "FakeCanvasHost.h"
#include "FileBytes.h"
#include "ShapeRow.h"
#include "core/interchange/FormattedMapCode.h"
#include "core/interchange/MapCodeGenerator.h"
#include "core/interchange/MapFormatSetting.h"
#include "core/interchange/MapTest.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/tools/ConvertHTMLtoMap.h"
#include "ui/tools/GeneratedCodeForm.h"
#include "ui/tools/ImportWithOptions.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

// A map's HTML code: shown in the format chosen and copied, tried in a browser, and read
// back into shapes with the import dialog's two options as a user ticks them.
class TestHtmlCode : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(m_settings.isValid());
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        QCoreApplication::setOrganizationName(QStringLiteral("VantrelTest"));
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

    void copyPutsTheWholeTextOnTheClipboard()
    {
        const QString code =
            QStringLiteral("<area shape=\"rect\" coords=\"1,0,9,9\">\r\n").repeated(400) + "</map>";
        GeneratedCodeForm form(code, m_s->host.ui);
        QGuiApplication::clipboard()->setText(QStringLiteral("something else"));
        QTest::mouseClick(form.findChild<QPushButton*>("Command1"), Qt::LeftButton);
        QCOMPARE(QGuiApplication::clipboard()->text(), code);
    }

    void whatNowText()
    {
        GeneratedCodeForm form(QStringLiteral("<map></map>"), m_s->host.ui);
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
        QTemporaryDir dir;
        ScriptedModalUi ui;
        const QString folder = dir.path() + QLatin1Char('/');
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
    }

    void choosingAFormatShowsAndCopiesIt()
    {
        ShapeCanvas& map = m_s->map;
        FakeCanvasHost& host = m_s->host;
        MapDocument& d = Doc();
        AddShapeRow(d, "1|10,20,30,20,30,40,10,40|a.htm?x&y|Ann|||0|");
        const QString classic =
            MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Viewing);
        MapFormatSetting::Save(MapFormat::Classic);

        {
            GeneratedCodeForm form(classic, host.ui);
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
            const QString html5 =
                FormattedMapCode::Generate(d, MapFormat::Html5, MapCodeGenerator::Form::Viewing)
                    .Text;
            QVERIFY(text->toPlainText().contains("href=\"a.htm?x&amp;y\""));
            QTest::mouseClick(form.findChild<QPushButton*>("Command1"), Qt::LeftButton);
            QCOMPARE(QGuiApplication::clipboard()->text(), html5);
        }
        QCOMPARE(MapFormatSetting::Load(), MapFormat::Html5);

        // The next window opens on the remembered format.
        GeneratedCodeForm again(classic, host.ui);
        again.SetFormats(GeneratedCodeForm::FormatsOf(map));
        QCOMPARE(again.findChild<QComboBox*>("cboFormat")->currentText(), QStringLiteral("HTML5"));
        again.ShowFormat(MapFormat::Svg);
        QVERIFY(again.ShownCode().contains("<svg "));
        again.ShowFormat(MapFormat::Classic);
        QCOMPARE(again.ShownCode(), classic);
        MapFormatSetting::Save(MapFormat::Classic);
    }

    void withoutAMapOnlyTheClassicCodeIsOffered()
    {
        MapFormatSetting::Save(MapFormat::Svg);
        GeneratedCodeForm form(QStringLiteral("<map name=\"x\">"), m_s->host.ui);
        QVERIFY(!form.findChild<QComboBox*>("cboFormat")->isEnabled());
        QCOMPARE(form.ShownCode(), QStringLiteral("<map name=\"x\">"));
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
        QTest::addColumn<QString>("message");
        const QString area = QStringLiteral("<area shape=\"rect\" coords=\"1,2,3,4\">");
        QTest::newRow("no map tag") << area << "Map tag not found.";
        QTest::newRow("no coords")
            << "<map name=\"m\"><area shape=\"rect\"></map>"
            << "There was an error, please check the HTML code you paste in.";
        QTest::newRow("the paste hint") << "Paste HTML Code Here\n"
                                        << "Map tag not found.";
    }

    void importRefusalKeepsDialogAndMap()
    {
        QFETCH(QString, code);
        QFETCH(QString, message);
        Generate(code);
        QCOMPARE(m_s->host.ui.messageTexts(), QStringList({message}));
        QVERIFY(m_s->dialog.isVisible());
        QCOMPARE(m_s->dialog.findChild<QPlainTextEdit*>("Text1")->toPlainText(), code);
        QCOMPARE(Doc().ItemCount(), std::int16_t(0));
        QCOMPARE(Doc().GetURL(0), QStringLiteral("old.htm"));
        QCOMPARE(Doc().DefURL, QStringLiteral("old.htm"));
    }

    // What the lossless reading keeps is its own test's; here, that the option reaches it.
    void keepTextKeepsCase()
    {
        Generate("<map name=\"Nav Bar\"><area shape=\"rect\" coords=\"1,2,30,40\" "
                 "href=\"Page.HTM\" title=\"Go &amp; see\"></map>",
                 true, false);
        QCOMPARE(m_s->dialog.result(), int(QDialog::Accepted));
        QCOMPARE(Doc().ItemCount(), std::int16_t(0));
        QCOMPARE(Doc().Shape(0).URL, QStringLiteral("Page.HTM"));
        QCOMPARE(Doc().Shape(0).StatusString, QStringLiteral("Go & see"));
        QCOMPARE(Doc().MapName, QStringLiteral("Nav Bar"));
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
    std::unique_ptr<Session> m_s;
    QTemporaryDir m_settings;
};

QTEST_MAIN(TestHtmlCode)
#include "tst_htmlcode.moc"
