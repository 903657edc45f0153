#include "FakeCanvasHost.h"
#include "canvas/CanvasSurface.h"
#include "canvas/OpenMapCount.h"
#include "canvas/ShapeCanvas.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

// The map window's commands that the frame calls: code generation, the URL checker,
// the shape commands and their faults.
class TestCanvasCommands : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<FakeCanvasHost> m_host;
    std::unique_ptr<ShapeCanvas> m_canvas;

    ShapeCanvas& NewCanvas()
    {
        m_canvas.reset();
        m_host = std::make_unique<FakeCanvasHost>();
        m_canvas = std::make_unique<ShapeCanvas>(*m_host);
        m_host->active = m_canvas.get();
        m_canvas->resize(500, 400);
        m_canvas->show();
        QImage picture(300, 200, QImage::Format_RGB32);
        picture.fill(Qt::white);
        m_canvas->SetNewPicture(picture, QStringLiteral("/maps/pic.gif"));
        return *m_canvas;
    }
    void AddRectangle(QPoint from, QPoint to)
    {
        m_host->mode = CanvasHost::DrawingMode::Rectangle;
        QTest::mousePress(&m_canvas->Surface(), Qt::LeftButton, {}, from);
        QTest::mouseMove(&m_canvas->Surface(), to);
        QTest::mouseRelease(&m_canvas->Surface(), Qt::LeftButton, {}, to);
        m_host->mode = CanvasHost::DrawingMode::Pointer;
    }

private slots:
    void cleanup()
    {
        m_canvas.reset();
        m_host.reset();
    }
    void newPictureSetsSizesAndNames();
    void unreadablePictureIsRefused();
    void generateCodeWithoutShapes();
    void generateCodeForms();
    void checkTheUrlsOpensChecker();
    void shapeCommands();
    void morphAndPasteKeepListWhole();
    void openMapFile();
    void openMissingMapChangesNothing();
    void saveAsksForNameOnce();
    void saveFailureKeepsCaption();
};

void TestCanvasCommands::newPictureSetsSizesAndNames()
{
    ShapeCanvas& c = NewCanvas();
    const MapDocument& d = c.Document();
    QCOMPARE(d.RealWidth, 300);
    QCOMPARE(d.SWidth, 300);
    QCOMPARE(d.RealHeight, 200);
    QCOMPARE(d.SHeight, 200);
    QCOMPARE(d.ZoomLevel, 1.0);
    QCOMPARE(d.ImageName, QStringLiteral("pic.gif"));
    QCOMPARE(d.ImagePath, QStringLiteral("/maps/"));
    QCOMPARE(c.Surface().size(), QSize(300, 200));
    QCOMPARE(d.MapName, QStringLiteral("MyMap"));
    QCOMPARE(d.HitState, std::int16_t(-2));
    QCOMPARE(d.ItemCount(), std::int16_t(-1));
}

void TestCanvasCommands::unreadablePictureIsRefused()
{
    ShapeCanvas& c = NewCanvas();
    c.SetNewPicture(QImage(), QStringLiteral("/maps/broken.jpg"));
    QCOMPARE(m_host->ui.messages.size(), 1);
    QVERIFY(m_host->ui.messages.front().text.contains(QStringLiteral("broken.jpg")));
    QCOMPARE(m_host->ui.messages.front().icon, ModalUi::Icon::Critical);
    QCOMPARE(c.Document().ImageName, QStringLiteral("pic.gif"));
    QCOMPARE(c.Surface().size(), QSize(300, 200));
}

void TestCanvasCommands::generateCodeWithoutShapes()
{
    ShapeCanvas& c = NewCanvas();
    QCOMPARE(c.GenerateMapCode(true), QString());
    QCOMPARE(m_host->ui.messageTexts(),
             QStringList{QStringLiteral("No shape areas have been created.")});
    QCOMPARE(m_host->ui.messages.front().icon, ModalUi::Icon::Critical);
    QVERIFY(m_host->codeShown.isEmpty());
}

