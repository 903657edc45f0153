#include "ScriptedModalUi.h"
#include "canvas/OpenMapCount.h"
#include "canvas/ShapeCanvas.h"
#include "frame/Credits.h"
#include "frame/MDIForm1.h"
#include "frame/MapCommandSet.h"
#include "frame/PictureStrip.h"
#include "frame/StartUp.h"
#include "frame/ToolStrip.h"
#include "frame/frmOptions.h"
#include "frame/frmSplash.h"
#include "interchange/MapFile.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <memory>

// End-to-end flows through the main window, with scripted dialogs.
class TestMDIForm1 : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void menusCarryTheirNamesAndCaptions_data();
    void menusCarryTheirNamesAndCaptions();
    void toolButtonsHaveTooltipsAndIcons();
    void mapCommandsFollowTheOpenMaps();
    void modeGroupFollowsTheFrameHeight();
    void windowMenuArrangesTheMaps();
    void windowMenuListsTheMaps();
    void splashShowsVersionStatusAndProgress();

    void newMapDrawPropertiesSaveAndReopen();
    void cancelledOrUnreadablePictureMakesNoWindow();
    void failedOpenLeavesNoWindow();
    void commandLineOpensMapsAndPictures();

    void copyInOneMapPasteTwiceInAnother();
    void cutThenPasteRestoresAnEqualShape();
    void pasteBeforeCopyTellsTheUser();
    void deleteKeyBelongsToTheMap();
    void copyOfAnEmptyMapKeepsTheClipboard();

    void zoomStaysBetweenOneAndTwo();
    void zoomRefusesTooManyPixels();

    void modeMenuAndButtonsAgree();

    void propertiesCancelKeepsDocumentButNotStacking();
    void propertiesCloseBoxAsks();
    void propertiesOpenOnTheRequestedTab();

    void exitAsksEachMapAndNoKeepsItOpen();

    void startUpOpensWhatWasChosen();
    void helpAndOnlineReportFailures();
    void creditsHasThreeTabs();
    void toolWindowsRunThroughTheFrame();

private:
    QString Picture(int width, int height, const QString& name = QStringLiteral("pic.png"));
    QAction* Action(const char* name) const;
    void Trigger(const char* name) const;
    ShapeCanvas* NewMap(int width = 400, int height = 300);
    void DrawRectangle(ShapeCanvas& map, QPoint from, QPoint to);

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ScriptedModalUi> m_ui;
    std::unique_ptr<MDIForm1> m_frame;
    std::function<void(QDialog&)> m_dialogScript;
    QStringList m_dialogsShown;
};

void TestMDIForm1::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_ui = std::make_unique<ScriptedModalUi>();
    m_frame = std::make_unique<MDIForm1>(*m_ui);
    m_dialogsShown.clear();
    m_dialogScript = [](QDialog& dialog) { dialog.reject(); };
    m_frame->ExecDialog = [this](QDialog& dialog) {
        m_dialogsShown.append(dialog.objectName());
        m_dialogScript(dialog);
        return dialog.result();
    };
    m_frame->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_frame.get()));
}

void TestMDIForm1::cleanup()
{
    // Leave without questions: every map says Yes.
    for (int i = 0; i < 20; ++i)
        m_ui->answers.enqueue(true);
    m_frame.reset();
    m_ui.reset();
    m_dir.reset();
    QCOMPARE(OpenMapCount, std::int16_t(0));
}

QString TestMDIForm1::Picture(int width, int height, const QString& name)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(QColor(200, 220, 240));
    const QString path = m_dir->filePath(name);
    if (!image.save(path))
        qFatal("cannot write the test picture");
    return path;
}

QAction* TestMDIForm1::Action(const char* name) const
{
    return m_frame->findChild<QAction*>(QString::fromLatin1(name));
}

void TestMDIForm1::Trigger(const char* name) const
{
    QAction* action = Action(name);
    QVERIFY2(action != nullptr, name);
    action->trigger();
}

ShapeCanvas* TestMDIForm1::NewMap(int width, int height)
{
    m_ui->pictures.enqueue(Picture(width, height));
    Trigger("NewMap");
    return m_frame->ActiveMapWindow();
}

void TestMDIForm1::DrawRectangle(ShapeCanvas& map, QPoint from, QPoint to)
{
    Trigger("RectangleMode");
    QWidget* surface = map.findChild<QWidget*>(QStringLiteral("TheCanvas"));
    QVERIFY(surface != nullptr);
    QTest::mousePress(surface, Qt::LeftButton, {}, from);
    QTest::mouseMove(surface, (from + to) / 2);
    QTest::mouseMove(surface, to);
    QTest::mouseRelease(surface, Qt::LeftButton, {}, to);
    Trigger("pointermode");
}

// ---- menus, buttons, enabling -----------------------------------------------------------

