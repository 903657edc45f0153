#include "ScriptedModalUi.h"
#include "canvas/OpenMapCount.h"
#include "canvas/ShapeCanvas.h"
#include "frame/MDIForm1.h"
#include "frame/Module1.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <memory>

// The map output and tool windows as the main window's commands open them.
class TestFrameTools : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void generateCodeShowsTheMapsCode();
    void customZoomZoomsTheActiveMap();
    void imageSizeResizesTheActiveMap();
    void gridOptionsStoreTheGrid();
    void convertReplacesTheShapes();
    void urlCheckerEditsTheActiveMap();
    void testMapOpensTheTestPage();

private:
    ShapeCanvas* NewMapWithShape();
    void Trigger(const char* name) const
    {
        QAction* action = m_frame->findChild<QAction*>(QString::fromLatin1(name));
        QVERIFY2(action != nullptr, name);
        action->trigger();
    }
    template <typename T> static T* Child(QDialog& dialog, const char* name)
    {
        T* child = dialog.findChild<T*>(QString::fromLatin1(name));
        if (child == nullptr)
            qFatal("no child %s", name);
        return child;
    }
    static void Click(QDialog& dialog, const char* name)
    {
        QTest::mouseClick(Child<QPushButton>(dialog, name), Qt::LeftButton);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ScriptedModalUi> m_ui;
    std::unique_ptr<MDIForm1> m_frame;
    std::function<void(QDialog&)> m_dialogScript;
};

void TestFrameTools::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_ui = std::make_unique<ScriptedModalUi>();
    m_frame = std::make_unique<MDIForm1>(*m_ui);
    m_dialogScript = [](QDialog& dialog) { dialog.reject(); };
    m_frame->ExecDialog = [this](QDialog& dialog) {
        dialog.show();
        m_dialogScript(dialog);
        return dialog.result();
    };
    m_frame->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_frame.get()));
}

void TestFrameTools::cleanup()
{
    for (int i = 0; i < 20; ++i)
        m_ui->answers.enqueue(true);
    m_frame.reset();
    m_ui.reset();
    m_dir.reset();
    QCOMPARE(OpenMapCount, std::int16_t(0));
}

ShapeCanvas* TestFrameTools::NewMapWithShape()
{
    QImage image(400, 300, QImage::Format_RGB32);
    image.fill(QColor(200, 220, 240));
    const QString path = m_dir->filePath(QStringLiteral("pic.png"));
    if (!image.save(path))
        qFatal("cannot write the test picture");
    m_ui->pictures.enqueue(path);
    Trigger("NewMap");
    ShapeCanvas* map = m_frame->ActiveMapWindow();
    if (map == nullptr)
        qFatal("no map window");
    MapDocument& doc = map->Document();
    const std::int16_t i = doc.AddShape();
    doc.Shape(i).SetInfo(doc.Surface(), doc.NonFocusColor, Rectangle, 1.0, 10, 10);
    doc.Shape(i).MoveVertex(2, 60, 50);
    doc.SetURL(i, QStringLiteral("shop.htm"));
    return map;
}

void TestFrameTools::generateCodeShowsTheMapsCode()
{
    NewMapWithShape();
    QString shown;
    m_dialogScript = [&shown](QDialog& dialog) {
        shown = Child<QPlainTextEdit>(dialog, "Text1")->toPlainText();
        Click(dialog, "Command3");
    };
    Trigger("generatecode");
    QVERIFY(shown.startsWith(QStringLiteral("<map name=\"MyMap\">\n")));
    QVERIFY(shown.contains(QStringLiteral("href=\"shop.htm\"")));
}

void TestFrameTools::customZoomZoomsTheActiveMap()
{
    ShapeCanvas* map = NewMapWithShape();
    m_dialogScript = [](QDialog& dialog) {
        Child<QLineEdit>(dialog, "txtZooming")->setText(QStringLiteral("155"));
        Click(dialog, "Command1");
    };
    Trigger("CustomZoom");
    QCOMPARE(map->Document().ZoomLevel, 1.6);
    QCOMPARE(m_frame->findChild<QLabel*>("StatusPanel2")->text(), QStringLiteral("Zoom: 160%"));
}

