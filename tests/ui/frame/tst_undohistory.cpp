#include "FileBytes.h"
#include "FrameFixture.h"
#include "KilledRun.h"
#include "ShapeBuilders.h"
#include "core/document/ShapeListModel.h"
#include "core/forms/GeometryForm.h"
#include "core/interchange/MapFile.h"
#include "ui/canvas/CanvasSurface.h"
#include "ui/frame/RecoveryKeeper.h"
#include "ui/frame/ShapesPanel.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QStatusBar>
#include <QTabBar>
#include <QTableView>
#include <QTableWidget>
#include <QTreeWidget>
#include <array>

// Undo and redo as a user reaches them through the main window, the modified mark, the
// question asked before a modified map closes, and the recovery files the editor keeps while
// a user edits, with what the next start offers after the editor was killed; and the Shapes
// panel, which shows the map's shapes as the history changes them, and the view-scale commands.
class TestUndoHistory : public QObject, FrameFixture
{
    Q_OBJECT
    ShapesPanel& Panel() { return m_frame->ShapesDock(); }
    QTableView& List() { return Panel().List(); }
    // Dragged in the mode given, then back to the pointer.
    void Draw(ShapeCanvas& map, const char* mode, std::initializer_list<QPoint> points)
    {
        Drag(map, mode, *points.begin(), *(points.begin() + 1));
        Trigger("pointermode");
    }
    // The shape number of the selected row, or -1.
    int SelectedShape()
    {
        const QModelIndexList rows = List().selectionModel()->selectedRows();
        if (rows.size() != 1)
            return -1;
        return rows.first().data().toString().mid(7).toInt() - 1;
    }
    void SelectRow(int row)
    {
        List().selectionModel()->select(List().model()->index(row, 0),
                                        QItemSelectionModel::ClearAndSelect |
                                            QItemSelectionModel::Rows);
    }
    void Type(const char* field, const QString& text)
    {
        auto* edit = Child<QLineEdit>(Panel(), field);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, text);
        QTest::keyClick(edit, Qt::Key_Return);
    }

    // Random undos stop here: the steps below are the start the run is compared with.
    int m_floor = 0;
    bool m_zooms = true;

    static QWidget* Surface(ShapeCanvas& map) { return Child<QWidget>(map, "TheCanvas"); }
    static QByteArray Bytes(const ShapeCanvas& map)
    {
        return MapFile::MapBytes(map.Document(), QStringLiteral("/maps/m.imp"));
    }
    // The same map, but for the pixel a shape may move by when the map was shown at
    // other zooms in between (a zoom rescales the whole-pixel vertices).
    static bool SameUpToRounding(QByteArray a, QByteArray b)
    {
        const QList<QByteArray> x = a.replace('\n', ',').split(',');
        const QList<QByteArray> y = b.replace('\n', ',').split(',');
        for (qsizetype i = 0; i < x.size() && x.size() == y.size(); ++i) {
            bool left = true, right = true;
            if (x[i] != y[i] &&
                (qAbs(x[i].trimmed().toInt(&left) - y[i].trimmed().toInt(&right)) > 2 || !left ||
                 !right))
                return false;
        }
        return x.size() == y.size();
    }
    // Whether the map, its window's mark and the frame's mark agree that it is modified.
    const char* Marks(ShapeCanvas& map) const
    {
        const QList<bool> marks{map.IsModified(), map.parentWidget()->isWindowModified(),
                                m_frame->isWindowModified()};
        return marks.count(true) == 3 ? "modified" : marks.count(false) == 3 ? "clean" : "mixed";
    }

    // One random edit of any kind a user can undo, or a change of zoom.
    int RandomEdit(ShapeCanvas& map, QRandomGenerator& random)
    {
        const MapDocument& doc = map.Document();
        QWidget* surface = Surface(map);
        const auto point = [&] {
            return QPoint(2 + random.bounded(qMax(4, surface->width() - 4)),
                          2 + random.bounded(qMax(4, surface->height() - 4)));
        };
        const auto anyShape = [&] {
            return static_cast<std::int16_t>(random.bounded(doc.ItemCount() + 1));
        };
        const int kind = doc.ItemCount() < 2 ? random.bounded(3) : random.bounded(22);
        switch (kind) {
        case 0:
        case 1:
            Drag(map, kind == 0 ? "RectangleMode" : "CircleMode", point(), point());
            break;
        case 2: {
            Trigger("PolygonMode");
            for (int i = 3 + random.bounded(3); i > 0; --i)
                QTest::mouseClick(surface, Qt::LeftButton, {}, point());
            QTest::keyClick(surface, Qt::Key_Return);
            // Too few distinct vertices to close: abandoned.
            if (doc.PolygonInProgress)
                QTest::keyClick(surface, Qt::Key_Escape);
            break;
        }
        case 3: { // move a shape by its body
            const ShapeRect box = PatShape::BoundingRect(doc.Shape(anyShape()).Points(), false);
            const QPoint centre = box.toQRect().center();
            Drag(map, "pointermode", centre, centre + QPoint(random.bounded(-30, 30), 9));
            break;
        }
        case 4: { // reshape by a handle
            const PatShape& shape = doc.Shape(anyShape());
            const ShapePoint vertex =
                shape.Points()[std::size_t(random.bounded(int(shape.Points().size())))];
            Drag(map, "pointermode", QPoint(vertex.x, vertex.y), point());
            break;
        }
        case 5:
        case 6: { // a run of nudges
            Trigger("pointermode");
            // Tab brings the next shape up, as a step of its own.
            const Qt::Key keys[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down,
                                    Qt::Key_Tab};
            for (int i = 1 + random.bounded(6); i > 0; --i)
                QTest::keyClick(surface, keys[random.bounded(5)]);
            break;
        }
        case 7:
        case 8:
            Trigger(kind == 7 ? "DeleteShape" : "CutShape");
            break;
        case 9:
            Trigger("Copyshape");
            Trigger("PasteShape");
            break;
        case 10:
            Trigger(std::array{"MorRectangle", "MorCircle", "MorPolygon"}[random.bounded(3)]);
            break;
        case 11:
            map.SelectShape(anyShape());
            break;
        case 12: { // Properties: a tab, a URL, the map name, then OK or Cancel
            const int tab = 1 + random.bounded(doc.ItemCount() + 2);
            const bool ok = random.bounded(3) > 0;
            const QString url = QStringLiteral("page%1.html").arg(random.bounded(1000));
            m_run->script = [&](QDialog& dialog) {
                Child<QTabBar>(dialog, "tbsOptions")->setCurrentIndex(tab);
                Child<QLineEdit>(dialog, "txtURL")->setText(url);
                Child<QTabBar>(dialog, "tbsOptions")->setCurrentIndex(0);
                Child<QLineEdit>(dialog, "txtMapName")->setText(url.left(6));
                Click(dialog, ok ? "cmdOK" : "cmdCancel");
            };
            Trigger("ShapeProperties");
            break;
        }
        case 13: { // map colours
            const int value = random.bounded(256);
            m_run->script = [&](QDialog& dialog) {
                QTest::mouseClick(Child<QWidget>(dialog, random.bounded(2) ? "Option1" : "Option2"),
                                  Qt::LeftButton);
                Child<QScrollBar>(dialog, "ScrollRed")->setValue(value);
                Click(dialog, "Command2");
            };
            Trigger("MapColors");
            break;
        }
        case 14: { // grid settings
            const bool show = random.bounded(2) == 0;
            const int spacing = 8 + random.bounded(40);
            m_run->script = [&](QDialog& dialog) {
                Child<QCheckBox>(dialog, "Check1")->setChecked(show);
                Child<QLineEdit>(dialog, "txtSpacing")->setText(QString::number(spacing));
                Click(dialog, "Command1");
            };
            Trigger("Gridoptions");
            break;
        }
        case 15: { // image size (back to zoom 100 %)
            if (!m_zooms)
                break;
            const int width = 200 + random.bounded(400);
            const int height = 150 + random.bounded(300);
            m_run->script = [&](QDialog& dialog) {
                Child<QLineEdit>(dialog, "txtWidth")->setText(QString::number(width));
                Child<QLineEdit>(dialog, "txtHeight")->setText(QString::number(height));
                Click(dialog, "Command1");
            };
            Trigger("theimagesize");
            break;
        }
        case 16: { // HTML import replacing every shape
            const int x = random.bounded(200);
            const QString html = QString::asprintf(
                "<map name=\"imp\"><area shape=\"rect\" coords=\"%d,10,%d,60\" href=\"a.html\">"
                "<area shape=\"circle\" coords=\"%d,80,25\" href=\"b.html\"><area shape=\"poly\" "
                "coords=\"5,5,%d,40,30,90\" href=\"c.html\"></map>",
                x, x + 70, x + 40, x + 120);
            m_run->script = [&](QDialog& dialog) {
                Child<QPlainTextEdit>(dialog, "Text1")->setPlainText(html);
                Click(dialog, "Command1");
            };
            m_ui->answers.enqueue(true);
            Trigger("ConvertToShapes");
            break;
        }
        case 17:
        case 18:
            if (!m_zooms)
                break;
            Trigger(random.bounded(2) ? "smallsize" : "largesize");
            break;
        case 19: // an undo or a redo in between
            if (map.UndoStack().index() > m_floor)
                m_frame->Undo();
            break;
        case 20:
            m_frame->Redo();
            break;
        default:
            Trigger("pointermode");
            QTest::mouseClick(surface, Qt::LeftButton, {}, point());
            break;
        }
        m_run->script = [](QDialog& dialog) { dialog.reject(); };
        return kind;
    }

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
    void init()
    {
        OpenFrame({1000, 800});
        Panel().show();
        QDir(Folder()).removeRecursively();
    }
    void cleanup() { CloseFrame(); }

    void randomEditsUndoAndRedoToTheSameBytes_data()
    {
        QTest::addColumn<quint32>("seed");
        QTest::addColumn<bool>("zooms");
        for (quint32 seed = 1; seed <= 40; ++seed)
            QTest::addRow("seed %u", seed) << seed * 7919u << false;
        for (quint32 seed = 1; seed <= 16; ++seed)
            QTest::addRow("seed %u with zooms", seed) << seed * 104729u << true;
    }
    void randomEditsUndoAndRedoToTheSameBytes()
    {
        QFETCH(quint32, seed);
        QFETCH(bool, zooms);
        m_zooms = zooms;
        QRandomGenerator random(seed);
        ShapeCanvas* map = NewMap();
        QUndoStack& stack = map->UndoStack();
        // A few shapes to start from.
        for (int i = 0; i < 3; ++i)
            RandomEdit(*map, random);
        // Saved here: nothing later merges into the step before (QUndoStack keeps the
        // clean step whole).
        stack.setClean();
        const int start = m_floor = stack.index();
        const double startZoom = map->Document().ZoomLevel;
        // The map at each place in the history, as the run left it there.
        QMap<int, QByteArray> states{{start, Bytes(*map)}};
        for (int i = 0; i < 80; ++i) {
            const int was = stack.index();
            const int kind = RandomEdit(*map, random);
            const int now = stack.index();
            if (kind == 19 || kind == 20) {
                if (!zooms && states.contains(now))
                    QVERIFY2(states.value(now) == Bytes(*map), "an undo or redo in the run");
            } else if (now != was) {
                // New steps: what lay above the old place is gone; steps pushed together
                // (a gesture settled first) leave places between that were never seen, and
                // the first arrow key may have merged into the step at the old place.
                states.erase(states.lowerBound(qMax(qMin(was, now), start + 1)), states.end());
            }
            // Mid-gesture the map is at no place in the history yet.
            if (map->History().GestureOpen())
                states.remove(now);
            else
                states[now] = Bytes(*map);
        }
        QVERIFY(!map->Document().PolygonInProgress);
        const double endZoom = map->Document().ZoomLevel;
        const int end = stack.index();
        QVERIFY2(end - start > 10, "the run made steps");

        // Back to the start through the Undo menu item, then forward again; without
        // zooms in between every place in the history is the map as it was.
        QAction* undo = Child<QAction>(*m_frame, "EditUndo");
        QAction* redo = Child<QAction>(*m_frame, "EditRedo");
        while (stack.index() > start) {
            QVERIFY(undo->isEnabled());
            const QString name = undo->text();
            undo->trigger();
            if (!zooms && states.contains(stack.index()))
                QVERIFY2(Bytes(*map) == states.value(stack.index()), qPrintable(name));
        }
        map->SetZoomLevel(startZoom);
        QVERIFY2(SameUpToRounding(Bytes(*map), states.value(start)), Bytes(*map).constData());
        while (stack.index() < end) {
            QVERIFY(redo->isEnabled());
            redo->trigger();
            if (!zooms && states.contains(stack.index()))
                QVERIFY2(Bytes(*map) == states.value(stack.index()), qPrintable(undo->text()));
        }
        map->SetZoomLevel(endZoom);
        QVERIFY2(SameUpToRounding(Bytes(*map), states.value(end)), Bytes(*map).constData());
    }

    void theModifiedMarkFollowsTheHistoryAndSaves()
    {
        ShapeCanvas* map = NewMap();
        QCOMPARE(Marks(*map), "clean");
        QCOMPARE(map->parentWidget()->windowTitle(), QStringLiteral("Untitled[*]"));
        QCOMPARE(map->windowTitle(), QStringLiteral("Untitled"));
        // A failed operation pushes no step.
        Trigger("PasteShape"); // nothing copied yet
        m_run->script = [](QDialog& dialog) {
            Child<QPlainTextEdit>(dialog, "Text1")->setPlainText(QStringLiteral("no map here"));
            Click(dialog, "Command1");
            dialog.reject();
        };
        Trigger("ConvertToShapes");
        QCOMPARE(map->UndoStack().count(), 0);
        QCOMPARE(Marks(*map), "clean");
        QCOMPARE(m_ui->messages.size(), 2);
        m_ui->messages.clear();

        Drag(*map, "RectangleMode", QPoint(10, 10), QPoint(60, 50));
        QCOMPARE(Marks(*map), "modified");
        QCOMPARE(Child<QAction>(*m_frame, "EditUndo")->text(),
                 QStringLiteral("&Undo Draw Rectangle"));
        m_frame->Undo();
        QCOMPARE(Marks(*map), "clean");
        m_frame->Redo();
        QCOMPARE(Marks(*map), "modified");

        const QString file = m_dir.filePath(QStringLiteral("marked.imp"));
        m_ui->mapNamesToSave.enqueue(file);
        Trigger("menuSaveMap");
        QCOMPARE(Marks(*map), "clean");
        QCOMPARE(map->windowTitle(), QStringLiteral("marked.imp"));
        // Undo past the save is a change again; redo comes back to the saved state.
        m_frame->Undo();
        QCOMPARE(Marks(*map), "modified");
        m_frame->Redo();
        QCOMPARE(Marks(*map), "clean");

        // A save that fails leaves the map modified, and its window open when closing saves.
        Drag(*map, "CircleMode", QPoint(100, 100), QPoint(130, 120));
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner));
        Trigger("menuSaveMap");
        QCOMPARE(m_ui->messageTexts(), QStringList{MapFile::SaveErrorMessage()});
        QCOMPARE(Marks(*map), "modified");
        m_ui->saveChoices.enqueue(ModalUi::SaveChoice::Save);
        QVERIFY(!map->parentWidget()->close());
        QCOMPARE(m_ui->saveQuestions, QStringList{QStringLiteral("marked.imp")});
        QCOMPARE(m_ui->messages.size(), 2);
        // Save that works closes it, with the file written.
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
        const QByteArray saved = MapFile::MapBytes(map->Document(), file);
        m_ui->saveChoices.enqueue(ModalUi::SaveChoice::Save);
        QVERIFY(map->parentWidget()->close());
        QCOMPARE(ReadBytes(file), saved);
        QTRY_COMPARE(m_frame->MapWindows().size(), 0);
    }

    void propertiesCancelledAfterSwitchingTabsRecordsOnlyTheRestack()
    {
        ShapeCanvas* map = NewMap();
        Drag(*map, "RectangleMode", QPoint(10, 10), QPoint(60, 50));
        Drag(*map, "RectangleMode", QPoint(100, 100), QPoint(150, 150));
        QUndoStack& stack = map->UndoStack();
        const int steps = stack.count();
        const QByteArray before = Bytes(*map);
        QAction* undo = Child<QAction>(*m_frame, "EditUndo");
        // The map name, Shape #1's link (which brings it to the top) and the default area's.
        const char* button = "cmdCancel";
        const auto edit = [&button](QDialog& dialog) {
            Child<QLineEdit>(dialog, "txtMapName")->setText(QStringLiteral("Plan"));
            Child<QTabBar>(dialog, "tbsOptions")->setCurrentIndex(1);
            Child<QLineEdit>(dialog, "txtURL")->setText(QStringLiteral("rooms/kitchen.html"));
            Child<QTabBar>(dialog, "tbsOptions")->setCurrentIndex(3);
            Child<QLineEdit>(dialog, "txtURL")->setText(QStringLiteral("index.html"));
            Click(dialog, button);
        };

        // Cancelled: the shape looked at stays on top (as it always did), a restack the
        // user can undo, and nothing else changed.
        m_run->script = edit;
        Trigger("ShapeProperties");
        QCOMPARE(map->Document().ShapeOrder().front(), std::int16_t(0));
        QCOMPARE(stack.count(), steps + 1);
        QCOMPARE(undo->text(), QStringLiteral("&Undo Bring to Top"));
        m_frame->Undo();
        QCOMPARE(Bytes(*map), before);
        m_frame->Redo();
        const QByteArray restacked = Bytes(*map);

        // Cancel without switching, and OK without a change: no step.
        m_run->script = [](QDialog& dialog) { Click(dialog, "cmdCancel"); };
        Trigger("ShapeProperties");
        m_run->script = [](QDialog& dialog) { Click(dialog, "cmdOK"); };
        Trigger("ShapeProperties");
        QCOMPARE(stack.count(), steps + 1);

        // OK with edits: one step for the whole dialog.
        button = "cmdOK";
        m_run->script = edit;
        Trigger("ShapeProperties");
        QCOMPARE(stack.count(), steps + 2);
        QCOMPARE(undo->text(), QStringLiteral("&Undo Shape Properties"));
        // The links typed on two tabs are written back in the dialogs' test.
        QCOMPARE(map->Document().MapName, QStringLiteral("Plan"));
        m_frame->Undo();
        QCOMPARE(Bytes(*map), restacked);
    }

    void closingAskedOnceWithSaveDiscardOrCancel()
    {
        // Exit asks each map in turn (unmodified ones the question they always had): Yes and
        // Discard close it, Cancel and No keep it and stop there.
        NewMap();
        for (int i = 0; i < 2; ++i)
            Drag(*NewMap(), "RectangleMode", QPoint(10, 10), QPoint(60, 50));
        NewMap();
        m_ui->answers.enqueue(true);
        m_ui->saveChoices << ModalUi::SaveChoice::Discard << ModalUi::SaveChoice::Cancel;
        Trigger("Exit");
        QCOMPARE(m_ui->questions.size(), 1);
        QCOMPARE(m_ui->saveQuestions.size(), 2);
        QVERIFY(m_frame->isVisible());
        QTRY_COMPARE(m_frame->MapWindows().size(), 2);
        m_ui->saveChoices.enqueue(ModalUi::SaveChoice::Discard);
        m_ui->answers.enqueue(false);
        Trigger("Exit");
        QVERIFY(m_frame->isVisible());
        QTRY_COMPARE(m_frame->MapWindows().size(), 1);
        m_ui->answers.enqueue(true);
        Trigger("Exit");
        QVERIFY(!m_frame->isVisible());
    }

    void aModifiedMapIsKeptWhileEditingAndGoesWhenSavedOrClosed()
    {
        Run run;
        QVERIFY(!run.frame.StartRecovery(Folder()));
        QVERIFY(run.dialogs.isEmpty());
        RecoveryKeeper& keeper = *run.frame.Recovery();
        ShapeCanvas* map = run.NewMap(Picture());
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
        // The reason itself is the recovery store's test.
        QVERIFY2(said.contains(QStringLiteral("\"broken.imp\"")), qPrintable(said));
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

    void selectionGoesBothWays()
    {
        ShapeCanvas* map = NewMap();
        Draw(*map, "RectangleMode", {{50, 50}, {80, 80}});   // 0, covered by 1
        Draw(*map, "RectangleMode", {{10, 10}, {200, 200}}); // 1
        Draw(*map, "RectangleMode", {{250, 20}, {300, 60}}); // 2
        QCOMPARE(SelectedShape(), 2);
        // The covered shape, chosen in the list, is on top as if clicked.
        SelectRow(0);
        QCOMPARE(map->Document().ShapeOrder().front(), std::int16_t(0));
        QCOMPARE(map->Document().HitState, std::int16_t(-1));
        QTest::keyClick(&map->Surface(), Qt::Key_Down);
        QCOMPARE(map->Document().Shape(0).Points().front(), (ShapePoint{50, 51}));
        // A click in the map selects the row of the shape it picked.
        QTest::mouseClick(&map->Surface(), Qt::LeftButton, {}, {150, 150});
        QCOMPARE(SelectedShape(), 1);
        // Tab too.
        QTest::keyClick(&map->Surface(), Qt::Key_Tab);
        QCOMPARE(SelectedShape(), 2);
        // The row follows a drag: the box columns show where the shape went.
        Draw(*map, "pointermode", {{260, 30}, {270, 40}});
        QCOMPARE(List().model()->index(2, ShapeListModel::Left).data().toInt(), 260);
        // Deleting shrinks the list.
        Trigger("DeleteShape");
        QCOMPARE(List().model()->rowCount(), 2);
    }

    void undoAndRedoShowInTheList()
    {
        ShapeCanvas* map = NewMap();
        Draw(*map, "RectangleMode", {{10, 10}, {50, 50}});
        Trigger("Copyshape");
        Trigger("PasteShape");
        QCOMPARE(List().model()->rowCount(), 2);
        QCOMPARE(SelectedShape(), 1);
        Trigger("EditUndo");
        QCOMPARE(List().model()->rowCount(), 1);
        QCOMPARE(SelectedShape(), 0);
        QCOMPARE(Child<QLabel>(Panel(), "GeometryCaption")->text(),
                 QStringLiteral("Shape #1: Rectangle"));
        Trigger("EditRedo");
        QCOMPARE(List().model()->rowCount(), 2);
        QCOMPARE(SelectedShape(), 1);

        // Undo or Escape in the middle of a drag puts the shape back, and the rest of the
        // drag moves nothing; undo of a polygon half drawn takes it out of the list.
        QWidget* surface = &map->Surface();
        const std::vector<ShapePoint> before = map->Document().Shape(1).Points();
        const int steps = map->UndoStack().index();
        for (const bool escape : {false, true}) {
            QTest::mousePress(surface, Qt::LeftButton, {}, {30, 30});
            QTest::mouseMove(surface, {40, 40});
            if (escape)
                QTest::keyClick(surface, Qt::Key_Escape);
            else
                Trigger("EditUndo");
            QTest::mouseMove(surface, {50, 50});
            QTest::mouseMove(surface, {60, 70});
            QTest::mouseRelease(surface, Qt::LeftButton, {}, {60, 70});
            QCOMPARE(map->Document().Shape(1).Points(), before);
            QCOMPARE(map->UndoStack().index(), steps);
        }
        // Any other command in the middle of a drag ends the drag as a step of its own.
        QTest::mousePress(surface, Qt::LeftButton, {}, {30, 30});
        QTest::mouseMove(surface, {40, 40});
        Trigger("PasteShape");
        QTest::mouseMove(surface, {50, 50});
        QTest::mouseMove(surface, {60, 70});
        QTest::mouseRelease(surface, Qt::LeftButton, {}, {60, 70});
        QCOMPARE(map->Document().Shapes().back().Points(), Corners(0, 0, 40, 40));
        Trigger("EditUndo");
        Trigger("EditUndo");
        QCOMPARE(map->Document().Shape(1).Points(), before);
        Trigger("PolygonMode");
        QTest::mouseClick(surface, Qt::LeftButton, {}, {200, 200});
        QTest::mouseClick(surface, Qt::LeftButton, {}, {260, 200});
        QCOMPARE(List().model()->rowCount(), 3);
        Trigger("EditUndo");
        QCOMPARE(List().model()->rowCount(), 2);
        QCOMPARE(List().model()->index(1, 0).data().toString(), QStringLiteral("Shape #2"));
        QCOMPARE(map->UndoStack().index(), steps);
    }

    void listFollowsTheActiveMapAndLetsGoOfClosedOnes()
    {
        ShapeCanvas* first = NewMap();
        Draw(*first, "RectangleMode", {{10, 10}, {50, 50}});
        NewMap();
        QCOMPARE(List().model()->rowCount(), 0);
        m_frame->MdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(first->parentWidget()));
        QCOMPARE(List().model()->rowCount(), 1);
        // The drawn map is modified and is discarded; the empty one gets the old question.
        m_ui->saveChoices.enqueue(ModalUi::SaveChoice::Discard);
        m_ui->answers.enqueue(true);
        m_frame->MdiArea()->closeAllSubWindows();
        QTRY_COMPARE(m_frame->MapWindows().size(), 0);
        QCOMPARE(List().model()->rowCount(), 0);
        QCOMPARE(Child<QLabel>(Panel(), "GeometryCaption")->text(),
                 QStringLiteral("No shape selected"));
    }

    void editInPlaceAndFilter()
    {
        ShapeCanvas* map = NewMap();
        Draw(*map, "RectangleMode", {{10, 10}, {50, 50}});
        Draw(*map, "RectangleMode", {{100, 10}, {150, 50}});
        QAbstractItemModel* model = List().model();
        QVERIFY(model->setData(model->index(0, ShapeListModel::Url), "shop.html"));
        QVERIFY(model->setData(model->index(1, ShapeListModel::Alt), "Contact"));
        QTest::keyClicks(Child<QLineEdit>(Panel(), "ShapeFilter"), "SHOP");
        // Shape 2 is on top but filtered out: nothing is selected; choosing the row
        // that is left selects its shape.
        QCOMPARE(SelectedShape(), -1);
        SelectRow(0);
        QCOMPARE(map->Document().ShapeOrder().front(), std::int16_t(0));
        Child<QLineEdit>(Panel(), "ShapeFilter")->clear();
        QCOMPARE(model->rowCount(), 2);
        QCOMPARE(SelectedShape(), 0);
        // F6 goes from the map to the list and back.
        map->Surface().setFocus();
        QTest::keyClick(&map->Surface(), Qt::Key_F6);
        QVERIFY(List().hasFocus());
        QTest::keyClick(&List(), Qt::Key_F6);
        QVERIFY(map->Surface().hasFocus());
        // Del on the chosen row removes its shape.
        List().setFocus();
        QTest::keyClick(&List(), Qt::Key_Delete);
        QCOMPARE(model->rowCount(), 1);
        QCOMPARE(map->Document().Shape(0).Comment, QStringLiteral("Contact"));
    }

    void geometryEditorAppliesOnEnterOrWhenLeft()
    {
        ShapeCanvas* map = NewMap();
        Draw(*map, "RectangleMode", {{10, 10}, {50, 40}});
        Type("GeometryField1", "100");
        Type("GeometryField4", "60");
        QCOMPARE(map->Document().Shape(0).Points(),
                 (std::vector<ShapePoint>{{100, 10}, {140, 10}, {140, 70}, {100, 70}}));
        QCOMPARE(List().model()->index(0, ShapeListModel::Height).data().toInt(), 60);
        // Outside the picture: refused with a message, the shape as it was.
        Type("GeometryField3", "1000");
        QCOMPARE(m_ui->messageTexts(), QStringList{GeometryForm::OutsideMessage(map->Document())});
        QCOMPARE(Child<QLineEdit>(Panel(), "GeometryField3")->text(), QStringLiteral("40"));
        // Left without Enter for the picture: kept; refused then, it goes back quietly.
        auto* top = Child<QLineEdit>(Panel(), "GeometryField2");
        for (const char* typed : {"20", "x"}) {
            top->setFocus();
            top->selectAll();
            QTest::keyClicks(top, typed);
            map->Surface().setFocus();
            QCOMPARE(List().model()->index(0, ShapeListModel::Top).data().toInt(), 20);
            QCOMPARE(top->text(), QStringLiteral("20"));
        }
        QCOMPARE(m_ui->messages.size(), 1);
        // With nothing typed, Ctrl+Z in a field undoes the map's last step.
        QTest::keyClick(top, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(List().model()->index(0, ShapeListModel::Top).data().toInt(), 10);
    }

    void polygonVerticesInsertAndDelete()
    {
        ShapeCanvas* map = NewMap();
        Trigger("PolygonMode");
        for (const QPoint p : {QPoint(10, 10), QPoint(100, 10), QPoint(100, 100), QPoint(10, 10)})
            QTest::mouseClick(&map->Surface(), Qt::LeftButton, {}, p);
        auto* table = Child<QTableWidget>(Panel(), "GeometryVertices");
        table->setCurrentCell(0, 0);
        Child<QPushButton>(Panel(), "btnInsertVertex")->click();
        QCOMPARE(map->Document().Shape(0).Points(),
                 (std::vector<ShapePoint>{{10, 10}, {55, 10}, {100, 10}, {100, 100}}));
        QCOMPARE(table->rowCount(), 4);
        // A typed cell applies.
        table->item(1, 1)->setText(QStringLiteral("0"));
        QCOMPARE(map->Document().Shape(0).Points()[1], (ShapePoint{55, 0}));
        // Del on a chosen row deletes that vertex as the button does.
        table->setCurrentCell(1, 0);
        table->setFocus();
        QTest::keyClick(table, Qt::Key_Delete);
        QCOMPARE(map->Document().Shape(0).Points().size(), std::size_t(3));
        Child<QPushButton>(Panel(), "btnDeleteVertex")->click();
        QCOMPARE(map->Document().Shape(0).Points().size(), std::size_t(3));
        QCOMPARE(m_ui->messageTexts(), QStringList{GeometryForm::TooFewVerticesMessage()});
    }

    void viewKeysLookCloserWithoutChangingTheMap()
    {
        ShapeCanvas* map = NewMap(1200, 900);
        QVERIFY(Child<QAction>(*m_frame, "smallsize")->shortcut().isEmpty());
        QVERIFY(Child<QAction>(*m_frame, "largesize")->shortcut().isEmpty());
        QVERIFY(Child<QAction>(*m_frame, "ViewCloser")
                    ->shortcuts()
                    .contains(QKeySequence(Qt::CTRL | Qt::Key_Equal)));
        Trigger("ViewCloser");
        QCOMPARE(map->ViewScaleFactor(), 1.5);
        QCOMPARE(map->Document().ZoomLevel, 1.0);
        QCOMPARE(Child<QLabel>(*m_frame, "StatusPanel2")->text(), QStringLiteral("Zoom: 150%"));
        Trigger("ViewActualSize");
        QCOMPARE(map->ViewScaleFactor(), 1.0);
        Trigger("FitToWindow");
        QVERIFY(map->ViewScaleFactor() < 1.0);
        for (int i = 0; i < 30; ++i)
            Trigger("ViewFarther");
        QCOMPARE(Child<QLabel>(*m_frame, "StatusPanel2")->text(), QStringLiteral("Zoom: 5%"));
    }
};

QTEST_MAIN(TestUndoHistory)
#include "tst_undohistory.moc"
