#include "FileBytes.h"
#include "KilledRun.h"
#include "ShapeBuilders.h"
#include "core/document/MapDocument.h"
#include "core/interchange/MapFile.h"
#include "core/interchange/RecoveryOffer.h"
#include "core/interchange/RecoveryStore.h"
#include "core/interchange/RecoveryWriter.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <memory>

namespace {

// A map with a picture on disk and a few shapes, as an editor window holds it.
// It lies in a fresh folder of its own; the recovery folder is inside.
struct OpenMap
{
    QTemporaryDir dir;
    QString folder = dir.filePath(QStringLiteral("recovery"));
    MapDocument doc;
    bool modified = false;
    bool busy = false;
    QString fileName;

    explicit OpenMap(int Shapes)
    {
        QImage picture(120, 80, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        picture.save(dir.filePath(QStringLiteral("picture.png")));
        doc.OrigPic = picture;
        doc.ImagePath = dir.path() + QLatin1Char('/');
        doc.ImageName = QStringLiteral("picture.png");
        doc.RealWidth = doc.SWidth = 120;
        doc.RealHeight = doc.SHeight = 80;
        std::vector<PatShape> list;
        for (int i = 0; i < Shapes; ++i) {
            PatShape s = MakeShape(Rectangle, Corners(5 * i, 4 * i, 5 * i + 20, 4 * i + 9));
            s.URL = QStringLiteral("page%1.html").arg(i);
            list.push_back(s);
        }
        if (Shapes > 0)
            doc.ReSetShapeArray(list, static_cast<std::int16_t>(Shapes - 1));
        doc.SetShapeColors();
        fileName = dir.filePath(QStringLiteral("maps/plan.imp"));
    }

    RecoveryStore::Source Source()
    {
        RecoveryStore::Source source;
        source.document = [this]() -> const MapDocument& { return doc; };
        source.caption = [] { return QStringLiteral("plan.imp"); };
        source.fileName = [this] { return fileName; };
        source.modified = [this] { return modified; };
        source.busy = [this] { return busy; };
        return source;
    }

    // Changed (and still modified or not), and the store asked to write what is due.
    void Changed(RecoveryStore& store, int id, bool isModified = true)
    {
        modified = isModified;
        store.MapChanged(id);
        store.WriteDue();
    }

    // Tracked by a started store and written as changed.
    int WrittenBy(RecoveryStore& store)
    {
        const int id = store.Track(Source());
        Changed(store, id);
        return id;
    }
};

// A store on the folder, started as a run of the editor starts it.
std::unique_ptr<RecoveryStore> Started(const QString& folder)
{
    auto store = std::make_unique<RecoveryStore>(folder);
    if (!store->Start())
        QTest::qFail("the recovery store did not start", __FILE__, __LINE__);
    return store;
}

} // namespace

// Recovery files: what is kept of a modified map and offered after a killed run. They are
// written away from the editor's thread; what it asks for must still reach the disk in
// order, whole, and before the editor ends.
class TestRecoveryStore : public QObject
{
    Q_OBJECT
private slots:
    void aModifiedMapIsWrittenWithinTheIntervalAndOnlyWhenChanged()
    {
        OpenMap map(3);
        const auto store = Started(map.folder);
        store->Timer().setInterval(20);
        const int id = store->Track(map.Source());

        // Nothing changed: nothing written.
        QTest::qWait(60);
        QVERIFY(store->FileOf(id).isEmpty());

        map.doc.SetURL(1, QStringLiteral("changed.html"));
        map.doc.BringToTop(2);
        map.modified = true;
        store->MapChanged(id);
        QTRY_VERIFY_WITH_TIMEOUT(!store->FileOf(id).isEmpty(), 2000);
        const QString written = store->FileOf(id);
        QVERIFY(written.startsWith(map.folder + QLatin1Char('/')));
        const MapFile::ReadResult back = MapFile::ReadMap(ReadBytes(written), written);
        QCOMPARE(MapFile::MapBytes(back.document, written), MapFile::MapBytes(map.doc, written));

        // Unchanged since the last write: the file is not written again.
        QFile::remove(written);
        QTest::qWait(80);
        QVERIFY(store->FileOf(id).isEmpty());

        // Mid-gesture the map waits; written once the gesture ends.
        map.busy = true;
        map.Changed(*store, id);
        QVERIFY(store->FileOf(id).isEmpty());
        map.busy = false;
        store->WriteDue();
        QVERIFY(!store->FileOf(id).isEmpty());

        // Saved, or undone back to its saved state: the file goes.
        store->MapSaved(id);
        QVERIFY(store->FileOf(id).isEmpty());
        map.Changed(*store, id, false);
        QVERIFY(store->FileOf(id).isEmpty());

        // Closed: the file goes, and the map is no longer asked for.
        map.Changed(*store, id);
        const QString last = store->FileOf(id);
        QVERIFY(QFile::exists(last));
        store->Forget(id);
        QVERIFY(QDir(map.folder)
                    .entryList({QStringLiteral("*.imp"), QStringLiteral("*.json")}, QDir::Files)
                    .isEmpty());
    }