void TestMDIForm1::menusCarryTheirNamesAndCaptions_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("caption");
    const char* rows[][2] = {
        {"file", "&File"},
        {"NewMap", "&New Map"},
        {"LoadPic", "Load &Map"},
        {"filesplit", "-"},
        {"menuSaveMap", "Sa&ve Map"},
        {"menuSaveMapAs", "&Save Map &As..."},
        {"filesplit2", "-"},
        {"generatecode", "&Generate Image Map Code"},
        {"mnuTestMap", "&Test Image Map"},
        {"split1", "-"},
        {"Exit", "E&xit"},
        {"edit", "&Edit"},
        {"CutShape", "Cu&t Shape"},
        {"Copyshape", "&Copy Shape"},
        {"PasteShape", "&Paste Shape"},
        {"editsplit", "-"},
        {"DeleteShape", "&Delete Shape"},
        {"editsplit2", "-"},
        {"MorphShape", "&Morph to..."},
        {"MorRectangle", "&Rectangle"},
        {"MorCircle", "&Circle"},
        {"MorPolygon", "&Polygon"},
        {"view", "&View"},
        {"smallsize", "&Zoom In"},
        {"largesize", "&Zoom Out"},
        {"viewsplit", "-"},
        {"CustomZoom", "Custom &Zoom"},
        {"options", "&Options"},
        {"theimagesize", "&Image Size"},
        {"Gridoptions", "&Grid Options"},
        {"MapColors", "&Map Colors"},
        {"ShapeProperties", "&Shape Properties"},
        {"optionssplit", "-"},
        {"Shapes", "&Draw Mode"},
        {"RectangleMode", "&Rectangle"},
        {"CircleMode", "&Circle"},
        {"PolygonMode", "&Polygon"},
        {"pointermode", "P&ointer"},
        {"tools", "&Tools"},
        {"ConvertToShapes", "&Convert HTML Code to Map"},
        {"mnuURLChecker", "&URL Checker"},
        {"TheWindow", "&Window"},
        {"Cascade", "&Cascade"},
        {"Tile", "&Tile"},
        {"arrangeicons", "&Arrange Icons"},
        {"HelpFileMenu", "&Help"},
        {"HelpFile", "&Help File"},
        {"corvaneonline", "&Corvane Online"},
        {"mnuhelpsplit", "-"},
        {"mnuCredits", "&Credits"},
    };
    for (const auto& row : rows)
        QTest::newRow(row[0]) << QString::fromLatin1(row[0]) << QString::fromLatin1(row[1]);
}

void TestMDIForm1::menusCarryTheirNamesAndCaptions()
{
    QFETCH(QString, name);
    QFETCH(QString, caption);
    if (auto* menu = m_frame->findChild<QMenu*>(name)) {
        QCOMPARE(menu->title(), caption);
        return;
    }
    auto* action = m_frame->findChild<QAction*>(name);
    QVERIFY2(action != nullptr, qPrintable(name));
    if (caption == QStringLiteral("-"))
        QVERIFY(action->isSeparator());
    else
        QCOMPARE(action->text(), caption);
}

void TestMDIForm1::toolButtonsHaveTooltipsAndIcons()
{
    const QList<QPair<QString, QString>> buttons{
        {"btnNewImage", "New Image"},
        {"btnOpen", "Load Map"},
        {"btnSave", "Save Map"},
        {"bntSaveAs", "Save Map As"},
        {"btnGen", "Generate Code"},
        {"btnTest", "Test Map"},
        {"btnCut", "Cut Shape"},
        {"btnCopy", "Copy Shape"},
        {"btnPaste", "Paste Shape"},
        {"btnDelete", "Remove Shape"},
        {"btnColors", "Set The Map's Colors"},
        {"btnProp", "Shape Properties"},
        {"btnHelp", "Help"},
        {"PointOpt", "Pointer Mode"},
        {"RectOpt", "Rectangle Mode"},
        {"CirOpt", "Circle Mode"},
        {"PolyOpt", "Polygon Mode"},
    };
    for (const auto& [name, tooltip] : buttons) {
        auto* button = m_frame->findChild<QToolButton*>(name);
        QVERIFY2(button != nullptr, qPrintable(name));
        QCOMPARE(button->toolTip(), tooltip);
        // Compiled in: an icon shows without any theme installed.
        QVERIFY2(!button->icon().pixmap(24, 24).isNull(), qPrintable(name));
    }
    for (const char* mode : {"PointOpt", "RectOpt", "CirOpt", "PolyOpt"}) {
        QCOMPARE(m_frame->findChild<QToolButton*>(QString::fromLatin1(mode))->parentWidget(),
                 m_frame->findChild<QWidget*>(QStringLiteral("Frame1")));
    }
    QVERIFY(m_frame->findChild<QWidget*>(QStringLiteral("StatusBar1")) != nullptr);
    QCOMPARE(m_frame->windowTitle(), QStringLiteral("Vantrel 1.0.1"));
}

