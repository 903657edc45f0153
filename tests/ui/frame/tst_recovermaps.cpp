#include "FileBytes.h"
#include "FrameFixture.h"
#include "KilledRun.h"
#include "core/interchange/MapFile.h"
#include "ui/frame/RecoverMaps.h"
#include "ui/frame/RecoveryKeeper.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QStatusBar>
#include <QTreeWidget>

// Recovery files as the editor keeps them while a user edits, and what the next start
// offers after the editor was killed.
class TestRecoverMaps : public QObject
{
    Q_OBJECT
    QTemporaryDir m_dir;

    struct Run : FrameRun
    {
        // A new map, kept every 20 ms.
        ShapeCanvas* NewMap(const QString& picture)
        {
            frame.Recovery()->Store().Timer().setInterval(20);
            return FrameRun::NewMap(picture);
        }
        void Draw(ShapeCanvas& map, QPoint from = {10, 10}, QPoint to = {80, 60})
        {
            Drag(map, "RectangleMode", from, to);
        }
    };

    QString Folder() const { return m_dir.filePath(QStringLiteral("recovery")); }
    QString Picture() const
    {
        return SavePicture(m_dir.filePath(QStringLiteral("pic.png")), {300, 200}, Qt::yellow);
    }
    // Edits a saved map in a run, and leaves its recovery file as a killed run would.
    // Returns the map's bytes as last kept.
    QByteArray EditAndKill(const QString& Saved, QString& Left)
    {
        Run run;
        run.frame.StartRecovery(Folder());
        ShapeCanvas* map = run.NewMap(Picture());
        run.Draw(*map);
        run.ui.mapNamesToSave.enqueue(Saved);
        run.Trigger("menuSaveMap");
        run.Draw(*map, QPoint(120, 90), QPoint(200, 150));
        map->SelectShape(0);
        [&] { QTRY_VERIFY(!run.frame.Recovery()->FileOf(*map).isEmpty()); }();
        Left = LeaveAsKilled(Folder(), run.frame.Recovery()->FileOf(*map));
        return MapFile::MapBytes(map->Document(), Saved);
    }

private slots:
    void init() { QDir(Folder()).removeRecursively(); }
    void cleanup() { QCOMPARE(OpenMapCount, std::int16_t(0)); }

    void aModifiedMapIsKeptWhileEditingAndGoesWhenSavedOrClosed()
    {
        Run run;
        QVERIFY(!run.frame.StartRecovery(Folder()));
        QVERIFY(run.dialogs.isEmpty());
        RecoveryKeeper& keeper = *run.frame.Recovery();
        ShapeCanvas* map = run.NewMap(Picture());
        QTest::qWait(60);
        QVERIFY(keeper.FileOf(*map).isEmpty());

        run.Draw(*map);
        QTRY_VERIFY(!keeper.FileOf(*map).isEmpty());
        // Undone back to where it started: nothing to recover.
        run.frame.Undo();
        QTRY_VERIFY(keeper.FileOf(*map).isEmpty());
        run.frame.Redo();
        QTRY_VERIFY(!keeper.FileOf(*map).isEmpty());
        const QString kept = keeper.FileOf(*map);
        run.ui.mapNamesToSave.enqueue(m_dir.filePath(QStringLiteral("kept.imp")));
        run.Trigger("menuSaveMap");
        QVERIFY(!QFile::exists(kept));

        run.Draw(*map, QPoint(100, 100), QPoint(150, 150));
        QTRY_VERIFY(!keeper.FileOf(*map).isEmpty());
        const QString again = keeper.FileOf(*map);
        run.ui.saveChoices.enqueue(ModalUi::SaveChoice::Discard);
        QVERIFY(map->parentWidget()->close());
        QTRY_VERIFY(!QFile::exists(again));
    }

    void aMapGoneWithoutBeingClosedKeepsItsFile()
    {
        QString kept;
        {
            Run run;
            run.frame.StartRecovery(Folder());
            ShapeCanvas* map = run.NewMap(Picture());
            run.Draw(*map);
            QTRY_VERIFY(!run.frame.Recovery()->FileOf(*map).isEmpty());
            kept = run.frame.Recovery()->FileOf(*map);
            // The program ends without the window being closed (the session ends).
            delete map->parentWidget();
        }
        QVERIFY(QFile::exists(kept));
        Run next;
        next.frame.StartRecovery(Folder());
        QCOMPARE(next.dialogs, QStringList{QStringLiteral("Recover Maps")});
    }

