#include "FileBytes.h"
#include "FrameFixture.h"
#include "ManualText.h"
#include "ShapeRow.h"
#include "core/forms/CommonDialogStuff.h"
#include "core/forms/HelpFile.h"
#include "core/forms/RecentFiles.h"
#include "core/interchange/MapFile.h"
#include "core/interchange/MapFindingsModel.h"
#include "core/interchange/PictureLoader.h"
#include "ui/frame/QtModalUi.h"
#include "ui/frame/RecentMapsMenu.h"
#include "ui/frame/ToolStrip.h"
#include "ui/tools/MapCheckWindow.h"

#include <QApplication>
#include <QComboBox>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QRadioButton>
#include <QScrollBar>
#include <QSet>
#include <QStandardPaths>
#include <QToolButton>
#include <QTreeView>
#include <QUrl>
#include <algorithm>

// End-to-end flows through the main window, with scripted dialogs, and files the desktop
// way: dropped on the frame, and Open Recent.
class TestMDIForm1 : public QObject, FrameFixture
{
    Q_OBJECT
    // Data rows of two text columns from "first=second|..." pairs, named by the first.
    static void AddRows(const QString& table)
    {
        for (const QString& row : table.split(QLatin1Char('|'))) {
            const QString first = row.section(QLatin1Char('='), 0, 0);
            QTest::newRow(qPrintable(first)) << first << row.section(QLatin1Char('='), 1);
        }
    }
    QString Text(const MapDocument& doc) const { return MapFile::MapText(doc, "x.imp"); }
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
    // Local files dropped on the frame, or a text when there are none.
    bool Drop(const QStringList& paths)
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& p : paths)
            urls << QUrl::fromLocalFile(p);
        if (urls.isEmpty())
            data.setText(QStringLiteral("hello"));
        else
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
    static QStringList Captions(QMenu& menu, int from = 0)
    {
        emit menu.aboutToShow();
        QStringList captions;
        const QList<QAction*> actions = menu.actions();
        for (qsizetype i = from; i < actions.size(); ++i)
            captions << (actions.at(i)->isSeparator()
                             ? QStringLiteral("-")
                             : actions.at(i)->text() + (actions.at(i)->isChecked() ? "<" : ""));
        return captions;
    }
    QStringList RecentCaptions() { return Captions(m_frame->RecentMaps().Menu()); }

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void init() { OpenFrame(); }
    void cleanup() { CloseFrame(); }

    void namesAndCaptions_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("caption");
        // name=caption: menus and items by caption ("-" a separator), buttons by tooltip.
        const QString table = QStringLiteral(
            "file=&File|NewMap=&New Map|LoadPic=Load &Map|filesplit=-|menuSaveMap=Sa&ve Map|"
            "menuSaveMapAs=&Save Map &As...|filesplit2=-|generatecode=&Generate Image Map Code|"
            "mnuTestMap=&Test Image Map|split1=-|Exit=E&xit|edit=&Edit|CutShape=Cu&t Shape|"
            "Copyshape=&Copy Shape|PasteShape=&Paste Shape|editsplit=-|"
            "DeleteShape=&Delete Shape|editsplit2=-|MorphShape=&Morph to...|"
            "MorRectangle=&Rectangle|MorCircle=&Circle|MorPolygon=&Polygon|view=&View|"
            "smallsize=&Zoom In|largesize=&Zoom Out|viewsplit=-|CustomZoom=Custom &Zoom|"
            "options=&Options|theimagesize=&Image Size|Gridoptions=&Grid Options|"
            "MapColors=&Map Colors|ShapeProperties=&Shape Properties|optionssplit=-|"
            "Shapes=&Draw Mode|RectangleMode=&Rectangle|CircleMode=&Circle|"
            "PolygonMode=&Polygon|pointermode=P&ointer|tools=&Tools|"
            "ConvertToShapes=&Convert HTML Code to Map|mnuURLChecker=&URL "
            "Checker|mnuCheckMap=Check &Map|"
            "TheWindow=&Window|Cascade=&Cascade|Tile=&Tile|arrangeicons=&Arrange Icons|"
            "HelpFileMenu=&Help|HelpFile=&Help File|corvaneonline=&Corvane Online|"
            "mnuhelpsplit=-|mnuCredits=&Credits|btnNewImage=New Image|btnOpen=Load Map|"
            "btnSave=Save Map|bntSaveAs=Save Map As|btnGen=Generate Code|btnTest=Test Map|"
            "btnCut=Cut Shape|btnCopy=Copy Shape|btnPaste=Paste Shape|btnDelete=Remove Shape|"
            "btnColors=Set The Map's Colors|btnProp=Shape Properties|btnHelp=Help|"
            "PointOpt=Pointer Mode|RectOpt=Rectangle Mode|CirOpt=Circle Mode|"
            "PolyOpt=Polygon Mode");
        AddRows(table);
    }
    void namesAndCaptions()
    {
        QFETCH(QString, name);
        QFETCH(QString, caption);
        QString shown;
        if (auto* menu = m_frame->findChild<QMenu*>(name))
            shown = menu->title();
        else if (auto* button = m_frame->findChild<QToolButton*>(name)) // icons are compiled in
            shown = button->toolTip() + (button->icon().pixmap(24).isNull() ? "(no icon)" : "");
        else if (auto* action = m_frame->findChild<QAction*>(name))
            shown = action->isSeparator() ? QStringLiteral("-") : action->text();
        QCOMPARE(shown, caption);
    }

    // The user manual names every menu, command and key of the frame, so a command added
    // without a word in the manual is caught here.
    void manualNamesEveryMenuCommandAndKey()
    {
        const QString manual = ManualText();
        QVERIFY(manual.contains(QStringLiteral("Vantrel")));
        const auto caption = [](QString text) { return text.remove(QLatin1Char('&')); };
        QStringList missing;
        int commands = 0;
        const std::function<void(QMenu&)> walk = [&](QMenu& menu) {
            if (!manual.contains(caption(menu.title())))
                missing << caption(menu.title());
            for (QAction* action : menu.actions()) {
                // Lists that fill themselves (open maps, recent files) carry no name.
                if (action->isSeparator() || action->objectName().isEmpty())
                    continue;
                if (QMenu* sub = action->menu()) {
                    walk(*sub);
                    continue;
                }
                ++commands;
                // The key the menu shows; the platform may add bindings of its own.
                const QString shown = action->shortcut().toString(QKeySequence::PortableText);
                if (!manual.contains(caption(action->text())) || !manual.contains(shown))
                    missing << caption(action->text()) + QLatin1Char(' ') + shown;
            }
        };
        for (QAction* top : m_frame->menuBar()->actions()) {
            if (top->menu() != nullptr)
                walk(*top->menu());
        }
        QVERIFY2(commands > 40, qPrintable(QString::number(commands)));
        // The keys of the frame itself, outside the menus (closing a map).
        for (QAction* action : m_frame->actions()) {
            for (const QKeySequence& keys : action->shortcuts()) {
                if (!manual.contains(keys.toString(QKeySequence::PortableText)))
                    missing << keys.toString(QKeySequence::PortableText);
            }
        }
        QVERIFY2(missing.isEmpty(), qPrintable(missing.join(QStringLiteral(", "))));
    }

    void mapCommandsFollowTheOpenMaps()
    {
        const auto enabled = [this] {
            return QList<bool>{Child<QAction>(*m_frame, "LoadPic")->isEnabled(),
                               Child<QToolButton>(*m_frame, "btnSave")->isEnabled(),
                               Child<QAction>(*m_frame, "menuSaveMap")->isEnabled(),
                               Child<QMenu>(*m_frame, "edit")->menuAction()->isEnabled()};
        };
        const QList<bool> noMap{true, false, false, false};
        QCOMPARE(enabled(), noMap);
        ShapeCanvas* first = NewMap();
        ShapeCanvas* second = NewMap();
        QCOMPARE(enabled(), (QList<bool>{true, true, true, true}));
        QVERIFY(QTest::qWaitForWindowActive(m_frame));
        QWidget* surface = Child<QWidget>(*second, "TheCanvas");
        // The pointer's place is the active map's: the map made active next (Ctrl+Tab, a
        // click) shows nothing until the pointer moves over it.
        auto* status = Child<QLabel>(*m_frame, "StatusPanel1");
        QTest::mouseMove(surface, QPoint(30, 20));
        QCOMPARE(status->text(), QStringLiteral("X:30 Y:20"));
        m_frame->MdiArea()->activatePreviousSubWindow();
        QCOMPARE(m_frame->ActiveMapWindow(), first);
        QCOMPARE(status->text(), QString());
        m_frame->MdiArea()->activateNextSubWindow();
        // Ctrl+F4 and Ctrl+W close the active map, after its question, from the map itself.
        surface->setFocus();
        m_ui->answers.append({false, true, true});
        QTest::keyClick(surface, Qt::Key_F4, Qt::ControlModifier); // answered No
        QCOMPARE(m_frame->MapWindows().size(), 2);
        QTest::keyClick(surface, Qt::Key_W, Qt::ControlModifier);
        QTRY_COMPARE(m_frame->MapWindows(), QList<ShapeCanvas*>{first});
        QVERIFY(enabled() != noMap);
        first->parentWidget()->close();
        QTRY_COMPARE(enabled(), noMap);
        Trigger("PasteShape"); // a disabled command does nothing
        QVERIFY(m_ui->messages.isEmpty());
    }

    // However many maps are open, a new one opens where it can be seen, none hidden beyond
    // the edge of the frame's map area. Cascade leaves every map window usable: in sight, its
    // title bar showing, most of the area large; the active one stays active, on top.
    void newAndCascadedMapsStayInSight()
    {
        const QWidget* viewport = m_frame->MdiArea()->viewport();
        for (int i = 0; i < 5; ++i) {
            const QRect window = NewMap(300, 200)->parentWidget()->geometry();
            QVERIFY2(viewport->rect().contains(window), qPrintable(QString::number(i + 1)));
        }
        QMdiSubWindow* active = m_frame->MdiArea()->subWindowList().first();
        m_frame->MdiArea()->setActiveSubWindow(active);
        Trigger("Cascade");
        const QRect area = viewport->rect();
        QList<int> tops;
        for (const QMdiSubWindow* window : m_frame->MdiArea()->subWindowList()) {
            QVERIFY(area.contains(window->geometry()));
            QVERIFY(window->width() > area.width() / 2 && window->height() > area.height() / 2);
            tops.append(window->y());
        }
        QCOMPARE(QSet<int>(tops.begin(), tops.end()).size(), 5);
        QCOMPARE(m_frame->MdiArea()->activeSubWindow(), active);
        QCOMPARE(active->y(), *std::max_element(tops.begin(), tops.end()));
    }

    void newMapDrawSaveAndReopen()
    {
        ShapeCanvas* map = NewMap();
        // What a map file holds is the file tests'; here, that the menu items save and open it.
        Drag(*map, "RectangleMode", QPoint(10, 10), QPoint(50, 50));
        m_ui->mapNamesToSave.enqueue(m_dir.filePath(QStringLiteral("plan")));
        Trigger("menuSaveMapAs");
        QCOMPARE(map->windowTitle(), QStringLiteral("plan.imp"));
        m_ui->mapsToOpen.enqueue(m_dir.filePath(QStringLiteral("plan.imp")));
        Trigger("LoadPic");
        QCOMPARE(m_frame->MapWindows().size(), 2);
        QCOMPARE(Text(m_frame->ActiveMapWindow()->Document()), Text(map->Document()));
    }

    void badOrCancelledFileOpensNoWindow()
    {
        const QString junk = m_dir.filePath(QStringLiteral("junk.jpg"));
        QVERIFY(WriteBytes(junk, "not a map"));
        m_ui->pictures.append({QString(), junk});
        m_ui->mapsToOpen.append({QString(), junk});
        for (const char* command : {"NewMap", "NewMap", "LoadPic", "LoadPic"})
            Trigger(command);
        QVERIFY(m_frame->MdiArea()->subWindowList().isEmpty());
        // Only the unreadable files are errors, and the picture's message names it.
        QCOMPARE(m_ui->messages.size(), 2);
        QVERIFY(m_ui->messages.first().text.contains(QStringLiteral("junk.jpg")));
    }

    void startUpHelpAndCommandLine()
    {
        m_ui->desktopOpens = false;
        m_run->script = [](QDialog& dialog) {
            Child<QPushButton>(dialog, "Command2")->click(); // Help leaves the dialog open
            QVERIFY(dialog.result() != QDialog::Accepted);
            Child<QRadioButton>(dialog, "Option2")->setChecked(true);
            Child<QPushButton>(dialog, "Command1")->click();
        };
        m_frame->ShowStartUp(); // the open dialog is cancelled: an empty frame, no error
        Trigger("HelpFile");
        Trigger("corvaneonline");
        QCOMPARE(m_ui->messageTexts(),
                 (QStringList{"There was an error while trying to load the file.",
                              "There was an error while trying to load the file.",
                              "There was an error while trying to open the default browser."}));
        // Beside the load error, the manual's file, to open by hand.
        QCOMPARE(m_ui->messages.front().detail, HelpFile::ManualDetail(HelpFile::Path(), true));
        QVERIFY(m_frame->MapWindows().isEmpty());

        const QString picture = SavePicture(m_dir.filePath(QStringLiteral("start.png")), {30, 20});
        m_frame->OpenFiles({QStringLiteral(VANTREL_SOURCE_DIR "/examples/sample.imp"), picture});
        QCOMPARE(m_frame->MapWindows().size(), 2);
        QCOMPARE(m_frame->MapWindows().at(0)->Document().ItemCount(), std::int16_t(2));
        QCOMPARE(m_frame->MapWindows().at(1)->Document().SWidth, 30);
    }

    void clipboard()
    {
        ShapeCanvas* first = NewMap();
        Trigger("Copyshape"); // an empty map has nothing to copy
        Trigger("PasteShape");
        QCOMPARE(m_ui->messageTexts(), QStringList{"No shape has been copied yet."});
        Drag(*first, "RectangleMode", QPoint(20, 30), QPoint(100, 80));
        MapDocument& doc = first->Document();
        doc.SetURL(0, QStringLiteral("a.html"));
        PatShape copy; // in the top-left corner, where a pasted shape lands
        doc.Shape(0).MakeACopy(copy);
        Trigger("CutShape");
        Trigger("PasteShape");
        QVERIFY(doc.Shape(0).Points() == copy.Points());
        QCOMPARE(doc.GetURL(0), QStringLiteral("a.html"));
        // Copy in one map, paste twice in another.
        Trigger("Copyshape");
        ShapeCanvas* second = NewMap();
        Trigger("PasteShape");
        m_frame->Tools().Button(QStringLiteral("btnPaste"))->click();
        QCOMPARE(doc.ItemCount(), std::int16_t(0));
        QCOMPARE(second->Document().ItemCount(), std::int16_t(1));
        // Both from the one clipboard: what a paste copies is the document tests'.
        QCOMPARE(second->Document().GetURL(1), QStringLiteral("a.html"));
    }

    void deleteKeyBelongsToTheMapWindow()
    {
        ShapeCanvas* map = NewMap();
        QWidget* surface = Child<QWidget>(*map, "TheCanvas");
        Drag(*map, "RectangleMode", QPoint(10, 10), QPoint(60, 40));
        Drag(*map, "RectangleMode", QPoint(100, 10), QPoint(160, 40));
        QTest::keyClick(surface, Qt::Key_Delete);
        QCOMPARE(map->Document().ItemCount(), std::int16_t(0));
        // While a polygon is drawn the key must not reach the menu's Delete Shape.
        Trigger("PolygonMode");
        QTest::mouseClick(surface, Qt::LeftButton, {}, QPoint(100, 100));
        QTest::mouseClick(surface, Qt::LeftButton, {}, QPoint(150, 100));
        const std::int16_t count = map->Document().ItemCount();
        QTest::keyClick(surface, Qt::Key_Delete);
        QCOMPARE(map->Document().ItemCount(), count);
        // Meanwhile the status bar says how to go on, until the polygon is gone.
        auto* hint = Child<QLabel>(*m_frame, "StatusHint");
        QVERIFY(!hint->isHidden() && hint->text().contains(QStringLiteral("Esc")));
        QTest::mouseClick(surface, Qt::LeftButton, {}, QPoint(150, 150));
        QVERIFY(hint->text().contains(QStringLiteral("Enter to close")));
        // Another map made active lets the pointer go; back on this one the polygon goes on.
        QVERIFY(map->PointerConfined());
        ShapeCanvas* other = NewMap();
        // The move reaches the surface that holds the pointer, whatever lies over it; it is
        // not put back on this picture.
        QMouseEvent move(QEvent::MouseMove, QPointF(160, -40),
                         surface->mapToGlobal(QPointF(160, -40)), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(surface, &move);
        QVERIFY(!map->PointerConfined() && map->Document().PolygonInProgress);
        QCOMPARE(map->Document().Shapes().back().LastLineY(), -40);
        QVERIFY(hint->isHidden());
        // The click that brings it back only activates it; the next one adds the corner.
        m_frame->MdiArea()->tileSubWindows();
        const PatShape& polygon = map->Document().Shapes().back();
        const std::size_t corners = polygon.Points().size();
        QTest::mouseClick(surface, Qt::LeftButton, {}, QPoint(40, 120));
        QCOMPARE(m_frame->ActiveMapWindow(), map);
        QVERIFY(!hint->isHidden() && map->PointerConfined());
        QCOMPARE(polygon.Points().size(), corners);
        QTest::mouseClick(surface, Qt::LeftButton, {}, QPoint(40, 120));
        QCOMPARE(polygon.Points().size(), corners + 1);
        QTest::keyClick(surface, Qt::Key_Escape);
        QVERIFY(hint->isHidden());
        QCOMPARE(other->Document().ItemCount(), std::int16_t(-1));
    }

    void zoomLimits()
    {
        ShapeCanvas* map = NewMap(200, 150);
        Trigger("largesize");
        QCOMPARE(map->Document().ZoomLevel, 1.0);
        for (int i = 0; i < 12; ++i)
            Trigger("smallsize");
        QVERIFY(qAbs(map->Document().ZoomLevel - 2.0) < 1e-9);
        ShapeCanvas* big = NewMap(1500, 1500);
        for (int i = 0; i < 4; ++i)
            Trigger("smallsize");
        QVERIFY(qAbs(big->Document().ZoomLevel - 1.3) < 1e-9);
        QCOMPARE(m_ui->messageTexts(),
                 QStringList{"Zoom level is too great for an image of this size."});
    }

    void modeMenuAndButtonsAgree()
    {
        NewMap(); // the Options menu needs a map
        const char* menus[] = {"pointermode", "RectangleMode", "CircleMode", "PolygonMode"};
        const QStringList buttons{"PointOpt", "RectOpt", "CirOpt", "PolyOpt"};
        for (int mode : {0, 2, 1, 3, 0}) {
            Trigger(menus[mode]);
            for (int i = 0; i < 4; ++i)
                QCOMPARE(m_frame->Tools().Button(buttons.at(i))->isChecked(), i == mode);
            QCOMPARE(m_frame->CurrentDrawingMode(), CanvasHost::DrawingMode(mode));
        }
        QTest::mouseClick(m_frame->Tools().Button(QStringLiteral("CirOpt")), Qt::LeftButton);
        QCOMPARE(m_frame->CurrentDrawingMode(), CanvasHost::DrawingMode::Circle);
    }

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
        // Other files say what the picture dialog says.
        const QString text = m_dir.filePath(QStringLiteral("notes.txt"));
        QVERIFY(WriteBytes(text, "not a picture"));
        QVERIFY(Drop({text}));
        QCOMPARE(m_frame->MapWindows().size(), 2);
        QCOMPARE(m_ui->messageTexts(), QStringList{PictureLoader::Load(text).message});
        // Of several dropped files, the one that fails is named; the others open.
        m_ui->messages.clear();
        const QString broken = m_dir.filePath(QStringLiteral("broken.imp"));
        QVERIFY(WriteBytes(broken, "1.0.0\r\n"));
        QVERIFY(Drop({map, broken, m_dir.path()}));
        QCOMPARE(m_frame->MapWindows().size(), 3);
        QCOMPARE(m_ui->messageTexts(),
                 QStringList({"Error, map cannot be loaded.",
                              PictureLoader::CannotReadMessage(m_dir.path())}));
        QVERIFY2(m_ui->messages.front().detail.endsWith(
                     QStringLiteral("The map file is \"%1\".").arg(broken)),
                 qPrintable(m_ui->messages.front().detail));
        QCOMPARE(m_ui->messages.back().detail, QStringLiteral("It is a folder, not a picture."));
        // Nor does a picture wider than a map's coordinates reach.
        const QString wide = SavePicture(m_dir.filePath(QStringLiteral("wide.png")), {32768, 1});
        QVERIFY(Drop({wide}));
        QCOMPARE(m_frame->MapWindows().size(), 3);
        QCOMPARE(m_ui->messageTexts().last(), PictureLoader::CannotReadMessage(wide));
        QVERIFY(!Drop({})); // nothing that is not a local file is taken
    }

    void pictureDialogShowsEveryFormatFirst()
    {
        const QStringList filters = CommonDialogStuff::PictureFilters();
        QFileDialog dialog;
        QtModalUi::Prepare(dialog, false, filters, filters.constLast());
        const auto* types = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
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
        // A bare name is checked against the file it becomes, so replacing it is asked.
        save.setDirectory(m_dir.path());
        save.selectFile(QStringLiteral("plan"));
        QCOMPARE(save.selectedFiles(), QStringList{m_dir.filePath(QStringLiteral("plan.imp"))});
        save.selectFile(QStringLiteral("my.imports.txt"));
        QCOMPARE(save.selectedFiles(),
                 QStringList{m_dir.filePath(QStringLiteral("my.imports.txt"))});
    }

    void openRecentListsSavedAndOpenedMaps()
    {
        m_frame->RecentMaps().Files().Clear();
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
        Map(QStringLiteral("r&d"));
        QCOMPARE(RecentCaptions().first(), QStringLiteral("&1 r&&d.imp"));
    }

    void windowMenuListsMapsAsTheirTitleBarsDo()
    {
        for (const char* name : {"harbour & sea.png", "plan.png"})
            NewMap()->setWindowTitle(QString::fromLatin1(name));
        auto& menu = *Child<QMenu>(*m_frame, "TheWindow");
        QCOMPARE(Captions(menu, 4), QStringList({"&1 harbour && sea.png", "&2 plan.png<"}));
        // A modified map has its star, as in its title bar; the placeholder never shows.
        m_frame->ActiveMapWindow()->setWindowModified(true);
        QCOMPARE(Captions(menu, 4), QStringList({"&1 harbour && sea.png", "&2 plan.png*<"}));
    }

    // Tools > Check Map: from the menu to the finding and back to its shape.
    void checkMapLeadsBackToTheShapes()
    {
        QStringList names;
        for (QAction* action : Child<QMenu>(*m_frame, "tools")->actions())
            names << action->objectName();
        QCOMPARE(names, QStringList({"ConvertToShapes", "mnuURLChecker", "mnuCheckMap"}));
        // Like the other tools, it needs an open map.
        QAction* check = Child<QAction>(*m_frame, "mnuCheckMap");
        QVERIFY(!check->isEnabled());
        check->trigger();
        QVERIFY(!m_frame->findChild<MapCheckWindow*>());
        // Wider than the window: some shapes lie out of view.
        MapDocument& d = NewMap(2800, 300)->Document();
        AddShapeRow(d, "1|10,10,100,10,100,100,10,100|a.htm|Big|||0|");
        AddShapeRow(d, "1|20,20,40,20,40,40,20,40|b.htm|Hidden|||0|");
        AddShapeRow(d, "1|2400,10,2450,10,2450,60,2400,60|#||||0|");
        d.BringToTop(0);
        check->trigger();
        auto* window = m_frame->findChild<MapCheckWindow*>("MapCheckWindow");
        QVERIFY(window && window->isVisible());
        QVERIFY(!window->isModal());
        QCOMPARE(window->windowTitle(), QStringLiteral("Check Map"));
        const MapFindingsModel& model = window->Findings();
        QCOMPARE(model.rowCount(), 3);
        QVERIFY(window->findChild<QLabel*>("lblSummary")->text().endsWith("3 findings."));

        // A double click on the hidden shape's finding brings that shape to the top.
        auto* list = window->findChild<QTreeView*>("lstFindings");
        const QRect row = list->visualRect(model.index(0, 2));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row.center());
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, row.center());
        QCOMPARE(d.ShapeOrder().front(), std::int16_t(1));
        // Enter on the next one does the same, and scrolls the map to the shape.
        list->setFocus();
        list->setCurrentIndex(model.index(1, 0));
        QTest::keyClick(list, Qt::Key_Return);
        QCOMPARE(d.ShapeOrder().front(), std::int16_t(2));
        const QScrollBar* across = m_frame->ActiveMapWindow()->findChild<QScrollBar*>("HScroll1");
        QVERIFY(across->value() > 1800 && across->value() < 2200);
        QCOMPARE(m_frame->ActiveMapWindow()->UndoStack().undoText(),
                 QStringLiteral("Bring to Top"));

        // Fix the problems, check again: the hidden shape moved into the open.
        d.SetURL(2, QStringLiteral("c.htm"));
        d.SetComment(2, QStringLiteral("C"));
        const QPoint corners[] = {{150, 150}, {170, 150}, {170, 170}, {150, 170}};
        for (std::int16_t p = 0; p < 4; ++p)
            d.Shape(1).SetPoint(p, corners[p].x(), corners[p].y());
        QTest::mouseClick(window->findChild<QPushButton*>("btnCheckAgain"), Qt::LeftButton);
        QCOMPARE(model.rowCount(), 0);
        QVERIFY(window->findChild<QLabel*>("lblSummary")->text().endsWith("no problems found."));

        // Reused, not stacked up, on the next check.
        check->trigger();
        QCOMPARE(m_frame->findChildren<MapCheckWindow*>().size(), 1);
    }

    // Every tool window opens from its menu item or button through the frame's dialog hook;
    // what a window does is tested with the window itself.
    void toolWindowOpensThroughTheFrame_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("dialog");
        const QString table = QStringLiteral(
            "CustomZoom=Zoom|theimagesize=ImageSize|Gridoptions=GridForm|MapColors=ColorPicker|"
            "btnColors=ColorPicker|ConvertToShapes=ConvertHTMLtoMap|mnuURLChecker=URLChecker|"
            "generatecode=GeneratedCodeForm|btnGen=GeneratedCodeForm|ShapeProperties=frmOptions|"
            "btnProp=frmOptions|mnuCredits=Credits");
        AddRows(table);
    }
    void toolWindowOpensThroughTheFrame()
    {
        QFETCH(QString, command);
        QFETCH(QString, dialog);
        QStringList shown;
        m_run->script = [&shown](QDialog& d) { shown.append(d.objectName()); };
        MapDocument& doc = NewMap()->Document(); // the code window needs a shape
        doc.Shape(doc.AddShape()).SetInfo(nullptr, doc.FocusColor, Rectangle, 1.0, 10, 10);
        if (QAction* action = m_frame->findChild<QAction*>(command))
            action->trigger();
        else
            m_frame->Tools().Button(command)->click();
        QCOMPARE(shown, QStringList{dialog});
    }
};

int main(int argc, char** argv)
{
    // The URL checker's embedded browser shares its graphics context with the widgets.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    TestMDIForm1 test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_mdiform1.moc"
