#include "CliRun.h"
#include "ShapeBuilders.h"
#include "core/interchange/MapFile.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

namespace {

// A map of many shapes with long texts, so that a save takes long enough to be cut.
MapDocument LargeMap(const QString& folder, const QString& link)
{
    MapDocument doc;
    doc.ImagePath = folder + QLatin1Char('/');
    doc.ImageName = QStringLiteral("pic.png");
    doc.RealWidth = doc.SWidth = 64;
    doc.RealHeight = doc.SHeight = 48;
    std::vector<PatShape> shapes;
    std::vector<std::int16_t> order;
    for (int i = 0; i < 20000; ++i) {
        PatShape shape = MakeShape(Rectangle, Corners(i % 50, i % 40, i % 50 + 9, i % 40 + 7));
        shape.URL = link.arg(i);
        shape.Comment = QString(40, QLatin1Char('c'));
        shapes.push_back(std::move(shape));
        order.push_back(std::int16_t(i));
    }
    doc.AdoptShapes(std::move(shapes), std::move(order));
    return doc;
}

} // namespace

// vantrel-cli save killed at random moments: the target is always the old map or the
// new one, whole, and nothing but a temporary beside it is left in its folder.
class TestCliSaveKill : public QObject
{
    Q_OBJECT
private slots:
    void killedSaveLeavesOldOrNewFile()
    {
        QTemporaryDir dir;
        QImage picture(64, 48, QImage::Format_RGB32);
        picture.fill(Qt::gray);
        QVERIFY(picture.save(dir.filePath("pic.png")));
        const QString target = dir.filePath("target.imp");
        const QString source = dir.filePath("source.imp");
        QVERIFY(MapFile::SaveMap(LargeMap(dir.path(), "http://old.example/%1"), target).ok);
        QVERIFY(MapFile::SaveMap(LargeMap(dir.path(), "http://new.example/%1"), source).ok);
        const QByteArray before = ReadBytes(target);
        const QStringList files = QDir(dir.path()).entryList(QDir::Files | QDir::Hidden);

        // One whole save gives the new bytes and the time a save takes here.
        QProcess cli;
        const QStringList arguments{"save", source, "-o", target};
        QElapsedTimer timer;
        timer.start();
        cli.start(QStringLiteral(VANTREL_CLI), arguments);
        QVERIFY(cli.waitForFinished(60000));
        QCOMPARE(cli.exitCode(), 0);
        const int whole = int(timer.elapsed());
        const QByteArray after = ReadBytes(target);
        QVERIFY(after != before);

        const quint32 seed = qEnvironmentVariableIsSet("VANTREL_KILL_SEED")
                                 ? quint32(qEnvironmentVariableIntValue("VANTREL_KILL_SEED"))
                                 : QRandomGenerator::global()->generate();
        qInfo("seed %u (VANTREL_KILL_SEED repeats a run); a whole save takes %d ms", seed, whole);
        QRandomGenerator random(seed);
        int cut = 0;
        for (int round = 0; round < 24; ++round) {
            QVERIFY(WriteBytes(target, before));
            cli.start(QStringLiteral(VANTREL_CLI), arguments);
            QVERIFY(cli.waitForStarted());
            QThread::msleep(random.bounded(whole));
            cli.kill();
            QVERIFY(cli.waitForFinished(60000));
            cut += cli.exitStatus() == QProcess::CrashExit;
            const QByteArray found = ReadBytes(target);
            QVERIFY2(
                found == before || found == after,
                qPrintable(
                    QStringLiteral("round %1: a mix of %2 bytes").arg(round).arg(found.size())));
            // A kill in the instant between linking the written data under a temporary
            // name and renaming it over the target can leave that temporary behind; any
            // other file is a fault.
            for (const QString& name : QDir(dir.path()).entryList(QDir::Files | QDir::Hidden)) {
                if (files.contains(name))
                    continue;
                QVERIFY2(name.startsWith(QStringLiteral("target.imp.")),
                         qPrintable(QStringLiteral("round %1 left %2").arg(round).arg(name)));
                QVERIFY(QFile::remove(dir.filePath(name)));
            }
        }
        // Many rounds really were cut short (how many depends on the machine's load).
        QVERIFY2(cut >= 6, qPrintable(QStringLiteral("only %1 of 24 saves were killed").arg(cut)));
    }
};

QTEST_GUILESS_MAIN(TestCliSaveKill)
#include "tst_clisavekill.moc"
