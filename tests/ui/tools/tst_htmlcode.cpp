#include "FakeCanvasHost.h"
#include "FileBytes.h"
#include "core/interchange/MapTest.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/tools/ConvertHTMLtoMap.h"
#include "ui/tools/GeneratedCodeForm.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

// A map's HTML code: shown and copied, tried in a browser, and read back into shapes.
class TestHtmlCode : public QObject
{
    Q_OBJECT
private slots:
    void init() { m_s = std::make_unique<Session>(); }

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

    void importReadsUpperCaseTags()
    {
        Import(QStringLiteral(
            "<MAP NAME=\"Shop\">\n"
            "<AREA SHAPE=RECT COORDS=\"10,20,60,80\" HREF=\"Pages/Shoes.HTM\" "
            "ALT=\"Shoes\">\n<AREA SHAPE=\"CIRCLE\" COORDS=\"100,100,25\" HREF=\"a.htm\">\n"
            "<AREA SHAPE=\"DEFAULT\" COORDS=\"0,0,9,9\" HREF=\"Index.HTM\" ALT=\"Home\">\n</MAP>"));
        QVERIFY(m_s->host.ui.messages.isEmpty());
        QVERIFY(!m_s->dialog.isVisible());
        const MapDocument& doc = m_s->map.Document();
        QCOMPARE(doc.ItemCount(), std::int16_t(1));
        QCOMPARE(doc.Shape(0).GetShapeType(), std::int16_t(Rectangle));
        QCOMPARE(doc.GetURL(0), QStringLiteral("pages/shoes.htm"));
        QCOMPARE(doc.GetComment(0), QStringLiteral("shoes"));
        QCOMPARE(doc.Shape(1).GetShapeType(), std::int16_t(Circle));
        QCOMPARE(doc.DefURL, QStringLiteral("index.htm"));
        QCOMPARE(doc.DefComment, QStringLiteral("home"));
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
        Import(code);
        QCOMPARE(m_s->host.ui.messageTexts(), QStringList({message}));
        QVERIFY(m_s->dialog.isVisible());
        QCOMPARE(m_s->dialog.findChild<QPlainTextEdit*>("Text1")->toPlainText(), code);
        const MapDocument& doc = m_s->map.Document();
        QCOMPARE(doc.ItemCount(), std::int16_t(0));
        QCOMPARE(doc.GetURL(0), QStringLiteral("old.htm"));
        QCOMPARE(doc.DefURL, QStringLiteral("old.htm"));
    }

private:
    // Pastes Code into the import dialog of a map holding one old shape and generates.
    void Import(const QString& Code)
    {
        MapDocument& doc = m_s->map.Document();
        doc.Shape(doc.AddShape()).SetInfo(doc.Surface(), 0, Polygon, 1.0, 5, 5);
        doc.SetURL(0, QStringLiteral("old.htm"));
        doc.DefURL = QStringLiteral("old.htm");
        m_s->dialog.show();
        m_s->dialog.findChild<QPlainTextEdit*>("Text1")->setPlainText(Code);
        QTest::mouseClick(m_s->dialog.findChild<QPushButton*>("Command1"), Qt::LeftButton);
    }

    struct Session
    {
        FakeCanvasHost host;
        ShapeCanvas map{host};
        ConvertHTMLtoMap dialog{map, host.ui};
    };
    std::unique_ptr<Session> m_s;
};

QTEST_MAIN(TestHtmlCode)
#include "tst_htmlcode.moc"