void TestFrameTools::imageSizeResizesTheActiveMap()
{
    ShapeCanvas* map = NewMapWithShape();
    map->SetZoomLevel(1.5);
    m_dialogScript = [](QDialog& dialog) {
        Child<QLineEdit>(dialog, "txtWidth")->setText(QStringLiteral("200"));
        Child<QLineEdit>(dialog, "txtHeight")->setText(QStringLiteral("150"));
        Click(dialog, "Command1");
    };
    Trigger("theimagesize");
    QCOMPARE(map->Document().SWidth, 200);
    QCOMPARE(map->Document().SHeight, 150);
    QCOMPARE(map->Document().ZoomLevel, 1.0);
    QCOMPARE(m_frame->findChild<QLabel*>("StatusPanel2")->text(), QStringLiteral("Zoom: 100%"));
}

void TestFrameTools::gridOptionsStoreTheGrid()
{
    ShapeCanvas* map = NewMapWithShape();
    m_dialogScript = [](QDialog& dialog) {
        Child<QComboBox>(dialog, "ImageCombo1")->setCurrentIndex(3);
        Child<QScrollBar>(dialog, "WidthSize")->setValue(40);
        Child<QCheckBox>(dialog, "Check2")->click();
        Click(dialog, "Command1");
    };
    Trigger("Gridoptions");
    const MapDocument& doc = map->Document();
    QCOMPARE(doc.GridColor, RGBColor(255, 0, 0));
    QCOMPARE(doc.GridSpacing, 40.0);
    QVERIFY(doc.ShouldDrawGrid);
    QVERIFY(doc.GridSnap);
}

void TestFrameTools::convertReplacesTheShapes()
{
    ShapeCanvas* map = NewMapWithShape();
    m_dialogScript = [](QDialog& dialog) {
        Child<QPlainTextEdit>(dialog, "Text1")
            ->setPlainText(QStringLiteral(
                "<map name=\"m\"><area shape=\"circle\" coords=\"50,50,20\" href=\"A.htm\">"
                "<area shape=\"polygon\" coords=\"1,1,30,1,30,30,\" href=\"b.htm\"></map>"));
        Click(dialog, "Command1");
    };
    Trigger("ConvertToShapes");
    QVERIFY(m_ui->messages.isEmpty());
    const MapDocument& doc = map->Document();
    QCOMPARE(doc.ItemCount(), std::int16_t(1));
    QCOMPARE(doc.GetURL(0), QStringLiteral("a.htm"));
    QCOMPARE(doc.Shape(1).GetShapeType(), std::int16_t(Polygon));
}

void TestFrameTools::urlCheckerEditsTheActiveMap()
{
    ShapeCanvas* map = NewMapWithShape();
    m_ui->promptAnswers.enqueue(QStringLiteral("index.htm"));
    m_dialogScript = [](QDialog& dialog) {
        QComboBox* list = Child<QComboBox>(dialog, "URLCombo");
        QCOMPARE(list->count(), 2);
        list->setCurrentIndex(1);
        Click(dialog, "Command4");
        Click(dialog, "Command3");
    };
    Trigger("mnuURLChecker");
    QCOMPARE(map->Document().DefURL, QStringLiteral("index.htm"));
    QCOMPARE(map->Document().GetURL(0), QStringLiteral("shop.htm"));
}

void TestFrameTools::testMapOpensTheTestPage()
{
    NewMapWithShape();
    const QString page = Module1::WritableProgramFolder() + QStringLiteral("Image_Map_Test.htm");
    Trigger("mnuTestMap");
    QCOMPARE(m_ui->opened, QStringList({page}));
    QFile file(page);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("href=\"shop.htm\""));
}

int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    TestFrameTools test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_frametools.moc"