void TestMDIForm1::mapCommandsFollowTheOpenMaps()
{
    const auto enabled = [this](const char* name) {
        if (auto* button = m_frame->findChild<QToolButton*>(QString::fromLatin1(name)))
            return button->isEnabled();
        if (auto* menu = m_frame->findChild<QMenu*>(QString::fromLatin1(name)))
            return menu->menuAction()->isEnabled();
        return Action(name)->isEnabled();
    };
    const char* mapCommands[] = {"btnSave",      "bntSaveAs",  "btnCut",      "btnCopy",
                                 "btnPaste",     "btnDelete",  "btnProp",     "btnGen",
                                 "btnTest",      "btnColors",  "menuSaveMap", "menuSaveMapAs",
                                 "generatecode", "mnuTestMap", "edit",        "view",
                                 "options",      "tools",      "PasteShape",  "smallsize"};
    for (const char* name : mapCommands)
        QVERIFY2(!enabled(name), name);
    QVERIFY(MapCommandSet(*m_frame).Missing().isEmpty());
    QVERIFY(enabled("btnNewImage"));
    QVERIFY(enabled("LoadPic"));
    QVERIFY(enabled("HelpFile"));

    ShapeCanvas* first = NewMap();
    ShapeCanvas* second = NewMap();
    QVERIFY(first != nullptr && second != nullptr && first != second);
    for (const char* name : mapCommands)
        QVERIFY2(enabled(name), name);

    m_ui->answers.enqueue(true);
    QVERIFY(first->parentWidget()->close());
    QVERIFY(enabled("btnSave"));
    QVERIFY(enabled("edit"));
    m_ui->answers.enqueue(true);
    QVERIFY(second->parentWidget()->close());
    QTRY_COMPARE(m_frame->MapWindows().size(), 0);
    for (const char* name : mapCommands)
        QVERIFY2(!enabled(name), name);
    QCOMPARE(m_ui->questions.size(), 2);

    // A disabled command does nothing, also through its shortcut's action.
    Trigger("PasteShape");
    QVERIFY(m_ui->messages.isEmpty());
}

void TestMDIForm1::modeGroupFollowsTheFrameHeight()
{
    // Fills the strip less the margin once it is 40 pixels below btnHelp's top ...
    QCOMPARE(ToolStrip::Frame1Height(700, 400, 500), 692);
    QCOMPARE(ToolStrip::Frame1Height(441, 400, 500), 433);
    // ... and otherwise stays, never shrinking over the buttons.
    QCOMPARE(ToolStrip::Frame1Height(440, 400, 500), 500);
    QCOMPARE(ToolStrip::Frame1Height(100, 400, 500), 500);

    auto* strip = m_frame->findChild<QWidget*>(QStringLiteral("Picture1"));
    auto* frame1 = m_frame->findChild<QWidget*>(QStringLiteral("Frame1"));
    m_frame->resize(m_frame->width(), 900);
    QTRY_COMPARE(frame1->height(), strip->height() - 8);
    auto* help = m_frame->findChild<QToolButton*>(QStringLiteral("btnHelp"));
    QVERIFY(frame1->geometry().contains(help->geometry().translated(frame1->pos())));
}

void TestMDIForm1::windowMenuArrangesTheMaps()
{
    ShapeCanvas* first = NewMap();
    ShapeCanvas* second = NewMap();
    auto* one = qobject_cast<QMdiSubWindow*>(first->parentWidget());
    auto* two = qobject_cast<QMdiSubWindow*>(second->parentWidget());
    const QRect area = m_frame->MdiArea()->viewport()->rect();

    Trigger("Tile");
    QCOMPARE(one->geometry(), QRect(0, 0, area.width(), area.height() / 2));
    QCOMPARE(two->geometry().top(), area.height() / 2);
    QCOMPARE(two->geometry().bottom(), area.bottom());

    Trigger("Cascade");
    QVERIFY(one->geometry().topLeft() != two->geometry().topLeft());

    one->showMinimized();
    two->showMinimized();
    Trigger("arrangeicons");
    QCOMPARE(one->geometry().bottom(), area.bottom());
    QCOMPARE(two->geometry().bottom(), area.bottom());
    QCOMPARE(one->x(), 0);
    QCOMPARE(two->x(), one->width());
}

void TestMDIForm1::windowMenuListsTheMaps()
{
    ShapeCanvas* first = NewMap();
    NewMap();
    m_frame->MdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(first->parentWidget()));
    auto* menu = m_frame->findChild<QMenu*>(QStringLiteral("TheWindow"));
    for (int round = 0; round < 2; ++round) {
        emit menu->aboutToShow();
        QStringList entries;
        QStringList checked;
        for (QAction* action : menu->actions()) {
            if (action->isSeparator())
                continue;
            entries.append(action->text());
            if (action->isChecked())
                checked.append(action->text());
        }
        QCOMPARE(entries, (QStringList{"&Cascade", "&Tile", "&Arrange Icons", "&1 Untitled",
                                       "&2 Untitled"}));
        QCOMPARE(checked, QStringList{"&1 Untitled"});
    }
    menu->actions().constLast()->trigger();
    QVERIFY(m_frame->ActiveMapWindow() != first);
}

void TestMDIForm1::splashShowsVersionStatusAndProgress()
{
    QCoreApplication::setApplicationVersion(QStringLiteral("1.0.1"));
    frmSplash splash;
    splash.Progress(QStringLiteral("Reading the picture formats..."), 6, 12);
    QCOMPARE(splash.findChild<QLabel*>(QStringLiteral("lblProductName"))->text(),
             QStringLiteral("Vantrel"));
    QCOMPARE(splash.findChild<QLabel*>(QStringLiteral("lblVersion"))->text(),
             QStringLiteral("Version 1.0.1"));
    QCOMPARE(splash.findChild<QLabel*>(QStringLiteral("lblStatus"))->text(),
             QStringLiteral("Reading the picture formats..."));
    auto* bar = splash.findChild<PictureStrip*>();
    QCOMPARE(bar->Value(), 6);
    QCOMPARE(bar->Maximum(), 12);
    bar->SetValue(40);
    QCOMPARE(bar->Value(), 12);
    const QPixmap strip = PictureStrip::MakeStrip(8, 16);
    QCOMPARE(strip.size(), QSize(128, 16));
    QVERIFY(strip.toImage().pixelColor(8, 8).alpha() > 0);
}