void TestCanvasCommands::generateCodeForms()
{
    ShapeCanvas& c = NewCanvas();
    AddRectangle({10, 20}, {60, 80});
    c.SetZoomLevel(2.0);
    QCOMPARE(c.GenerateMapCode(true), QString());
    QCOMPARE(m_host->codeShown.size(), 1);
    // The code is at zoom 1 whatever the view's zoom.
    QVERIFY(m_host->codeShown.front().contains(QStringLiteral("coords=\"10,20,60,80\"")));
    const QString test = c.GenerateMapCode(false);
    QVERIFY(test.contains(QStringLiteral("coords=\"10,20,60,80\"")));
    QCOMPARE(m_host->codeShown.size(), 1);
    QVERIFY(m_host->ui.messages.isEmpty());
    QCOMPARE(c.Document().Shape(0).Points().front(), (ShapePoint{20, 40}));
}

void TestCanvasCommands::checkTheUrlsOpensChecker()
{
    ShapeCanvas& c = NewCanvas();
    c.CheckTheURLs();
    QCOMPARE(m_host->urlCheckers, QList<ShapeCanvas*>{&c});
}

void TestCanvasCommands::shapeCommands()
{
    ShapeCanvas& c = NewCanvas();
    AddRectangle({10, 10}, {40, 40});
    AddRectangle({100, 10}, {140, 40});
    AddRectangle({200, 10}, {240, 40});
    const MapDocument& d = c.Document();
    c.ReStackArrayFromOptions(0);
    QCOMPARE(d.ShapeOrder(), (std::vector<std::int16_t>{0, 2, 1}));
    QCOMPARE(d.Shape(0).ShapeColor, d.FocusColor);
    QCOMPARE(d.Shape(2).ShapeColor, d.NonFocusColor);
    // An index past the list is a message, not a crash, and changes nothing.
    c.ReStackArrayFromOptions(7);
    QCOMPARE(m_host->ui.messageTexts(), QStringList{QStringLiteral("Subscript out of range")});
    QCOMPARE(d.ShapeOrder(), (std::vector<std::int16_t>{0, 2, 1}));
    PatShape copy;
    QVERIFY(c.SetShapeEqualToTopShape(copy));
    QCOMPARE(copy.Points().front(), (ShapePoint{0, 0}));
    c.DeleteShape();
    QCOMPARE(d.ItemCount(), std::int16_t(1));
    QCOMPARE(d.ShapeOrder().front(), std::int16_t(1));
    c.SetNewShape(copy);
    QCOMPARE(d.ItemCount(), std::int16_t(2));
    QCOMPARE(d.ShapeOrder().front(), std::int16_t(2));
    QCOMPARE(d.Shape(2).Points().front(), (ShapePoint{0, 0}));
    m_canvas->Document().FocusColor = 0x00FF00;
    c.SetShapeColors();
    QCOMPARE(d.Shape(2).ShapeColor, 0x00FF00);
    QCOMPARE(m_host->ui.messages.size(), 1);
}

void TestCanvasCommands::morphAndPasteKeepListWhole()
{
    ShapeCanvas& c = NewCanvas();
    AddRectangle({10, 10}, {40, 30});
    c.MorphShape(Circle);
    QCOMPARE(int(c.Document().Shape(0).GetShapeType()), int(Circle));
    c.MorphShape(9); // not a shape type: nothing happens
    QCOMPARE(int(c.Document().Shape(0).GetShapeType()), int(Circle));
    c.MorphShape(Polygon);
    QCOMPARE(int(c.Document().Shape(0).GetShapeType()), int(Polygon));
    // The polygon's vertex can still be dragged.
    QTest::mousePress(&c.Surface(), Qt::LeftButton, {}, {40, 30});
    QTest::mouseMove(&c.Surface(), {50, 45});
    QTest::mouseRelease(&c.Surface(), Qt::LeftButton, {}, {50, 45});
    QCOMPARE(c.Document().Shape(0).Points().at(2), (ShapePoint{50, 45}));
    QVERIFY(m_host->ui.messages.isEmpty());
}

void TestCanvasCommands::openMapFile()
{
    FakeCanvasHost host;
    ShapeCanvas c(host);
    c.resize(500, 400);
    QVERIFY(c.OpenMapFile(QStringLiteral(VANTREL_SOURCE_DIR "/examples/sample.imp")));
    QVERIFY(host.ui.messages.isEmpty());
    QCOMPARE(c.windowTitle(), QStringLiteral("sample.imp"));
    const MapDocument& d = c.Document();
    QCOMPARE(d.MapName, QStringLiteral("Harbour"));
    QVERIFY(d.ItemCount() >= 0);
    QVERIFY(!d.OrigPic.isNull());
    // The stored zoom is applied to the view.
    QCOMPARE(c.Surface().size(),
             QSize(qRound(d.SWidth * d.ZoomLevel), qRound(d.SHeight * d.ZoomLevel)));
    QCOMPARE(c.HoldImageBuffer().size(), c.Surface().size());
    // The shapes answer to the mouse at once.
    c.show();
    const ShapePoint corner = d.Shape(d.ShapeOrder().front()).Points().front();
    QTest::mousePress(&c.Surface(), Qt::LeftButton, {}, QPoint(corner.x, corner.y));
    QCOMPARE(d.HitState, std::int16_t(0));
    QTest::mouseRelease(&c.Surface(), Qt::LeftButton, {}, QPoint(corner.x, corner.y));
}

