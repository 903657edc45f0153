#include "core/forms/DroppedFiles.h"
#include "core/forms/FolderMemory.h"
#include "core/forms/RecentFiles.h"

#include <QDir>
#include <QFile>
#include <QMimeData>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

// What the editor remembers between runs: recent maps and the folders of the file
// dialogs; and which dropped things are files.
class TestRecentFiles : public QObject
{
    Q_OBJECT
    QTemporaryDir m_dir;

    QString Settings() const { return m_dir.filePath(QStringLiteral("settings.ini")); }
    QString File(const QString& name) const { return m_dir.filePath(name); }

private slots:
    void init() { QFile::remove(Settings()); }

    void newestFirstOncePerFileAtMostEight()
    {
        QSettings settings(Settings(), QSettings::IniFormat);
        RecentFiles recent(settings);
        QVERIFY(recent.Paths().isEmpty());
        for (int i = 0; i < 10; ++i)
            recent.Add(File(QStringLiteral("map%1.imp").arg(i)));
        QCOMPARE(recent.Paths().size(), RecentFiles::Capacity);
        QCOMPARE(recent.Paths().first(), File(QStringLiteral("map9.imp")));
        QCOMPARE(recent.Paths().last(), File(QStringLiteral("map2.imp")));
        // The same file by another spelling moves to the front instead of doubling.
        recent.Add(m_dir.path() + QStringLiteral("/./map5.imp"));
        QCOMPARE(recent.Paths().first(), File(QStringLiteral("map5.imp")));
        QCOMPARE(recent.Paths().count(File(QStringLiteral("map5.imp"))), 1);
        QCOMPARE(recent.Paths().size(), RecentFiles::Capacity);
        recent.Remove(File(QStringLiteral("map5.imp")));
        QVERIFY(!recent.Paths().contains(File(QStringLiteral("map5.imp"))));
        recent.Add(QString());
        QCOMPARE(recent.Paths().size(), RecentFiles::Capacity - 1);
        // Kept for the next run.
        settings.sync();
        QSettings again(Settings(), QSettings::IniFormat);
        QCOMPARE(RecentFiles(again).Paths(), recent.Paths());
        recent.Clear();
        QVERIFY(recent.Paths().isEmpty());
        QVERIFY(RecentFiles::MissingMessage(QStringLiteral("/x/a.imp")).contains("/x/a.imp"));
    }

    void sameNamesShowTheirFolders()
    {
        const QStringList paths{"/home/ann/web/harbour.imp", "/home/ann/old/harbour.imp",
                                "/srv/maps/plan.imp", "/home/ann/harbour.imp",
                                "/home/annex/harbour.imp"};
        QCOMPARE(RecentFiles::Labels(paths, QStringLiteral("/home/ann")),
                 QStringList({"harbour.imp (~/web)", "harbour.imp (~/old)", "plan.imp",
                              "harbour.imp (~)", "harbour.imp (/home/annex)"}));
        QCOMPARE(RecentFiles::Labels({"/a/x.imp", "/b/y.imp"}, QStringLiteral("/home/ann")),
                 QStringList({"x.imp", "y.imp"}));
    }

    void eachKindOfFileHasItsFolder()
    {
        QSettings settings(Settings(), QSettings::IniFormat);
        FolderMemory folders(settings);
        QCOMPARE(folders.Folder(FolderMemory::Kind::Map, QStringLiteral("/fallback")),
                 QStringLiteral("/fallback"));
        QVERIFY(QDir(m_dir.path()).mkpath(QStringLiteral("pictures")));
        folders.Remember(FolderMemory::Kind::Picture, File(QStringLiteral("pictures/a.png")));
        folders.Remember(FolderMemory::Kind::Map, File(QStringLiteral("b.imp")));
        QCOMPARE(folders.Folder(FolderMemory::Kind::Picture, QString()),
                 File(QStringLiteral("pictures")));
        QCOMPARE(folders.Folder(FolderMemory::Kind::Map, QString()), m_dir.path());
        // A folder that has gone gives the fallback again.
        QVERIFY(QDir(File(QStringLiteral("pictures"))).removeRecursively());
        QCOMPARE(folders.Folder(FolderMemory::Kind::Picture, QStringLiteral("/fallback")),
                 QStringLiteral("/fallback"));
    }

    void onlyLocalFilesAreDropped()
    {
        QMimeData data;
        QVERIFY(DroppedFiles::Paths(&data).isEmpty());
        QVERIFY(DroppedFiles::Paths(nullptr).isEmpty());
        data.setText(QStringLiteral("/tmp/a.png"));
        QVERIFY(DroppedFiles::Paths(&data).isEmpty());
        data.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a.png")),
                      QUrl(QStringLiteral("https://example.com/b.png")),
                      QUrl::fromLocalFile(QStringLiteral("/tmp/m.imp"))});
        QCOMPARE(DroppedFiles::Paths(&data),
                 (QStringList{QStringLiteral("/tmp/a.png"), QStringLiteral("/tmp/m.imp")}));
    }
};

QTEST_MAIN(TestRecentFiles)
#include "tst_recentfiles.moc"