// ---- maps -------------------------------------------------------------------------------

void TestMDIForm1::newMapDrawPropertiesSaveAndReopen()
{
    ShapeCanvas* map = NewMap(400, 300);
    QVERIFY(map != nullptr);
    QCOMPARE(map->windowTitle(), QStringLiteral("Untitled"));
    QCOMPARE(map->Document().SWidth, 400);
    QCOMPARE(map->Document().ImageName, QStringLiteral("pic.png"));

    DrawRectangle(*map, QPoint(20, 30), QPoint(120, 90));
    QCOMPARE(map->Document().ItemCount(), std::int16_t(0));
    QCOMPARE(map->Document().Shape(0).GetShapeType(), std::int16_t(Rectangle));
    // The map writes the pointer position into the frame's status bar.
    QVERIFY(m_frame->findChild<QLabel*>(QStringLiteral("StatusPanel1"))
                ->text()
                .startsWith(QStringLiteral("X:")));

    m_dialogScript = [](QDialog& dialog) {
        QVERIFY(qobject_cast<frmOptions*>(&dialog) != nullptr);
        dialog.findChild<QLineEdit*>(QStringLiteral("txtMapName"))->setText(QStringLiteral("Plan"));
        dialog.findChild<QComboBox*>(QStringLiteral("Combo1"))->setCurrentIndex(2);
        emit dialog.findChild<QComboBox*>(QStringLiteral("Combo1"))->activated(2);
        QTest::mouseClick(dialog.findChild<QRadioButton*>(QStringLiteral("BorderOpt_1")),
                          Qt::LeftButton);
        auto* tabs = dialog.findChild<QTabBar*>(QStringLiteral("tbsOptions"));
        QCOMPARE(tabs->count(), 3);
        QCOMPARE(tabs->tabText(1), QStringLiteral("Shape #1"));
        tabs->setCurrentIndex(1);
        auto* url = dialog.findChild<QLineEdit*>(QStringLiteral("txtURL"));
        url->clear();
        QTest::keyClicks(url, QStringLiteral("rooms/kitchen.html"));
        dialog.findChild<QLineEdit*>(QStringLiteral("txtComment"))
            ->setText(QStringLiteral("Kitchen"));
        QTest::mouseClick(dialog.findChild<QCheckBox*>(QStringLiteral("Check1")), Qt::LeftButton);
        dialog.findChild<QLineEdit*>(QStringLiteral("txtAlert"))
            ->setText(QStringLiteral("Hungry?"));
        tabs->setCurrentIndex(2);
        dialog.findChild<QLineEdit*>(QStringLiteral("txtURL"))
            ->setText(QStringLiteral("index.html"));
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
    };
    Trigger("ShapeProperties");
    QCOMPARE(m_dialogsShown, QStringList{"frmOptions"});
    const MapDocument& doc = map->Document();
    QCOMPARE(doc.MapName, QStringLiteral("Plan"));
    QCOMPARE(doc.MapStyle, std::int16_t(2));
    QCOMPARE(doc.MapBorder, std::int16_t(1));
    QCOMPARE(doc.GetURL(0), QStringLiteral("rooms/kitchen.html"));
    QCOMPARE(doc.GetComment(0), QStringLiteral("Kitchen"));
    QCOMPARE(doc.GetAlertVal(0), std::int16_t(1));
    QCOMPARE(doc.GetAlert(0), QStringLiteral("Hungry?"));
    QCOMPARE(doc.DefURL, QStringLiteral("index.html"));

    m_ui->mapNamesToSave.enqueue(m_dir->filePath(QStringLiteral("plan")));
    Trigger("menuSaveMapAs");
    const QString saved = m_dir->filePath(QStringLiteral("plan.imp"));
    QVERIFY2(QFileInfo::exists(saved), qPrintable(m_ui->messageTexts().join('\n')));
    QCOMPARE(map->windowTitle(), QStringLiteral("plan.imp"));

    m_ui->mapsToOpen.enqueue(saved);
    Trigger("LoadPic");
    QCOMPARE(m_frame->MapWindows().size(), 2);
    ShapeCanvas* reopened = m_frame->ActiveMapWindow();
    QVERIFY(reopened != map);
    QCOMPARE(MapFile::MapText(reopened->Document(), saved), MapFile::MapText(doc, saved));
    QVERIFY(m_ui->messages.isEmpty());
}

void TestMDIForm1::cancelledOrUnreadablePictureMakesNoWindow()
{
    Trigger("NewMap"); // the scripted dialog cancels
    QVERIFY(m_frame->MapWindows().isEmpty());
    QVERIFY(m_ui->messages.isEmpty());

    const QString junk = m_dir->filePath(QStringLiteral("junk.jpg"));
    QFile file(junk);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("not a picture");
    file.close();
    m_ui->pictures.enqueue(junk);
    Trigger("NewMap");
    QVERIFY(m_frame->MapWindows().isEmpty());
    QCOMPARE(m_ui->messages.size(), 1);
    QCOMPARE(m_ui->messages.first().icon, ModalUi::Icon::Critical);
    QVERIFY(m_ui->messages.first().text.contains(QStringLiteral("junk.jpg")));
    QCOMPARE(OpenMapCount, std::int16_t(0));
    QVERIFY(!Action("menuSaveMap")->isEnabled());
}

