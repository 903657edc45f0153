#include "FrameFixture.h"
#include "ShapeBuilders.h"
#include "core/document/ShapeListModel.h"
#include "core/forms/GeometryForm.h"
#include "ui/canvas/CanvasSurface.h"
#include "ui/frame/ShapesPanel.h"

#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTableView>
#include <QTableWidget>

// The Shapes dock and the view-scale commands of the frame, driven as a user would.
class TestShapesPanel : public QObject, FrameFixture
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

private slots:
    void init()
    {
        OpenFrame();
        Panel().show();
    }
    void cleanup() { CloseFrame(); }

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

QTEST_MAIN(TestShapesPanel)
#include "tst_shapespanel.moc"