    void aKilledEditorsMapIsRecoveredAndSavedToItsOwnFile()
    {
        const QString saved = m_dir.filePath(QStringLiteral("plan.imp"));
        QFile::remove(saved);
        QString left;
        const QByteArray lastKept = EditAndKill(saved, left);
        const QByteArray onDisk = ReadBytes(saved);
        QVERIFY(onDisk != lastKept);

        Run next;
        QStringList rows;
        next.script = [&rows](QDialog& dialog) {
            auto* list = Child<QTreeWidget>(dialog, "lstRecover");
            for (int i = 0; i < list->topLevelItemCount(); ++i)
                rows << list->topLevelItem(i)->text(0) + QLatin1Char('|') +
                            list->topLevelItem(i)->text(1);
            QVERIFY(!list->topLevelItem(0)->icon(0).isNull());
            Click(dialog, "btnRecover");
        };
        QVERIFY(next.frame.StartRecovery(Folder()));
        QCOMPARE(next.dialogs, QStringList{QStringLiteral("Recover Maps")});
        QCOMPARE(rows, QStringList{QStringLiteral("plan.imp|pic.png")});

        ShapeCanvas* map = next.frame.ActiveMapWindow();
        QCOMPARE(MapFile::MapBytes(map->Document(), saved), lastKept);
        QVERIFY(map->IsModified());
        QCOMPARE(map->FileName(), saved);
        QCOMPARE(map->windowTitle(), QStringLiteral("plan.imp"));
        QVERIFY(map->parentWidget()->isWindowModified());
        // Kept by this run now; the killed run's file is gone.
        QVERIFY(!next.frame.Recovery()->FileOf(*map).isEmpty());
        QVERIFY(!QFile::exists(left));
        QCOMPARE(ReadBytes(saved), onDisk);

        // Save writes the map's own file, and its recovery file goes.
        const QString kept = next.frame.Recovery()->FileOf(*map);
        next.Trigger("menuSaveMap");
        QVERIFY(next.ui.mapNamesToSave.isEmpty());
        QCOMPARE(ReadBytes(saved), lastKept);
        QVERIFY(!map->IsModified());
        QVERIFY(!QFile::exists(kept));
    }

    void discardedInTheDialogIsGoneAndLaterKeepsIt()
    {
        const QString saved = m_dir.filePath(QStringLiteral("later.imp"));
        QString left;
        EditAndKill(saved, left);
        {
            Run later;
            QVERIFY(!later.frame.StartRecovery(Folder()));
            QCOMPARE(later.dialogs.size(), 1);
            QVERIFY(later.frame.MapWindows().isEmpty());
            QVERIFY(QFile::exists(left));
        }
        Run next;
        next.ui.answers.enqueue(true);
        next.script = [](QDialog& dialog) { Click(dialog, "btnDiscard"); };
        QVERIFY(!next.frame.StartRecovery(Folder()));
        QCOMPARE(next.ui.questions.size(), 1);
        QVERIFY(next.ui.questions.front().contains(QStringLiteral("\"later.imp\"")));
        QVERIFY(!QFile::exists(left));
        QVERIFY(next.frame.MapWindows().isEmpty());
    }

    void aCorruptFileIsNamedWithTheReason()
    {
        QString left;
        EditAndKill(m_dir.filePath(QStringLiteral("broken.imp")), left);
        QVERIFY(QFile::resize(left, 40));

        Run next;
        QString said;
        next.script = [&said](QDialog& dialog) {
            said = Child<QLabel>(dialog, "lblProblems")->text();
            dialog.reject();
        };
        QVERIFY(!next.frame.StartRecovery(Folder()));
        QVERIFY2(said.contains(QStringLiteral("\"broken.imp\"")), qPrintable(said));
        QVERIFY2(said.contains(MapFile::CannotLoadMessage()), qPrintable(said));
        // Start-up goes on: the frame works.
        next.FrameRun::NewMap(Picture());
        QCOMPARE(next.frame.MapWindows().size(), 1);
    }

    void aFolderThatCannotBeWrittenIsSaidOnceAndEditingGoesOn()
    {
        QFile blocker(Folder());
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        Run run;
        QVERIFY(!run.frame.StartRecovery(Folder() + QStringLiteral("/inside")));
        const QString said = run.frame.statusBar()->currentMessage();
        QVERIFY2(said.startsWith(QStringLiteral("Recovery files cannot be written")),
                 qPrintable(said));
        ShapeCanvas* map = run.NewMap(Picture());
        run.Draw(*map);
        QTest::qWait(80);
        QCOMPARE(map->Document().ItemCount(), std::int16_t(0));
        QVERIFY(run.frame.Recovery()->FileOf(*map).isEmpty());
        QVERIFY(run.ui.messages.isEmpty());
        QFile::remove(Folder());
    }
};

QTEST_MAIN(TestRecoverMaps)
#include "tst_recovermaps.moc"