void TestMDIForm1::failedOpenLeavesNoWindow()
{
    const QString broken = m_dir->filePath(QStringLiteral("broken.imp"));
    QFile file(broken);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("this is not a map\r\n");
    file.close();
    m_ui->mapsToOpen.enqueue(broken);
    Trigger("LoadPic");
    QVERIFY(m_frame->MapWindows().isEmpty());
    QVERIFY(m_frame->MdiArea()->subWindowList().isEmpty());
    QVERIFY(!m_ui->messages.isEmpty());
    QVERIFY(m_ui->questions.isEmpty());
    QCOMPARE(OpenMapCount, std::int16_t(0));
    QVERIFY(!Action("menuSaveMap")->isEnabled());

    Trigger("LoadPic"); // cancelled
    QVERIFY(m_frame->MapWindows().isEmpty());
}

void TestMDIForm1::commandLineOpensMapsAndPictures()
{
    ShapeCanvas* map = NewMap(200, 100);
    DrawRectangle(*map, QPoint(10, 10), QPoint(60, 50));
    const QString saved = m_dir->filePath(QStringLiteral("cli.imp"));
    m_ui->mapNamesToSave.enqueue(saved);
    Trigger("menuSaveMapAs");
    QVERIFY(QFileInfo::exists(saved));
    m_ui->answers.enqueue(true);
    map->parentWidget()->close();
    QTRY_VERIFY(m_frame->MapWindows().isEmpty());

    m_frame->OpenFiles({saved, Picture(120, 80, QStringLiteral("second.bmp"))});
    const QList<ShapeCanvas*> maps = m_frame->MapWindows();
    QCOMPARE(maps.size(), 2);
    QCOMPARE(maps.at(0)->Document().ItemCount(), std::int16_t(0));
    QCOMPARE(maps.at(1)->Document().ImageName, QStringLiteral("second.bmp"));
    QCOMPARE(maps.at(1)->windowTitle(), QStringLiteral("Untitled"));
}

// ---- clipboard --------------------------------------------------------------------------

void TestMDIForm1::copyInOneMapPasteTwiceInAnother()
{
    ShapeCanvas* first = NewMap();
    DrawRectangle(*first, QPoint(30, 40), QPoint(90, 100));
    first->Document().SetURL(0, QStringLiteral("a.html"));
    ShapeCanvas* second = NewMap();
    QCOMPARE(m_frame->ActiveMapWindow(), second);

    m_frame->MdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(first->parentWidget()));
    Trigger("Copyshape");
    m_frame->MdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(second->parentWidget()));
    QCOMPARE(m_frame->ActiveMapWindow(), second);
    Trigger("PasteShape");
    m_frame->Tools().Button(QStringLiteral("btnPaste"))->click();
    QCOMPARE(second->Document().ItemCount(), std::int16_t(1));
    QCOMPARE(first->Document().ItemCount(), std::int16_t(0));
    for (std::int16_t i = 0; i < 2; ++i) {
        const PatShape& pasted = second->Document().Shape(i);
        QCOMPARE(pasted.URL, QStringLiteral("a.html"));
        QCOMPARE(pasted.GetShapeType(), std::int16_t(Rectangle));
        const ShapeRect box = PatShape::BoundingRect(pasted.Points(), false);
        QCOMPARE(box.right - box.left, 60);
        QCOMPARE(box.bottom - box.top, 60);
    }
    QVERIFY(m_ui->messages.isEmpty());
}

void TestMDIForm1::cutThenPasteRestoresAnEqualShape()
{
    ShapeCanvas* map = NewMap();
    DrawRectangle(*map, QPoint(20, 30), QPoint(100, 80));
    MapDocument& doc = map->Document();
    doc.SetURL(0, QStringLiteral("cut.html"));
    doc.SetComment(0, QStringLiteral("Cut me"));
    doc.SetAlertVal(0, 1);
    // A pasted shape lands in the top-left corner.
    PatShape before;
    doc.Shape(0).MakeACopy(before);
    QCOMPARE(PatShape::BoundingRect(before.Points(), false).right, 80);

    Trigger("CutShape");
    QCOMPARE(doc.ItemCount(), std::int16_t(-1));
    QVERIFY(m_frame->Clipboard().SomethingInHoldShape);
    Trigger("PasteShape");
    QCOMPARE(doc.ItemCount(), std::int16_t(0));
    const PatShape& after = doc.Shape(0);
    QCOMPARE(after.GetShapeType(), before.GetShapeType());
    const auto text = [](const PatShape& shape) {
        QStringList points;
        for (const ShapePoint& p : shape.Points())
            points.append(QStringLiteral("%1,%2").arg(p.x).arg(p.y));
        return points.join(QLatin1Char(' '));
    };
    QCOMPARE(text(after), text(before));
    QCOMPARE(after.URL, before.URL);
    QCOMPARE(after.Comment, before.Comment);
    QCOMPARE(after.AlertBox, before.AlertBox);
    QVERIFY(after.IsShapeDone());
}

