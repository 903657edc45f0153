#include "CanvasFixture.h"
#include "core/interchange/PictureLoader.h"

#include <QFile>
#include <QTemporaryDir>

// The map window's commands that the frame calls and their failures.
class TestCanvasCommands : public QObject, CanvasFixture
{
    Q_OBJECT
private:
    ShapeCanvas& NewCanvas()
    {
        CanvasFixture::NewCanvas(300, 200).setWindowTitle(QStringLiteral("Untitled"));
        return *m_canvas;
    }
    void AddRectangle(QPoint from, QPoint to) { Draw(Mode::Rectangle, from, to); }
    void CheckMessage(const QString& text)
    {
        QCOMPARE(m_host->ui.messageTexts(), QStringList{text});
        QCOMPARE(m_host->ui.messages.front().icon, ModalUi::Icon::Critical);
    }

private slots:
    void unreadablePictureIsRefused()
    {
        ShapeCanvas& c = NewCanvas();
        c.SetNewPicture(QImage(), QStringLiteral("/maps/broken.jpg"));
        CheckMessage(PictureLoader::CannotReadMessage(QStringLiteral("/maps/broken.jpg")));
        QCOMPARE(c.Surface().size(), QSize(300, 200));
    }

    void generateCode()
    {
        ShapeCanvas& c = NewCanvas();
        QCOMPARE(c.GenerateMapCode(true), QString());
        CheckMessage(QStringLiteral("No shape areas have been created."));
        AddRectangle({10, 20}, {60, 80});
        c.SetZoomLevel(2.0);
        // The code is at zoom 1 whatever the view's zoom; the test page's is returned.
        QCOMPARE(c.GenerateMapCode(true), QString());
        QCOMPARE(m_host->codeShown.size(), 1);
        QVERIFY(m_host->codeShown.front().contains(QStringLiteral("coords=\"10,20,60,80\"")));
        QVERIFY(c.GenerateMapCode(false).contains(QStringLiteral("coords=\"10,20,60,80\"")));
        QCOMPARE(m_host->codeShown.size(), 1);
        QCOMPARE(m_host->ui.messages.size(), 1);
    }

    void openMapFile()
    {
        ShapeCanvas& c = NewCanvas();
        QVERIFY(c.OpenMapFile(QStringLiteral(VANTREL_SOURCE_DIR "/examples/sample.imp")));
        QVERIFY(m_host->ui.messages.isEmpty());
        QCOMPARE(c.windowTitle(), QStringLiteral("sample.imp"));
        const MapDocument& d = c.Document();
        QCOMPARE(d.MapName, QStringLiteral("Harbour"));
        // The stored zoom is applied to the view.
        QCOMPARE(c.Surface().size(),
                 QSize(qRound(d.SWidth * d.ZoomLevel), qRound(d.SHeight * d.ZoomLevel)));
    }

    void openMissingMapChangesNothing()
    {
        ShapeCanvas& c = NewCanvas();
        AddRectangle({10, 10}, {40, 40});
        QVERIFY(!c.OpenMapFile(QStringLiteral("/nonexistent/none.imp")));
        CheckMessage(QStringLiteral("Error, map cannot be loaded."));
        QCOMPARE(c.Document().ItemCount(), std::int16_t(0));
        QCOMPARE(c.windowTitle(), QStringLiteral("Untitled"));
    }

    void saveAsksForNameOnce()
    {
        QTemporaryDir dir;
        ShapeCanvas& c = NewCanvas();
        // A picture that exists, so that the saved map opens again.
        const QString picture = dir.filePath(QStringLiteral("pic.png"));
        QVERIFY(c.Document().OrigPic.save(picture));
        c.SetNewPicture(c.Document().OrigPic, picture);
        AddRectangle({10, 10}, {40, 40});
        c.SaveMap(); // cancelled
        QCOMPARE(c.FileName(), QString());
        // A name without the extension gets ".imp"; the second save asks nothing.
        m_host->ui.mapNamesToSave.enqueue(dir.filePath(QStringLiteral("garden")));
        c.SaveMap();
        const QString saved = dir.filePath(QStringLiteral("garden.imp"));
        QCOMPARE(c.windowTitle(), QStringLiteral("garden.imp"));
        QVERIFY(QFile::remove(saved));
        c.SaveMap();
        // Save As asks again; a name holding ".IMP" anywhere is kept as it is.
        m_host->ui.mapNamesToSave.enqueue(dir.filePath(QStringLiteral("copy.IMP.txt")));
        c.SaveMapAs();
        QCOMPARE(c.FileName(), dir.filePath(QStringLiteral("copy.IMP.txt")));
        QVERIFY(m_host->ui.messages.isEmpty());
        FakeCanvasHost host;
        ShapeCanvas reopened(host);
        QVERIFY(reopened.OpenMapFile(saved));
        QCOMPARE(reopened.Document().Shape(0).Points(), c.Document().Shape(0).Points());
    }

    void saveFailureKeepsCaption()
    {
        ShapeCanvas& c = NewCanvas();
        m_host->ui.mapNamesToSave.enqueue(QStringLiteral("/nonexistent/folder/map.imp"));
        c.SaveMap();
        CheckMessage(QStringLiteral("There was an error while trying to save the file."));
        QCOMPARE(c.windowTitle(), QStringLiteral("Untitled"));
        QCOMPARE(c.FileName(), QString());
    }
};

QTEST_MAIN(TestCanvasCommands)
#include "tst_canvascommands.moc"
