#include "core/interchange/RecoveryWriter.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <memory>

// Recovery files are written away from the editor's thread; what it asks for must still
// reach the disk in order, whole, and before the editor ends.

class TestRecoveryWriter : public QObject
{
    Q_OBJECT
private slots:
    void writesLandInOrderAndOutlastTheWriter();
    void aFailedDescriptionLeavesTheMapUnwritten();
};

namespace {

QByteArray Contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
}

} // namespace

void TestRecoveryWriter::writesLandInOrderAndOutlastTheWriter()
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
    QCOMPARE(Contents(info), QByteArray("second"));
    QCOMPARE(Contents(map), QByteArray("last"));
    // Outcomes arrive on the writer's own thread, in order.
    QObject::connect(writer.get(), &RecoveryWriter::Written, this,
                     [this] { QCOMPARE(QThread::currentThread(), thread()); });
    QTRY_COMPARE(written.size(), 2);
    QCOMPARE(written.at(0), (QVariantList{7, true, QString()}));

    // Asked for just before the editor ends: still written, whole.
    writer->Write(8, info, "info", map, big);
    writer.reset();
    QCOMPARE(Contents(map), big);
}

void TestRecoveryWriter::aFailedDescriptionLeavesTheMapUnwritten()
{
    QTemporaryDir dir;
    const QString map = dir.filePath(QStringLiteral("m.imp"));
    RecoveryWriter writer;
    QSignalSpy written(&writer, &RecoveryWriter::Written);
    writer.Write(3, dir.filePath(QStringLiteral("no/such/folder/m.json")), "info", map, "map");
    QTRY_COMPARE(written.size(), 1);
    QCOMPARE(written.at(0).at(1).toBool(), false);
    QVERIFY(!written.at(0).at(2).toString().isEmpty());
    QVERIFY(!QFile::exists(map));
}

QTEST_GUILESS_MAIN(TestRecoveryWriter)
#include "tst_recoverywriter.moc"