void TestMDIForm1::pasteBeforeCopyTellsTheUser()
{
    ShapeCanvas* map = NewMap();
    Trigger("PasteShape");
    QCOMPARE(m_ui->messages.size(), 1);
    QCOMPARE(m_ui->messages.first().text, QStringLiteral("No shape has been copied yet."));
    QCOMPARE(m_ui->messages.first().icon, ModalUi::Icon::Information);
    QCOMPARE(map->Document().ItemCount(), std::int16_t(-1));
}

void TestMDIForm1::deleteKeyBelongsToTheMap()
{
    ShapeCanvas* map = NewMap();
    DrawRectangle(*map, QPoint(10, 10), QPoint(60, 40));
    QWidget* surface = map->findChild<QWidget*>(QStringLiteral("TheCanvas"));
    DrawRectangle(*map, QPoint(100, 10), QPoint(160, 40));
    QTest::keyClick(surface, Qt::Key_Delete);
    QCOMPARE(map->Document().ItemCount(), std::int16_t(0));
    // While a polygon is being drawn the key does nothing ...
    Trigger("PolygonMode");
    QTest::mouseClick(surface, Qt::LeftButton, {}, QPoint(100, 100));
    QTest::mouseClick(surface, Qt::LeftButton, {}, QPoint(150, 100));
    QVERIFY(map->Document().PolygonInProgress);
    const std::int16_t count = map->Document().ItemCount();
    QTest::keyClick(surface, Qt::Key_Delete);
    QCOMPARE(map->Document().ItemCount(), count);
    QVERIFY(map->Document().PolygonInProgress);
    QVERIFY(m_ui->messages.isEmpty());
    // ... while the menu command removes the top shape.
    Trigger("DeleteShape");
    QCOMPARE(map->Document().ItemCount(), std::int16_t(count - 1));
}

void TestMDIForm1::copyOfAnEmptyMapKeepsTheClipboard()
{
    ShapeCanvas* map = NewMap();
    Trigger("Copyshape");
    QVERIFY(!m_frame->Clipboard().SomethingInHoldShape);
    DrawRectangle(*map, QPoint(10, 10), QPoint(40, 30));
    Trigger("Copyshape");
    m_ui->answers.enqueue(true);
    map->parentWidget()->close();
    ShapeCanvas* empty = NewMap();
    Trigger("Copyshape");
    // The shape copied from the closed map is still there to paste.
    QVERIFY(m_frame->Clipboard().SomethingInHoldShape);
    Trigger("PasteShape");
    QCOMPARE(empty->Document().ItemCount(), std::int16_t(0));
}

// ---- zoom -------------------------------------------------------------------------------

void TestMDIForm1::zoomStaysBetweenOneAndTwo()
{
    ShapeCanvas* map = NewMap(200, 150);
    Trigger("largesize");
    QCOMPARE(map->Document().ZoomLevel, 1.0);
    for (int i = 0; i < 12; ++i)
        Trigger("smallsize");
    QVERIFY(qAbs(map->Document().ZoomLevel - 2.0) < 1e-9);
    QCOMPARE(map->Document().SWidth, 200);
    Trigger("largesize");
    QVERIFY(qAbs(map->Document().ZoomLevel - 1.9) < 1e-9);
    QVERIFY(m_ui->messages.isEmpty());
    QCOMPARE(m_frame->findChild<QLabel*>(QStringLiteral("StatusPanel2"))->text(),
             QStringLiteral("Zoom: 190%"));
}

void TestMDIForm1::zoomRefusesTooManyPixels()
{
    ShapeCanvas* map = NewMap(1500, 1500);
    for (int i = 0; i < 3; ++i)
        Trigger("smallsize");
    QVERIFY(qAbs(map->Document().ZoomLevel - 1.3) < 1e-9);
    QVERIFY(m_ui->messages.isEmpty());
    Trigger("smallsize");
    QVERIFY(qAbs(map->Document().ZoomLevel - 1.3) < 1e-9);
    QCOMPARE(m_ui->messages.size(), 1);
    QCOMPARE(m_ui->messages.first().text,
             QStringLiteral("Zoom level is too great for an image of this size."));
    QCOMPARE(m_ui->messages.first().icon, ModalUi::Icon::Critical);
}

// ---- modes ------------------------------------------------------------------------------

