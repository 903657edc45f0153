#include "CanvasFixture.h"
#include "FileBytes.h"
#include "ShapeBuilders.h"
#include "core/interchange/MapFile.h"
#include "core/interchange/PictureLoader.h"

#include <QTemporaryDir>
#include <cmath>

// The map window's commands that the frame calls, and maps as files meet them there:
// whatever the reader accepts opens and edits, and a save goes back to the file that was
// opened.
class TestCanvasFiles : public QObject, CanvasFixture
{
    Q_OBJECT
private:
    QTemporaryDir m_dir;

    QString Path(const QString& name) const { return m_dir.filePath(name); }
    MapDocument Blank() const
    {
        MapDocument doc;
        doc.ImagePath = m_dir.path() + QLatin1Char('/');
        doc.ImageName = QStringLiteral("pic.png");
        doc.RealWidth = doc.SWidth = 320;
        doc.RealHeight = doc.SHeight = 200;
        return doc;
    }
    bool Open(const QString& path)
    {
        NewCanvas();
        return m_canvas->OpenMapFile(path);
    }
    // The map saved under name in the folder, then opened in a new window.
    bool Open(const MapDocument& doc, const QString& name)
    {
        return MapFile::SaveMap(doc, Path(name)).ok && Open(Path(name));
    }
    ShapeCanvas& Untitled()
    {
        NewCanvas(300, 200).setWindowTitle(QStringLiteral("Untitled"));
        return *m_canvas;
    }
    void CheckMessage(const QString& text)
    {
        QCOMPARE(m_host->ui.messageTexts(), QStringList{text});
        QCOMPARE(m_host->ui.messages.front().icon, ModalUi::Icon::Critical);
    }

private slots:
    void initTestCase() { QVERIFY(WhitePicture(320, 200).save(Path("pic.png"))); }

    void cleanup() { CloseCanvas(); }

    void unreadablePictureIsRefused()
    {
        ShapeCanvas& c = Untitled();
        c.SetNewPicture(QImage(), QStringLiteral("/maps/broken.jpg"));
        CheckMessage(PictureLoader::CannotReadMessage(QStringLiteral("/maps/broken.jpg")));
        QCOMPARE(c.Surface().size(), QSize(300, 200));
    }

    void generateCode()
    {
        ShapeCanvas& c = Untitled();
        QCOMPARE(c.GenerateMapCode(true), QString());
        CheckMessage(QStringLiteral("No shape areas have been created."));
        Draw(Mode::Rectangle, {10, 20}, {60, 80});
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
        ShapeCanvas& c = Untitled();
        QVERIFY(c.OpenMapFile(QStringLiteral(VANTREL_SOURCE_DIR "/examples/sample.imp")));
        QVERIFY(m_host->ui.messages.isEmpty());
        QCOMPARE(c.windowTitle(), QStringLiteral("sample.imp"));
        const MapDocument& d = c.Document();
        QCOMPARE(d.MapName, QStringLiteral("Harbour"));
        // The stored zoom is applied to the view.
        QCOMPARE(c.Surface().size(),
                 QSize(qRound(d.SWidth * d.ZoomLevel), qRound(d.SHeight * d.ZoomLevel)));
    }

    // The message stays exact; why, when known, comes as the box's informative text.
    void mapThatCannotLoadChangesNothing()
    {
        QVERIFY(WriteBytes(Path("huge.png"), HugePng()));
        MapDocument doc = Blank();
        doc.ImageName = QStringLiteral("huge.png");
        QVERIFY(MapFile::SaveMap(doc, Path("huge.imp")).ok);
        ShapeCanvas& c = Untitled();
        Draw(Mode::Rectangle, {10, 10}, {40, 40});
        for (const QString& path : {QStringLiteral("/nonexistent/none.imp"), Path("huge.imp")}) {
            QVERIFY(!c.OpenMapFile(path));
            QCOMPARE(c.Document().ItemCount(), std::int16_t(0));
            QCOMPARE(c.windowTitle(), QStringLiteral("Untitled"));
        }
        QCOMPARE(m_host->ui.messageTexts(),
                 QStringList(2, QStringLiteral("Error, map cannot be loaded.")));
        QCOMPARE(m_host->ui.messages.front().icon, ModalUi::Icon::Critical);
        QVERIFY2(m_host->ui.messages.back().detail.startsWith(
                     QStringLiteral("The picture \"%1\" cannot be loaded. ").arg(Path("huge.png")) +
                     QString::fromUtf8("The picture is 30,000 \xc3\x97 30,000 pixels;")),
                 qPrintable(m_host->ui.messages.back().detail));
        // A picture that is gone: both messages, and the file that was looked for.
        m_host->ui.messages.clear();
        doc.ImageName = QStringLiteral("gone.png");
        QVERIFY(MapFile::SaveMap(doc, Path("gone.imp")).ok);
        QVERIFY(!c.OpenMapFile(Path("gone.imp")));
        QCOMPARE(m_host->ui.messageTexts(),
                 QStringList({"Image for map not found.", "Error, map cannot be loaded."}));
        QCOMPARE(m_host->ui.messages.back().detail,
                 MapFile::PictureMissingDetail(doc.ImagePath + "gone.png") +
                     QStringLiteral("\n\nThe map file is \"%1\".").arg(Path("gone.imp")));
    }

