#include "FakeCanvasHost.h"
#include "canvas/ShapeCanvas.h"
#include "interchange/ConvertHTMLtoMap.h"

#include <QGroupBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <memory>

class TestConvertDialog : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void startsWithThePasteHint();
    void upperCaseTagsBecomeShapes();
    void refusedCodeLeavesDialogOpenAndMapUnchanged_data();
    void refusedCodeLeavesDialogOpenAndMapUnchanged();
    void warningChangesNothing();
    void cancelCloses();

private:
    ConvertHTMLtoMap& Open();
    void Paste(const QString& code)
    {
        m_dialog->findChild<QPlainTextEdit*>("Text1")->setPlainText(code);
    }
    void Generate()
    {
        QTest::mouseClick(m_dialog->findChild<QPushButton*>("Command1"), Qt::LeftButton);
    }

    std::unique_ptr<FakeCanvasHost> m_host;
    std::unique_ptr<ShapeCanvas> m_map;
    std::unique_ptr<ConvertHTMLtoMap> m_dialog;
};

void TestConvertDialog::init()
{
    m_host = std::make_unique<FakeCanvasHost>();
    m_map = std::make_unique<ShapeCanvas>(*m_host);
    m_host->active = m_map.get();
    QImage picture(300, 200, QImage::Format_RGB32);
    picture.fill(Qt::white);
    m_map->SetNewPicture(picture, QStringLiteral("/maps/pic.png"));
    MapDocument& doc = m_map->Document();
    const std::int16_t i = doc.AddShape();
    doc.Shape(i).SetInfo(doc.Surface(), doc.NonFocusColor, Polygon, 1.0, 5, 5);
    doc.Shape(i).AddPointToShape(50, 5);
    doc.Shape(i).AddPointToShape(50, 50);
    doc.SetURL(i, QStringLiteral("old.htm"));
    doc.DefURL = QStringLiteral("old-default.htm");
}

void TestConvertDialog::cleanup()
{
    m_dialog.reset();
    m_map.reset();
    m_host.reset();
}

ConvertHTMLtoMap& TestConvertDialog::Open()
{
    m_dialog = std::make_unique<ConvertHTMLtoMap>(*m_map, m_host->ui);
    m_dialog->show();
    return *m_dialog;
}

void TestConvertDialog::startsWithThePasteHint()
{
    Open();
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Convert HTML to Map"));
    QCOMPARE(m_dialog->findChild<QGroupBox*>("Frame1")->title(), QStringLiteral("Code"));
    QCOMPARE(m_dialog->findChild<QPlainTextEdit*>("Text1")->toPlainText(),
             QStringLiteral("Paste HTML Code Here\n"));
    QCOMPARE(m_dialog->findChild<QPushButton*>("Command2")->text(), QStringLiteral("Warning!"));
    QCOMPARE(m_dialog->findChild<QPushButton*>("Command3")->text(), QStringLiteral("Cancel"));
}

void TestConvertDialog::upperCaseTagsBecomeShapes()
{
    Open();
    Paste(QStringLiteral("<MAP NAME=\"Shop\">\n"
                         "<AREA SHAPE=RECT COORDS=\"10,20,60,80\" HREF=\"Pages/Shoes.HTM\" "
                         "ALT=\"Shoes\">\n"
                         "<AREA SHAPE=\"CIRCLE\" COORDS=\"100,100,25\" HREF=\"HATS.htm\">\n"
                         "<AREA SHAPE=\"DEFAULT\" COORDS=\"0,0,300,200\" HREF=\"Index.HTM\" "
                         "ALT=\"Home\">\n"
                         "</MAP>"));
    Generate();
    QVERIFY(m_host->ui.messages.isEmpty());
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
    const MapDocument& doc = m_map->Document();
    QCOMPARE(doc.ItemCount(), std::int16_t(1));
    QCOMPARE(doc.Shape(0).GetShapeType(), std::int16_t(Rectangle));
    QCOMPARE(doc.GetURL(0), QStringLiteral("pages/shoes.htm"));
    QCOMPARE(doc.GetComment(0), QStringLiteral("shoes"));
    QCOMPARE(doc.Shape(0).GetPoint(0).x, 10);
    QCOMPARE(doc.Shape(0).GetPoint(2).y, 80);
    QCOMPARE(doc.Shape(1).GetShapeType(), std::int16_t(Circle));
    QCOMPARE(doc.GetURL(1), QStringLiteral("hats.htm"));
    QCOMPARE(doc.DefURL, QStringLiteral("index.htm"));
    QCOMPARE(doc.DefComment, QStringLiteral("home"));
}

void TestConvertDialog::refusedCodeLeavesDialogOpenAndMapUnchanged_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("message");
    QTest::newRow("no map tag") << "<area shape=\"rect\" coords=\"1,2,3,4\">"
                                << "Map tag not found.";
    QTest::newRow("no name") << "<map id=\"m\"><area shape=\"rect\" coords=\"1,2,3,4\"></map>"
                             << "Map name not found.";
    QTest::newRow("no areas") << "<map name=\"m\"></map>"
                              << "No shape objects found.";
    QTest::newRow("no coords") << "<map name=\"m\"><area shape=\"rect\" href=\"a.htm\"></map>"
                               << "There was an error, please check the HTML code you paste in.";
    QTest::newRow("the paste hint") << "Paste HTML Code Here\n"
                                    << "Map tag not found.";
}

void TestConvertDialog::refusedCodeLeavesDialogOpenAndMapUnchanged()
{
    QFETCH(QString, code);
    QFETCH(QString, message);
    Open();
    Paste(code);
    Generate();
    QCOMPARE(m_host->ui.messageTexts(), QStringList({message}));
    QCOMPARE(m_host->ui.messages[0].icon, ModalUi::Icon::Critical);
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(m_dialog->findChild<QPlainTextEdit*>("Text1")->toPlainText(), code);
    const MapDocument& doc = m_map->Document();
    QCOMPARE(doc.ItemCount(), std::int16_t(0));
    QCOMPARE(doc.Shape(0).GetShapeType(), std::int16_t(Polygon));
    QCOMPARE(doc.GetURL(0), QStringLiteral("old.htm"));
    QCOMPARE(doc.DefURL, QStringLiteral("old-default.htm"));
}

void TestConvertDialog::warningChangesNothing()
{
    Open();
    QTest::mouseClick(m_dialog->findChild<QPushButton*>("Command2"), Qt::LeftButton);
    QCOMPARE(m_host->ui.messageTexts(),
             QStringList({"This will clear all current shapes you have created. Plus it only "
                          "converts the shapes (and a few of their properties) in the code, it "
                          "will not load up the map."}));
    QCOMPARE(m_host->ui.messages[0].icon, ModalUi::Icon::Critical);
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(m_map->Document().ItemCount(), std::int16_t(0));
}

void TestConvertDialog::cancelCloses()
{
    Open();
    Paste(QStringLiteral("<map name=\"m\"><area shape=\"rect\" coords=\"1,2,30,40\"></map>"));
    QTest::mouseClick(m_dialog->findChild<QPushButton*>("Command3"), Qt::LeftButton);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
    QCOMPARE(m_map->Document().GetURL(0), QStringLiteral("old.htm"));
}

QTEST_MAIN(TestConvertDialog)
#include "tst_convertdialog.moc"
