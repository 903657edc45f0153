#include "FakeCanvasHost.h"
#include "canvas/ShapeCanvas.h"
#include "frame/Module1.h"
#include "interchange/MapTestCommand.h"

#include <QFile>
#include <QTest>
#include <memory>

class TestMapTestCommand : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void writesTheMapsTestCodeAndOpensIt();
    void emptyMapStopsAfterItsMessage();

private:
    QString Page() const
    {
        return Module1::WritableProgramFolder() + QStringLiteral("Image_Map_Test.htm");
    }

    std::unique_ptr<FakeCanvasHost> m_host;
    std::unique_ptr<ShapeCanvas> m_map;
};

void TestMapTestCommand::init()
{
    m_host = std::make_unique<FakeCanvasHost>();
    m_map = std::make_unique<ShapeCanvas>(*m_host);
    m_host->active = m_map.get();
    QImage picture(120, 90, QImage::Format_RGB32);
    picture.fill(Qt::white);
    m_map->SetNewPicture(picture, QStringLiteral("/maps/pic.gif"));
    QFile::remove(Page());
}

void TestMapTestCommand::cleanup()
{
    m_map.reset();
    m_host.reset();
    QFile::remove(Page());
}

void TestMapTestCommand::writesTheMapsTestCodeAndOpensIt()
{
    MapDocument& doc = m_map->Document();
    const std::int16_t i = doc.AddShape();
    doc.Shape(i).SetInfo(doc.Surface(), doc.NonFocusColor, Rectangle, 1.0, 10, 20);
    doc.Shape(i).MoveVertex(2, 50, 60);
    doc.SetURL(i, QStringLiteral("shop.htm"));
    MapTestCommand::Run(*m_map, m_host->ui);
    QCOMPARE(m_host->ui.opened, QStringList({Page()}));
    QVERIFY(m_host->ui.messages.isEmpty());
    QFile file(Page());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    QVERIFY(text.startsWith("<HTML><HEAD><TITLE>This Is A Test</TITLE></HEAD>\r\n"
                            "<BODY BGCOLOR=\"#FFFFFF\">\r\n<map name=\"MyMap\">"));
    QVERIFY(text.contains("href=\"shop.htm\""));
    // The test form points at the picture itself, not at a name on a web site.
    QVERIFY(text.contains("src=\"file:///maps/pic.gif\""));
    QVERIFY(text.endsWith("\r\n</BODY></HTML>\r\n"));
}

void TestMapTestCommand::emptyMapStopsAfterItsMessage()
{
    MapTestCommand::Run(*m_map, m_host->ui);
    QCOMPARE(m_host->ui.messageTexts(), QStringList({"No shape areas have been created."}));
    QVERIFY(m_host->ui.opened.isEmpty());
    QVERIFY(!QFile::exists(Page()));
}

QTEST_MAIN(TestMapTestCommand)
#include "tst_maptestcommand.moc"