void TestMDIForm1::modeMenuAndButtonsAgree()
{
    const auto checked = [this] {
        QStringList on;
        for (const char* name : {"PointOpt", "RectOpt", "CirOpt", "PolyOpt"}) {
            if (m_frame->findChild<QToolButton*>(QString::fromLatin1(name))->isChecked())
                on.append(QString::fromLatin1(name));
        }
        return on;
    };
    QCOMPARE(checked(), QStringList{"PointOpt"});
    QCOMPARE(m_frame->CurrentDrawingMode(), CanvasHost::DrawingMode::Pointer);
    NewMap(); // the Options menu needs a map
    const struct
    {
        const char* menu;
        const char* button;
        CanvasHost::DrawingMode mode;
    } rows[] = {{"CircleMode", "CirOpt", CanvasHost::DrawingMode::Circle},
                {"RectangleMode", "RectOpt", CanvasHost::DrawingMode::Rectangle},
                {"PolygonMode", "PolyOpt", CanvasHost::DrawingMode::Polygon},
                {"pointermode", "PointOpt", CanvasHost::DrawingMode::Pointer}};
    for (const auto& row : rows) {
        Trigger(row.menu);
        QCOMPARE(checked(), QStringList{QString::fromLatin1(row.button)});
        QCOMPARE(m_frame->CurrentDrawingMode(), row.mode);
    }
    QTest::mouseClick(m_frame->findChild<QToolButton*>(QStringLiteral("CirOpt")), Qt::LeftButton);
    QCOMPARE(checked(), QStringList{"CirOpt"});
    QCOMPARE(m_frame->CurrentDrawingMode(), CanvasHost::DrawingMode::Circle);
    // Clicking the selected button again keeps it selected.
    QTest::mouseClick(m_frame->findChild<QToolButton*>(QStringLiteral("CirOpt")), Qt::LeftButton);
    QCOMPARE(checked(), QStringList{"CirOpt"});
}

// ---- properties -------------------------------------------------------------------------

void TestMDIForm1::propertiesCancelKeepsDocumentButNotStacking()
{
    ShapeCanvas* map = NewMap();
    DrawRectangle(*map, QPoint(10, 10), QPoint(50, 50));
    DrawRectangle(*map, QPoint(100, 100), QPoint(150, 150));
    MapDocument& doc = map->Document();
    doc.SetURL(0, QStringLiteral("zero.html"));
    QCOMPARE(doc.ShapeOrder().front(), std::int16_t(1));
    const QString before = MapFile::MapText(doc, QStringLiteral("x.imp"));

    m_dialogScript = [](QDialog& dialog) {
        auto* tabs = dialog.findChild<QTabBar*>(QStringLiteral("tbsOptions"));
        QCOMPARE(tabs->count(), 4);
        tabs->setCurrentIndex(1); // Shape #1 comes to the top
        dialog.findChild<QLineEdit*>(QStringLiteral("txtURL"))->setText(QStringLiteral("changed"));
        tabs->setCurrentIndex(0);
        dialog.findChild<QLineEdit*>(QStringLiteral("txtMapName"))
            ->setText(QStringLiteral("Other"));
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdCancel")),
                          Qt::LeftButton);
    };
    Trigger("ShapeProperties");
    QCOMPARE(doc.GetURL(0), QStringLiteral("zero.html"));
    QCOMPARE(doc.MapName, QStringLiteral("MyMap"));
    QCOMPARE(doc.ShapeOrder().front(), std::int16_t(0));
    QVERIFY(m_ui->questions.isEmpty());
    // Apart from the stacking, the document is as it was.
    doc.ReStackArrayFromOptions(1);
    QCOMPARE(MapFile::MapText(doc, QStringLiteral("x.imp")), before);
}

void TestMDIForm1::propertiesCloseBoxAsks()
{
    ShapeCanvas* map = NewMap();
    bool stillOpenAfterNo = false;
    m_dialogScript = [this, &stillOpenAfterNo](QDialog& dialog) {
        dialog.show();
        dialog.findChild<QLineEdit*>(QStringLiteral("txtMapName"))->setText(QStringLiteral("X"));
        m_ui->answers.enqueue(false);
        dialog.close();
        stillOpenAfterNo = dialog.isVisible();
        m_ui->answers.enqueue(true);
        dialog.close();
    };
    Trigger("ShapeProperties");
    QVERIFY(stillOpenAfterNo);
    QCOMPARE(m_ui->questions, (QStringList{"Are you sure you want to close without saving?",
                                           "Are you sure you want to close without saving?"}));
    QCOMPARE(map->Document().MapName, QStringLiteral("MyMap"));

    m_dialogScript = [](QDialog& dialog) {
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("Command1")),
                          Qt::LeftButton);
        dialog.reject();
    };
    m_ui->answers.enqueue(true);
    Trigger("ShapeProperties");
    QCOMPARE(m_ui->messages.size(), 1);
    QVERIFY(m_ui->messages.first().text.startsWith(
        QStringLiteral("This area allows you to set the different properties of the shapes.")));
}

void TestMDIForm1::propertiesOpenOnTheRequestedTab()
{
    ShapeCanvas* map = NewMap();
    DrawRectangle(*map, QPoint(10, 10), QPoint(50, 50));
    DrawRectangle(*map, QPoint(100, 100), QPoint(150, 150));
    map->Document().SetURL(1, QStringLiteral("second.html"));
    QString shownUrl;
    bool shapePageShown = false;
    m_dialogScript = [&](QDialog& dialog) {
        QCOMPARE(dialog.findChild<QTabBar*>(QStringLiteral("tbsOptions"))->currentIndex(), 2);
        shapePageShown = !dialog.findChild<QWidget*>(QStringLiteral("ShapeProperties"))->isHidden();
        shownUrl = dialog.findChild<QLineEdit*>(QStringLiteral("txtURL"))->text();
        dialog.reject();
    };
    m_ui->answers.enqueue(true);
    m_frame->ShowShapeProperties(*map, 3);
    QVERIFY(shapePageShown);
    QCOMPARE(shownUrl, QStringLiteral("second.html"));
}

