#include "FrameFixture.h"

#include <QMenu>

// The Window menu's list of open maps reads as their title bars do.
class TestWindowMenu : public QObject
{
    Q_OBJECT
    QTemporaryDir m_dir;

    QStringList Entries(MDIForm1& frame)
    {
        auto* menu = frame.findChild<QMenu*>(QStringLiteral("TheWindow"));
        emit menu->aboutToShow();
        QStringList entries;
        const QList<QAction*> actions = menu->actions();
        for (qsizetype i = 4; i < actions.size(); ++i)
            entries << actions.at(i)->text() + (actions.at(i)->isChecked() ? "<" : "");
        return entries;
    }

private slots:
    void captionsWithoutPlaceholders()
    {
        FrameRun run;
        MDIForm1& frame = run.frame;
        for (const char* name : {"harbour & sea.png", "plan.png"}) {
            QVERIFY(frame.NewMapFromPicture(SavePicture(m_dir.filePath(name), {60, 40})) !=
                    nullptr);
            frame.ActiveMapWindow()->setWindowTitle(QString::fromLatin1(name));
        }
        QCOMPARE(Entries(frame), QStringList({"&1 harbour && sea.png", "&2 plan.png<"}));
        // A modified map has its star, as in its title bar; the placeholder never shows.
        frame.ActiveMapWindow()->setWindowModified(true);
        QCOMPARE(Entries(frame), QStringList({"&1 harbour && sea.png", "&2 plan.png*<"}));
    }
    void cleanupTestCase() { QCOMPARE(OpenMapCount, std::int16_t(0)); }
};

QTEST_MAIN(TestWindowMenu)
#include "tst_windowmenu.moc"