    void saveAsksForNameOnce()
    {
        ShapeCanvas& c = Untitled();
        c.SaveMap(); // cancelled
        QCOMPARE(c.FileName(), QString());
        // A name without the extension gets ".imp"; the second save asks nothing.
        m_host->ui.mapNamesToSave.enqueue(Path("garden"));
        c.SaveMap();
        const QString saved = Path("garden.imp");
        QCOMPARE(c.windowTitle(), QStringLiteral("garden.imp"));
        QVERIFY(QFile::remove(saved));
        c.SaveMap();
        QVERIFY(QFile::exists(saved));
        // Save As asks again; a name holding ".IMP" anywhere is kept as it is.
        m_host->ui.mapNamesToSave.enqueue(Path("copy.IMP.txt"));
        c.SaveMapAs();
        QCOMPARE(c.FileName(), Path("copy.IMP.txt"));
        QVERIFY(m_host->ui.messages.isEmpty());
    }

    void saveFailureKeepsCaption()
    {
        ShapeCanvas& c = Untitled();
        m_host->ui.mapNamesToSave.enqueue(QStringLiteral("/nonexistent/folder/map.imp"));
        c.SaveMap();
        CheckMessage(QStringLiteral("There was an error while trying to save the file."));
        // Why, in the system's words, beside the message.
        QCOMPARE(m_host->ui.messages.front().detail, QStringLiteral("No such file or directory"));
        QCOMPARE(c.windowTitle(), QStringLiteral("Untitled"));
        QCOMPARE(c.FileName(), QString());
    }
    // A grid pitch no dialog can set used to loop for ever before the window painted.
    void finestGridOpens()
    {
        MapDocument doc = Blank();
        doc.GridSpacing = 1e-300;
        doc.ShouldDrawGrid = true;
        QVERIFY(Open(doc, "fine.imp"));
        QCOMPARE(m_host->ui.messageTexts(), QStringList());
        QCOMPARE(Doc().GridSpacing, 1e-300);
        // Too fine to see: the picture shows as it is.
        QCOMPARE(Surface()->grab().toImage().pixel(1, 1), qRgb(255, 255, 255));
    }

    // The 16-bit indices allow shapes 0 to 32767, and as many vertices in one: such a map
    // opens, zooms and edits.
    void fullestMapOpensAndEdits()
    {
        MapDocument doc = Blank();
        std::vector<PatShape> shapes;
        std::vector<std::int16_t> order;
        for (int i = 0; i < 32767; ++i) {
            const int x = i % 300;
            const int y = (i / 300) % 180;
            shapes.push_back(MakeShape(Rectangle, Corners(x, y, x + 10, y + 10)));
            order.push_back(std::int16_t(32767 - i));
        }
        // On top, an ellipse of 32768 vertices.
        std::vector<ShapePoint> points;
        for (int i = 0; i < 32768; ++i) {
            const double angle = 2 * M_PI * i / 32768;
            points.push_back({160 + int(std::lround(80 * std::cos(angle))),
                              100 + int(std::lround(60 * std::sin(angle)))});
        }
        shapes.push_back(MakeShape(Polygon, points));
        order.push_back(0);
        doc.AdoptShapes(std::move(shapes), std::move(order));
        QVERIFY(Open(doc, "full.imp"));
        m_canvas->SetZoomLevel(2.0);
        QCOMPARE(Doc().Shape(32766).Points().back(), (ShapePoint{132, 238}));
        m_canvas->SetZoomLevel(1.0);
        // A drag on the polygon's body moves every vertex.
        Drag({160, 100}, {170, 105});
        QCOMPARE(Doc().Shape(32767).Points().front(), (ShapePoint{250, 105}));
        QCOMPARE(Doc().Shape(32767).Points().back(),
                 (ShapePoint{points.back().x + 10, points.back().y + 5}));
        Click({5, 5});
        QTest::keyClick(Surface(), Qt::Key_Delete);
        QCOMPARE(Doc().ItemCount(), std::int16_t(32766));
        QCOMPARE(m_host->ui.messageTexts(), QStringList());
        Consistent();
    }

    // A copy made to try a variant must never write over its original.
    void saveWritesTheFileThatWasOpened()
    {
        MapDocument doc = Blank();
        doc.AdoptShapes({MakeShape(Rectangle, Corners(10, 10, 50, 40)),
                         MakeShape(Circle, Corners(60, 60, 90, 90))},
                        {1, 0});
        QVERIFY(MapFile::SaveMap(doc, Path("A.imp")).ok);
        const QByteArray original = ReadBytes(Path("A.imp"));
        QVERIFY(QFile::copy(Path("A.imp"), Path("B.imp")));
        QVERIFY(Open(Path("B.imp")));
        m_canvas->DeleteShape();
        m_canvas->SaveMap();
        QCOMPARE(ReadBytes(Path("A.imp")), original);
        const MapFile::ReadResult saved = MapFile::OpenMapFile(Path("B.imp"));
        QCOMPARE(saved.document.ItemCount(), std::int16_t(0));
        // Line 2 records where the map now lives.
        QVERIFY(ReadBytes(Path("B.imp")).startsWith("1.0.0\r\n" + Path("B.imp").toUtf8() + "\r\n"));
    }
};

QTEST_MAIN(TestCanvasFiles)
#include "tst_canvasfiles.moc"