    void aKilledRunsMapIsOfferedAndComesBackExactlyOrIsDiscarded()
    {
        OpenMap map(40);
        map.doc.MapName = QStringLiteral("FloorPlan");
        map.doc.BringToTop(7);
        map.doc.ShouldDrawGrid = true;
        {
            const auto killed = Started(map.folder);
            const int id = map.WrittenBy(*killed);
            // A second run while this one edits is offered nothing, and leaves its files.
            const auto second = Started(map.folder);
            QVERIFY(second->Scan().empty());
            second->Release();
            // Two runs were killed with this map in them.
            for (int run = 0; run < 2; ++run)
                LeaveAsKilled(map.folder, killed->FileOf(id));
            killed->Forget(id);
        }

        const auto next = Started(map.folder);
        {
            RecoveryOffer offer(*next);
            QCOMPARE(offer.Count(), 2);
            QVERIFY(offer.Problems().isEmpty());
            const RecoveryStore::Found& found = offer.At(0);
            QCOMPARE(found.caption, QStringLiteral("plan.imp"));
            QCOMPARE(found.fileName, map.fileName);
            QCOMPARE(RecoveryOffer::PictureText(found), QStringLiteral("picture.png"));
            QVERIFY(qAbs(found.changed.secsTo(QDateTime::currentDateTime())) < 60);
            // A third run starting now does not offer it while this one decides.
            const auto third = Started(map.folder);
            QVERIFY(third->Scan().empty());

            offer.Recover(0);
            QCOMPARE(offer.Count(), 1);
            std::vector<RecoveryStore::Found> recovered = offer.TakeRecovered();
            QCOMPARE(recovered.size(), std::size_t(1));
            QCOMPARE(
                MapFile::MapText(recovered[0].document, map.fileName).split(QStringLiteral("\r\n")),
                MapFile::MapText(map.doc, map.fileName).split(QStringLiteral("\r\n")));
            QCOMPARE(recovered[0].document.OrigPic.size(), QSize(120, 80));
            // Kept until the run that recovered it has written it itself.
            QVERIFY(QFile::exists(recovered[0].mapPath));
            offer.Adopted(recovered[0]);
            QVERIFY(!QFile::exists(recovered[0].mapPath));
        }
        // The one left undecided is offered again; discarded, it is gone.
        RecoveryOffer again(*next);
        QCOMPARE(again.Count(), 1);
        const QString discarded = again.At(0).mapPath;
        again.Discard(0);
        QVERIFY(!QFile::exists(discarded));
        const auto after = Started(map.folder);
        QVERIFY(after->Scan().empty());
    }

    void anUnreadableFileIsSetAsideWithTheReadersReason()
    {
        OpenMap map(30);
        const auto killed = Started(map.folder);
        const int id = map.WrittenBy(*killed);
        const QString truncated = LeaveAsKilled(map.folder, killed->FileOf(id));
        QFile file(truncated);
        QVERIFY(file.resize(file.size() / 2));

        const auto next = Started(map.folder);
        const auto checkSetAside = [&](const QString& path, const QString& why) {
            RecoveryOffer offer(*next);
            QCOMPARE(offer.Count(), 0);
            QVERIFY(!offer.IsEmpty());
            QCOMPARE(offer.Problems().size(), 1);
            const QString said = offer.Problems().front();
            QVERIFY2(said.contains(why), qPrintable(said));
            QVERIFY(said.startsWith(QStringLiteral("\"plan.imp\"")));
            QVERIFY(!QFile::exists(path));
            QVERIFY(QFile::exists(path + QStringLiteral(".bad")));
            QVERIFY2(said.contains(QDir::toNativeSeparators(path + QStringLiteral(".bad"))),
                     qPrintable(said));
        };
        checkSetAside(truncated, MapFile::CannotLoadMessage());
        // Set aside once, never offered again.
        QVERIFY(RecoveryOffer(*next).IsEmpty());

        const QString noPicture = LeaveAsKilled(map.folder, killed->FileOf(id));
        QVERIFY(QFile::remove(map.dir.filePath(QStringLiteral("picture.png"))));
        checkSetAside(noPicture, MapFile::PictureNotFoundMessage());
    }

