#include "FileBytes.h"
#include "FrameFixture.h"
#include "core/forms/CommonDialogStuff.h"
#include "core/forms/RecentFiles.h"
#include "core/interchange/PictureLoader.h"
#include "ui/frame/QtModalUi.h"
#include "ui/frame/RecentMapsMenu.h"

#include <QApplication>
#include <QComboBox>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QMenu>
#include <QMimeData>
#include <QStandardPaths>
#include <QUrl>

// Files the desktop way: dropping pictures and maps on the frame, and Open Recent.
class TestDesktopFiles : public QObject, FrameFixture
{
    Q_OBJECT

    QString Picture(const QString& name) { return SavePicture(m_dir.filePath(name), {120, 80}); }
    QString Map(const QString& name)
    {
        m_ui->pictures.enqueue(Picture(name + QStringLiteral(".png")));
        m_frame->LoadNewMap();
        const QString path = m_dir.filePath(name + QStringLiteral(".imp"));
        m_ui->mapNamesToSave.enqueue(path);
        m_frame->SaveMapAs();
        return path;
    }
    bool Drop(const QStringList& paths)
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& p : paths)
            urls << QUrl::fromLocalFile(p);
        data.setUrls(urls);
        const QPoint at(m_frame->width() / 2, m_frame->height() / 2);
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(m_frame, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(m_frame, &drop);
        return drop.isAccepted();
    }
    QStringList RecentCaptions()
    {
        QMenu& menu = m_frame->RecentMaps().Menu();
        emit menu.aboutToShow();
        QStringList captions;
        for (QAction* action : menu.actions())
            captions << (action->isSeparator() ? QStringLiteral("-") : action->text());
        return captions;
    }

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void init()
    {
        OpenFrame();
        m_frame->RecentMaps().Files().Clear();
    }
    void cleanup() { CloseFrame(); }

    void droppedPicturesAndMapsOpen()
    {
        const QString map = Map(QStringLiteral("saved"));
        m_ui->answers.append(true);
        QVERIFY(m_frame->MapWindows().first()->parentWidget()->close());
        QTRY_COMPARE(m_frame->MapWindows().size(), 0);
        QVERIFY(Drop({Picture(QStringLiteral("dropped.png")), map}));
        QCOMPARE(m_frame->MapWindows().size(), 2);
        QCOMPARE(m_frame->MapWindows().first()->windowTitle(), QStringLiteral("Untitled"));
        QCOMPARE(m_frame->MapWindows().first()->Document().ImageName,
                 QStringLiteral("dropped.png"));
        QCOMPARE(m_frame->MapWindows().last()->FileName(), map);
        QVERIFY(m_ui->messages.isEmpty());
    }

    void droppedOtherFilesSayWhatTheDialogSays()
    {
        const QString text = m_dir.filePath(QStringLiteral("notes.txt"));
        QVERIFY(WriteBytes(text, "not a picture"));
        QVERIFY(Drop({text}));
        QCOMPARE(m_frame->MapWindows().size(), 0);
        QCOMPARE(m_ui->messageTexts(), QStringList{PictureLoader::Load(text).message});
        // Nothing that is not a local file is taken.
        QMimeData data;
        data.setText(QStringLiteral("hello"));
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(m_frame, &enter);
        QVERIFY(!enter.isAccepted());
    }

    void pictureDialogShowsEveryFormatFirst()
    {
        const QStringList filters = CommonDialogStuff::PictureFilters();
        QFileDialog dialog;
        QtModalUi::Prepare(dialog, false, filters, filters.constLast());
        const auto* types = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
        QVERIFY(types != nullptr);
        QCOMPARE(types->count(), 2);
        QCOMPARE(types->currentIndex(), 1);
        QCOMPARE(types->currentText(), QStringLiteral("All Pictures"));
        QCOMPARE(dialog.fileMode(), QFileDialog::ExistingFile);
        // The map dialogs keep their one filter; saving takes a new name.
        QFileDialog save;
        QtModalUi::Prepare(save, true, CommonDialogStuff::MapFilters(), QString());
        QCOMPARE(save.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"))->currentText(),
                 QStringLiteral("Image Map Files"));
        QCOMPARE(save.acceptMode(), QFileDialog::AcceptSave);
    }

    void openRecentListsSavedAndOpenedMaps()
    {
        QCOMPARE(RecentCaptions(), QStringList{QStringLiteral("(none)")});
        const QString first = Map(QStringLiteral("first"));
        const QString second = Map(QStringLiteral("second"));
        QCOMPARE(RecentCaptions(),
                 (QStringList{"&1 second.imp", "&2 first.imp", "-", "&Clear List"}));
        m_ui->answers.fill(true, 2);
        for (ShapeCanvas* map : m_frame->MapWindows())
            QVERIFY(map->parentWidget()->close());
        QTRY_COMPARE(m_frame->MapWindows().size(), 0);
        // Choosing an entry opens that map and moves it to the front.
        m_frame->RecentMaps().Menu().actions().at(1)->trigger();
        QCOMPARE(m_frame->MapWindows().size(), 1);
        QCOMPARE(m_frame->ActiveMapWindow()->FileName(), first);
        QCOMPARE(RecentCaptions().first(), QStringLiteral("&1 first.imp"));
        // A map that has gone is taken off the list, with a message.
        QVERIFY(QFile::remove(second));
        m_frame->RecentMaps().Menu().actions().at(1)->trigger();
        QCOMPARE(m_ui->messageTexts(), QStringList{RecentFiles::MissingMessage(second)});
        QCOMPARE(RecentCaptions(), (QStringList{"&1 first.imp", "-", "&Clear List"}));
        QCOMPARE(m_frame->MapWindows().size(), 1);
        m_frame->RecentMaps().Menu().actions().last()->trigger();
        QCOMPARE(RecentCaptions(), QStringList{QStringLiteral("(none)")});
    }
};

QTEST_MAIN(TestDesktopFiles)
#include "tst_desktopfiles.moc"
