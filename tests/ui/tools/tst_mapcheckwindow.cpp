#include "ScriptedModalUi.h"
#include "ShapeRow.h"
#include "core/interchange/MapFindingsModel.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/frame/MDIForm1.h"
#include "ui/tools/MapCheckWindow.h"

#include <QAction>
#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

// Tools > Check Map: from the menu to the finding and back to its shape.
class TestMapCheckWindow : public QObject
{
    Q_OBJECT
private slots:
    void menuItemFollowsTheUrlChecker()
    {
        ScriptedModalUi ui;
        MDIForm1 frame(ui);
        auto* tools = frame.findChild<QMenu*>("tools");
        QStringList names;
        for (QAction* action : tools->actions())
            names << action->objectName();
        QCOMPARE(names, QStringList({"ConvertToShapes", "mnuURLChecker", "mnuCheckMap"}));
        auto* check = frame.findChild<QAction*>("mnuCheckMap");
        QCOMPARE(check->text(), QStringLiteral("Check Map"));
        // Like the other tools, it needs an open map.
        QVERIFY(!check->isEnabled());
        check->trigger();
        QVERIFY(!frame.findChild<MapCheckWindow*>());
        ui.answers.fill(true, 4);
    }

    void findingsLeadBackToTheirShapes()
    {
        ScriptedModalUi ui;
        MDIForm1 frame(ui);
        frame.show();
        QVERIFY(QTest::qWaitForWindowExposed(&frame));
        MapDocument& d = NewMap(frame, ui)->Document();
        AddShapeRow(d, "1|10,10,100,10,100,100,10,100|a.htm|Big|||0|");
        AddShapeRow(d, "1|20,20,40,20,40,40,20,40|b.htm|Hidden|||0|");
        AddShapeRow(d, "1|2400,10,2450,10,2450,60,2400,60|#||||0|");
        d.BringToTop(0);

        QAction* check = frame.findChild<QAction*>("mnuCheckMap");
        QVERIFY(check->isEnabled());
        check->trigger();
        auto* window = frame.findChild<MapCheckWindow*>("MapCheckWindow");
        QVERIFY(window && window->isVisible());
        QVERIFY(!window->isModal());
        QCOMPARE(window->windowTitle(), QStringLiteral("Check Map"));
        const MapFindingsModel& model = window->Findings();
        QCOMPARE(model.rowCount(), 3);
        QCOMPARE(model.index(0, 0).data().toString(), QStringLiteral("Shape #2"));
        QCOMPARE(model.index(1, 0).data().toString(), QStringLiteral("Shape #3"));
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
        const QScrollBar* across = frame.ActiveMapWindow()->findChild<QScrollBar*>("HScroll1");
        QVERIFY(across->value() > 1800 && across->value() < 2200);
        QCOMPARE(frame.ActiveMapWindow()->UndoStack().undoText(), QStringLiteral("Bring to Top"));

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
        QCOMPARE(frame.findChildren<MapCheckWindow*>().size(), 1);
        ui.answers.fill(true, 4);
    }

private:
    ShapeCanvas* NewMap(MDIForm1& frame, ScriptedModalUi& ui)
    {
        const QString path = m_dir.filePath(QStringLiteral("pic.png"));
        // Wider than the window: some shapes lie out of view.
        QImage(2800, 300, QImage::Format_RGB32).save(path);
        ui.pictures.enqueue(path);
        frame.findChild<QAction*>("NewMap")->trigger();
        return frame.ActiveMapWindow();
    }
    QTemporaryDir m_dir;
};

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    TestMapCheckWindow test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_mapcheckwindow.moc"
