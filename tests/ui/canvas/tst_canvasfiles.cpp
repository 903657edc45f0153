#include "CanvasFixture.h"
#include "FileBytes.h"
#include "ShapeBuilders.h"
#include "core/interchange/MapFile.h"

#include <QTemporaryDir>
#include <cmath>

namespace {

const QString SaveError = QStringLiteral("There was an error while trying to save the file.");

} // namespace

// Maps as files meet them in the map window: whatever the reader accepts opens and
// edits, and a save goes back to the file that was opened.
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
        m_canvas.reset();
        m_host = std::make_unique<FakeCanvasHost>();
        m_canvas = std::make_unique<ShapeCanvas>(*m_host);
        m_host->active = m_canvas.get();
        m_canvas->resize(500, 400);
        m_canvas->show();
        return m_canvas->OpenMapFile(path);
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        QVERIFY(WhitePicture(320, 200).save(Path("pic.png")));
    }

    void cleanup() { CloseCanvas(); }

    // A grid pitch no dialog can set used to loop for ever before the window painted.
    void finestGridOpens()
    {
        MapDocument doc = Blank();
        doc.GridSpacing = 1e-300;
        doc.ShouldDrawGrid = true;
        QVERIFY(MapFile::SaveMap(doc, Path("fine.imp")).ok);
        QVERIFY(Open(Path("fine.imp")));
        QCOMPARE(m_host->ui.messageTexts(), QStringList());
        QCOMPARE(Doc().GridSpacing, 1e-300);
        // Too fine to see: the picture shows as it is.
        QCOMPARE(Surface()->grab().toImage().pixel(1, 1), qRgb(255, 255, 255));
    }

    // The 16-bit index allows shapes 0 to 32767; all of them open, zoom and edit.
    void fullestMapOpensAndEdits()
    {
        MapDocument doc = Blank();
        std::vector<PatShape> shapes;
        std::vector<std::int16_t> order;
        for (int i = 0; i < 32768; ++i) {
            const int x = i % 300;
            const int y = (i / 300) % 180;
            shapes.push_back(MakeShape(Rectangle, Corners(x, y, x + 10, y + 10)));
            order.push_back(std::int16_t(32767 - i));
        }
        doc.AdoptShapes(std::move(shapes), std::move(order));
        QVERIFY(MapFile::SaveMap(doc, Path("full.imp")).ok);
        QVERIFY(Open(Path("full.imp")));
        QCOMPARE(m_host->ui.messageTexts(), QStringList());
        QCOMPARE(Doc().ItemCount(), std::int16_t(32767));
        m_canvas->SetZoomLevel(2.0);
        QCOMPARE(m_host->ui.messageTexts(), QStringList());
        QCOMPARE(Doc().Shape(32767).Points().back(), (ShapePoint{134, 238}));
        Click({5, 5});
        QTest::keyClick(Surface(), Qt::Key_Delete);
        QCOMPARE(Doc().ItemCount(), std::int16_t(32766));
        Consistent();
    }

    void longestPolygonOpensAndEdits()
    {
        MapDocument doc = Blank();
        std::vector<ShapePoint> points;
        for (int i = 0; i < 32768; ++i) {
            const double angle = 2 * M_PI * i / 32768;
            points.push_back({160 + int(std::lround(80 * std::cos(angle))),
                              100 + int(std::lround(60 * std::sin(angle)))});
        }
        doc.AdoptShapes({MakeShape(Polygon, points)}, {0});
        QVERIFY(MapFile::SaveMap(doc, Path("long.imp")).ok);
        QVERIFY(Open(Path("long.imp")));
        QCOMPARE(Doc().Shape(0).Points().size(), std::size_t(32768));
        m_canvas->SetZoomLevel(2.0);
        m_canvas->SetZoomLevel(1.0);
        // A drag on the body moves every vertex.
        Drag({160, 100}, {170, 105});
        QCOMPARE(m_host->ui.messageTexts(), QStringList());
        QCOMPARE(Doc().Shape(0).Points().front(), (ShapePoint{250, 105}));
        const ShapePoint last = points.back();
        QCOMPARE(Doc().Shape(0).Points().back(), (ShapePoint{last.x + 10, last.y + 5}));
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
        QCOMPARE(m_canvas->windowTitle(), QStringLiteral("B.imp"));
        QCOMPARE(m_canvas->FileName(), Path("B.imp"));
        m_canvas->DeleteShape();
        m_canvas->SaveMap();
        QCOMPARE(m_host->ui.messageTexts(), QStringList());
        QCOMPARE(ReadBytes(Path("A.imp")), original);
        const MapFile::ReadResult saved = MapFile::OpenMapFile(Path("B.imp"));
        QCOMPARE(saved.document.ItemCount(), std::int16_t(0));
        // Line 2 records where the map now lives.
        QVERIFY(ReadBytes(Path("B.imp")).startsWith("1.0.0\r\n" + Path("B.imp").toUtf8() + "\r\n"));
    }

    // The message stays exact; why comes as the box's informative text.
    void messageSaysWhyTheMapCannotLoad()
    {
        QVERIFY(WriteBytes(Path("huge.png"), HugePng()));
        MapDocument doc = Blank();
        doc.ImageName = QStringLiteral("huge.png");
        QVERIFY(MapFile::SaveMap(doc, Path("huge.imp")).ok);
        QVERIFY(!Open(Path("huge.imp")));
        QCOMPARE(m_host->ui.messageTexts(),
                 QStringList{QStringLiteral("Error, map cannot be loaded.")});
        QVERIFY2(m_host->ui.messages.front().detail.startsWith(
                     QString::fromUtf8("The picture is 30,000 \xc3\x97 30,000 pixels;")),
                 qPrintable(m_host->ui.messages.front().detail));
    }

    void readOnlyMapIsNotOverwritten()
    {
        MapDocument doc = Blank();
        doc.AdoptShapes({MakeShape(Rectangle, Corners(10, 10, 50, 40))}, {0});
        QVERIFY(MapFile::SaveMap(doc, Path("locked.imp")).ok);
        const QByteArray before = ReadBytes(Path("locked.imp"));
        const QFile::Permissions readOnly = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
        QVERIFY(QFile::setPermissions(Path("locked.imp"), readOnly));
        QVERIFY(Open(Path("locked.imp")));
        m_canvas->DeleteShape();
        m_canvas->SaveMap();
        QCOMPARE(m_host->ui.messageTexts(), QStringList{SaveError});
        QCOMPARE(m_host->ui.messages.front().icon, ModalUi::Icon::Critical);
        QCOMPARE(m_host->ui.messages.front().detail,
                 QStringLiteral("\"%1\" is read-only.").arg(Path("locked.imp")));
        QCOMPARE(ReadBytes(Path("locked.imp")), before);
        QCOMPARE(QFile::permissions(Path("locked.imp")) & 0x7077, readOnly);
        QCOMPARE(m_canvas->FileName(), Path("locked.imp"));
    }
};

QTEST_MAIN(TestCanvasFiles)
#include "tst_canvasfiles.moc"