void TestCanvasCommands::openMissingMapChangesNothing()
{
    ShapeCanvas& c = NewCanvas();
    AddRectangle({10, 10}, {40, 40});
    c.setWindowTitle(QStringLiteral("Untitled"));
    QVERIFY(!c.OpenMapFile(QStringLiteral("/nonexistent/none.imp")));
    QCOMPARE(m_host->ui.messageTexts(),
             QStringList{QStringLiteral("Error, map cannot be loaded.")});
    QCOMPARE(c.Document().ItemCount(), std::int16_t(0));
    QCOMPARE(c.windowTitle(), QStringLiteral("Untitled"));
    QCOMPARE(c.FileName(), QString());
}

void TestCanvasCommands::saveAsksForNameOnce()
{
    QTemporaryDir dir;
    ShapeCanvas& c = NewCanvas();
    // A picture that exists, so that the saved map opens again.
    const QString picture = dir.filePath(QStringLiteral("pic.png"));
    QVERIFY(c.Document().OrigPic.save(picture));
    c.SetNewPicture(c.Document().OrigPic, picture);
    AddRectangle({10, 10}, {40, 40});
    c.setWindowTitle(QStringLiteral("Untitled"));
    // Cancelled: nothing written, caption kept.
    c.SaveMap();
    QCOMPARE(c.windowTitle(), QStringLiteral("Untitled"));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("pic.png")});
    // A name without the extension gets ".imp".
    m_host->ui.mapNamesToSave.enqueue(dir.filePath(QStringLiteral("garden")));
    c.SaveMap();
    const QString saved = dir.filePath(QStringLiteral("garden.imp"));
    QVERIFY(QFile::exists(saved));
    QCOMPARE(c.FileName(), saved);
    QCOMPARE(c.windowTitle(), QStringLiteral("garden.imp"));
    // The second save asks nothing.
    QVERIFY(QFile::remove(saved));
    c.SaveMap();
    QVERIFY(QFile::exists(saved));
    QVERIFY(m_host->ui.mapNamesToSave.isEmpty());
    // Save As asks again; a name holding ".IMP" anywhere is kept as it is.
    m_host->ui.mapNamesToSave.enqueue(dir.filePath(QStringLiteral("copy.IMP.txt")));
    c.SaveMapAs();
    QVERIFY(QFile::exists(dir.filePath(QStringLiteral("copy.IMP.txt"))));
    QCOMPARE(c.windowTitle(), QStringLiteral("copy.IMP.txt"));
    // Save As cancelled keeps the current name.
    c.SaveMapAs();
    QCOMPARE(c.FileName(), dir.filePath(QStringLiteral("copy.IMP.txt")));
    QVERIFY(m_host->ui.messages.isEmpty());

    FakeCanvasHost host;
    ShapeCanvas reopened(host);
    QVERIFY(reopened.OpenMapFile(saved));
    QCOMPARE(reopened.Document().Shape(0).Points(), c.Document().Shape(0).Points());
}

void TestCanvasCommands::saveFailureKeepsCaption()
{
    ShapeCanvas& c = NewCanvas();
    c.setWindowTitle(QStringLiteral("Untitled"));
    m_host->ui.mapNamesToSave.enqueue(QStringLiteral("/nonexistent/folder/map.imp"));
    c.SaveMap();
    QCOMPARE(m_host->ui.messageTexts(),
             QStringList{QStringLiteral("There was an error while trying to save the file.")});
    QCOMPARE(m_host->ui.messages.front().icon, ModalUi::Icon::Critical);
    QCOMPARE(c.windowTitle(), QStringLiteral("Untitled"));
    QCOMPARE(c.FileName(), QString());
}

QTEST_MAIN(TestCanvasCommands)
#include "tst_canvascommands.moc"