    void aFolderThatCannotBeWrittenIsSaidOnce()
    {
        OpenMap map(2);
        RecoveryStore store(map.folder);
        QSignalSpy failed(&store, &RecoveryStore::WriteFailed);
        QVERIFY(store.Start());
        const int id = store.Track(map.Source());

        // The folder is replaced by a file while the editor runs.
        QVERIFY(QDir(map.folder).removeRecursively());
        QVERIFY(WriteBytes(map.folder, {}));
        for (int i = 0; i < 3; ++i)
            map.Changed(store, id);
        // Said when the writes come back, once for all three.
        QTRY_COMPARE(failed.size(), 1);
        QVERIFY(failed.at(0).at(0).toString().contains(QDir::toNativeSeparators(map.folder)));
        QVERIFY(store.FileOf(id).isEmpty());

        // Writable again: written, and a later failure is said again.
        QVERIFY(QFile::remove(map.folder));
        QVERIFY(QDir().mkpath(map.folder));
        store.WriteDue();
        QVERIFY(!store.FileOf(id).isEmpty());
        QVERIFY(QDir(map.folder).removeRecursively());
        map.Changed(store, id);
        QTRY_COMPARE(failed.size(), 2);

        // A folder that cannot be made at all.
        RecoveryStore nowhere(map.dir.filePath(QStringLiteral("recovery/inside-a-file")));
        QVERIFY(WriteBytes(map.folder, {}));
        QSignalSpy refused(&nowhere, &RecoveryStore::WriteFailed);
        QVERIFY(!nowhere.Start());
        QCOMPARE(refused.size(), 1);
    }

    void writesLandInOrderAndOutlastTheWriter()
    {
        QTemporaryDir dir;
        const QString info = dir.filePath(QStringLiteral("m.json"));
        const QString map = dir.filePath(QStringLiteral("m.imp"));
        const QByteArray big(8 << 20, 'x');
        auto writer = std::make_unique<RecoveryWriter>();
        QSignalSpy written(writer.get(), &RecoveryWriter::Written);
        // Two writes of one map: the later one is what stays, whatever the timing.
        writer->Write(7, info, "first", map, big);
        writer->Write(7, info, "second", map, "last");
        writer->Wait();
        QCOMPARE(ReadBytes(info), QByteArray("second"));
        QCOMPARE(ReadBytes(map), QByteArray("last"));
        // Outcomes arrive on the writer's own thread, in order.
        QObject::connect(writer.get(), &RecoveryWriter::Written, this,
                         [this] { QCOMPARE(QThread::currentThread(), thread()); });
        QTRY_COMPARE(written.size(), 2);
        QCOMPARE(written.at(0), (QVariantList{7, true, QString()}));

        // Asked for just before the editor ends: still written, whole.
        writer->Write(8, info, "info", map, big);
        writer.reset();
        QCOMPARE(ReadBytes(map), big);
        // A description that cannot be written leaves its map unwritten.
        RecoveryWriter failing;
        QSignalSpy failed(&failing, &RecoveryWriter::Written);
        const QString lost = dir.filePath(QStringLiteral("lost.imp"));
        failing.Write(3, dir.filePath(QStringLiteral("no/such/folder/m.json")), "info", lost,
                      "map");
        QTRY_COMPARE(failed.size(), 1);
        QCOMPARE(failed.at(0).at(1).toBool(), false);
        QVERIFY(!failed.at(0).at(2).toString().isEmpty());
        QVERIFY(!QFile::exists(lost));
    }
};

QTEST_GUILESS_MAIN(TestRecoveryStore)
#include "tst_recoverystore.moc"