// ---- exit -------------------------------------------------------------------------------

void TestMDIForm1::exitAsksEachMapAndNoKeepsItOpen()
{
    NewMap();
    NewMap();
    m_ui->answers.enqueue(false);
    Trigger("Exit");
    QVERIFY(m_frame->isVisible());
    QCOMPARE(m_frame->MapWindows().size(), 2);
    QCOMPARE(m_ui->questions.size(), 1);
    QVERIFY(
        m_ui->questions.first().startsWith(QStringLiteral("Are you sure you are done editing")));

    m_ui->answers.enqueue(true);
    m_ui->answers.enqueue(false);
    Trigger("Exit");
    QVERIFY(m_frame->isVisible());
    QTRY_COMPARE(m_frame->MapWindows().size(), 1);

    m_ui->answers.enqueue(true);
    Trigger("Exit");
    QVERIFY(!m_frame->isVisible());
    QCOMPARE(OpenMapCount, std::int16_t(0));
}

// ---- start-up, help, credits ---------------------------------------------------------

void TestMDIForm1::startUpOpensWhatWasChosen()
{
    m_dialogScript = [](QDialog& dialog) {
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Vantrel"));
        QVERIFY(dialog.findChild<QRadioButton*>(QStringLiteral("Option1"))->isChecked());
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("Command1")),
                          Qt::LeftButton);
    };
    m_ui->pictures.enqueue(Picture(100, 80));
    m_frame->ShowStartUp();
    QCOMPARE(m_frame->MapWindows().size(), 1);

    // Open an existing map, then cancel the file dialog: an empty frame and no error.
    m_dialogScript = [](QDialog& dialog) {
        dialog.findChild<QRadioButton*>(QStringLiteral("Option2"))->setChecked(true);
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("Command1")),
                          Qt::LeftButton);
    };
    m_frame->ShowStartUp();
    QCOMPARE(m_frame->MapWindows().size(), 1);
    QVERIFY(m_ui->messages.isEmpty());

    // Help keeps the dialog; Close leaves the frame as it is.
    bool openAfterHelp = false;
    m_dialogScript = [&openAfterHelp](QDialog& dialog) {
        dialog.show();
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("Command2")),
                          Qt::LeftButton);
        openAfterHelp = dialog.isVisible();
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("Command3")),
                          Qt::LeftButton);
    };
    m_frame->ShowStartUp();
    QVERIFY(openAfterHelp);
    QCOMPARE(m_ui->opened.size(), 1);
    QVERIFY(m_ui->opened.first().endsWith(QStringLiteral("Vantrel Help File.html")));
    QCOMPARE(m_frame->MapWindows().size(), 1);
}

void TestMDIForm1::helpAndOnlineReportFailures()
{
    Trigger("HelpFile");
    Trigger("corvaneonline");
    QCOMPARE(m_ui->opened.size(), 2);
    QVERIFY(QFileInfo::exists(m_ui->opened.at(0)));
    QVERIFY(m_ui->opened.at(1).startsWith(QStringLiteral("https://")));
    QVERIFY(m_ui->messages.isEmpty());

    m_ui->desktopOpens = false;
    m_frame->Tools().Button(QStringLiteral("btnHelp"))->click();
    Trigger("corvaneonline");
    QCOMPARE(m_ui->messageTexts(),
             (QStringList{"There was an error while trying to load the file.",
                          "There was an error while trying to open the default browser."}));
    QCOMPARE(m_ui->messages.at(0).icon, ModalUi::Icon::Critical);
    QCOMPARE(m_ui->messages.at(1).icon, ModalUi::Icon::Critical);
}

void TestMDIForm1::creditsHasThreeTabs()
{
    QStringList tabs;
    m_dialogScript = [&tabs](QDialog& dialog) {
        auto* widget = dialog.findChild<QTabWidget*>();
        for (int i = 0; i < widget->count(); ++i)
            tabs.append(widget->tabText(i));
        dialog.accept();
    };
    Trigger("mnuCredits");
    QCOMPARE(tabs, (QStringList{"Programming", "Art Work", "Special Thanks"}));
}

void TestMDIForm1::toolWindowsRunThroughTheFrame()
{
    ShapeCanvas* map = NewMap();
    DrawRectangle(*map, QPoint(10, 10), QPoint(60, 40));
    const char* commands[] = {"CustomZoom",   "theimagesize",    "Gridoptions",
                              "MapColors",    "ConvertToShapes", "mnuURLChecker",
                              "generatecode", "ShapeProperties"};
    for (const char* command : commands)
        Trigger(command);
    m_frame->Tools().Button(QStringLiteral("btnColors"))->click();
    m_frame->Tools().Button(QStringLiteral("btnGen"))->click();
    QCOMPARE(m_dialogsShown, (QStringList{"Zoom", "ImageSize", "GridForm", "ColorPicker",
                                          "ConvertHTMLtoMap", "URLChecker", "GeneratedCodeForm",
                                          "frmOptions", "ColorPicker", "GeneratedCodeForm"}));
}

int main(int argc, char** argv)
{
    // The URL checker's embedded browser shares its graphics context with the widgets.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    TestMDIForm1 test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_mdiform1.moc"
