#include "ui/frame/FrameMenus.h"

#include "ui/frame/MDIForm1.h"
#include "ui/frame/ToolStrip.h"
#include "ui/frame/ViewCommands.h"
#include "ui/frame/WindowArranger.h"
#include "ui/tools/MapCheckWindow.h"

#include <QAction>
#include <QIcon>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>

namespace {

QIcon Icon(const char* name)
{
    return QIcon(QStringLiteral(":/icons/%1.svg").arg(QString::fromLatin1(name)));
}

QMenu* AddMenu(QWidget* parent, QMenuBar* bar, const char* name, const QString& caption)
{
    auto* menu = new QMenu(caption, parent);
    menu->setObjectName(QString::fromLatin1(name));
    menu->menuAction()->setObjectName(QString::fromLatin1(name) + QStringLiteral("Menu"));
    bar->addMenu(menu);
    return menu;
}

QMenu* AddSubmenu(QMenu* parent, const char* name, const QString& caption)
{
    auto* menu = parent->addMenu(caption);
    menu->setObjectName(QString::fromLatin1(name));
    menu->menuAction()->setObjectName(QString::fromLatin1(name) + QStringLiteral("Menu"));
    return menu;
}

void AddSeparator(QMenu* menu, const char* name)
{
    menu->addSeparator()->setObjectName(QString::fromLatin1(name));
}

} // namespace

void FrameMenus::Create(MDIForm1& Frame)
{
    QMenuBar* bar = Frame.menuBar();
    MDIForm1* frame = &Frame;
    const auto add = [frame](QMenu* menu, const char* name, const QString& caption,
                             const char* icon, const QKeySequence& keys, auto slot) {
        QAction* action = menu->addAction(caption);
        action->setObjectName(QString::fromLatin1(name));
        if (icon != nullptr)
            action->setIcon(Icon(icon));
        if (!keys.isEmpty())
            action->setShortcut(keys);
        QObject::connect(action, &QAction::triggered, frame, slot);
        return action;
    };
    const QKeySequence none;

    QMenu* file = AddMenu(frame, bar, "file", QStringLiteral("&File"));
    add(file, "NewMap", QStringLiteral("&New Map"), "new", QKeySequence::New,
        &MDIForm1::LoadNewMap);
    add(file, "LoadPic", QStringLiteral("Load &Map"), "open", QKeySequence::Open,
        &MDIForm1::OpenMap);
    AddSeparator(file, "filesplit");
    add(file, "menuSaveMap", QStringLiteral("Sa&ve Map"), "save", QKeySequence::Save,
        &MDIForm1::SaveMap);
    add(file, "menuSaveMapAs", QStringLiteral("&Save Map &As..."), "saveas",
        QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), &MDIForm1::SaveMapAs);
    AddSeparator(file, "filesplit2");
    add(file, "generatecode", QStringLiteral("&Generate Image Map Code"), "generate", none,
        &MDIForm1::GenerateCode);
    add(file, "mnuTestMap", QStringLiteral("&Test Image Map"), "test", none, &MDIForm1::TestMap);
    AddSeparator(file, "split1");
    add(file, "Exit", QStringLiteral("E&xit"), "exit", QKeySequence::Quit, &QWidget::close);

    QMenu* edit = AddMenu(frame, bar, "edit", QStringLiteral("&Edit"));
    add(edit, "CutShape", QStringLiteral("Cu&t Shape"), "cut", QKeySequence::Cut,
        &MDIForm1::CutShape);
    add(edit, "Copyshape", QStringLiteral("&Copy Shape"), "copy", QKeySequence::Copy,
        &MDIForm1::CopyShape);
    add(edit, "PasteShape", QStringLiteral("&Paste Shape"), "paste", QKeySequence::Paste,
        &MDIForm1::PasteShape);
    AddSeparator(edit, "editsplit");
    // The Delete key itself belongs to the map window, which ignores it while a polygon
    // is being drawn; the menu only names it.
    add(edit, "DeleteShape", QStringLiteral("&Delete Shape"), "delete", QKeySequence::Delete,
        &MDIForm1::DeleteShape)
        ->setShortcutContext(Qt::WidgetShortcut);
    AddSeparator(edit, "editsplit2");
    QMenu* morph = AddSubmenu(edit, "MorphShape", QStringLiteral("&Morph to..."));
    add(morph, "MorRectangle", QStringLiteral("&Rectangle"), "rectangle", none,
        [frame] { frame->MorphShape(1); });
    add(morph, "MorCircle", QStringLiteral("&Circle"), "circle", none,
        [frame] { frame->MorphShape(0); });
    add(morph, "MorPolygon", QStringLiteral("&Polygon"), "polygon", none,
        [frame] { frame->MorphShape(2); });

    QMenu* view = AddMenu(frame, bar, "view", QStringLiteral("&View"));
    // The zoom keys look closer (ViewCommands); these change the map's own zoom.
    add(view, "smallsize", QStringLiteral("&Zoom In"), "zoomin", none, &MDIForm1::ZoomIn);
    add(view, "largesize", QStringLiteral("&Zoom Out"), "zoomout", none, &MDIForm1::ZoomOut);
    AddSeparator(view, "viewsplit");
    add(view, "CustomZoom", QStringLiteral("Custom &Zoom"), "customzoom", none,
        &MDIForm1::ShowCustomZoom);
    ViewCommands::AddTo(*view, Frame);

    QMenu* options = AddMenu(frame, bar, "options", QStringLiteral("&Options"));
    add(options, "theimagesize", QStringLiteral("&Image Size"), "imagesize", none,
        &MDIForm1::ShowImageSize);
    add(options, "Gridoptions", QStringLiteral("&Grid Options"), "grid", none,
        &MDIForm1::ShowGridOptions);
    add(options, "MapColors", QStringLiteral("&Map Colors"), "colors", none,
        &MDIForm1::ShowMapColors);
    add(options, "ShapeProperties", QStringLiteral("&Shape Properties"), "properties", none,
        &MDIForm1::ShapeProperties);
    AddSeparator(options, "optionssplit");
    QMenu* modes = AddSubmenu(options, "Shapes", QStringLiteral("&Draw Mode"));
    add(modes, "RectangleMode", QStringLiteral("&Rectangle"), "rectangle", none,
        [frame] { frame->Tools().SelectMode(CanvasHost::DrawingMode::Rectangle); });
    add(modes, "CircleMode", QStringLiteral("&Circle"), "circle", none,
        [frame] { frame->Tools().SelectMode(CanvasHost::DrawingMode::Circle); });
    add(modes, "PolygonMode", QStringLiteral("&Polygon"), "polygon", none,
        [frame] { frame->Tools().SelectMode(CanvasHost::DrawingMode::Polygon); });
    add(modes, "pointermode", QStringLiteral("P&ointer"), "pointer", none,
        [frame] { frame->Tools().SelectMode(CanvasHost::DrawingMode::Pointer); });

    QMenu* tools = AddMenu(frame, bar, "tools", QStringLiteral("&Tools"));
    add(tools, "ConvertToShapes", QStringLiteral("&Convert HTML Code to Map"), "convert", none,
        &MDIForm1::ShowConvertHtml);
    add(tools, "mnuURLChecker", QStringLiteral("&URL Checker"), "urlcheck", none,
        &MDIForm1::CheckTheURLs);
    add(tools, "mnuCheckMap", QStringLiteral("Check &Map"), "checkmap", none,
        [frame] { MapCheckWindow::ShowFor(*frame, frame->ActiveMapWindow()); });

    QMenu* window = AddMenu(frame, bar, "TheWindow", QStringLiteral("&Window"));
    add(window, "Cascade", QStringLiteral("&Cascade"), "cascade", none,
        [frame] { WindowArranger::Cascade(*frame->MdiArea()); });
    add(window, "Tile", QStringLiteral("&Tile"), "tile", none,
        [frame] { WindowArranger::TileHorizontally(*frame->MdiArea()); });
    add(window, "arrangeicons", QStringLiteral("&Arrange Icons"), "arrange", none,
        [frame] { WindowArranger::ArrangeIcons(*frame->MdiArea()); });
    QObject::connect(window, &QMenu::aboutToShow, frame,
                     [window, frame] { FillWindowList(*window, *frame->MdiArea()); });
    // Ctrl+F4 or Ctrl+W closes the active map, asking first, as documents close elsewhere.
    auto* closeMap = new QAction(QStringLiteral("Close Map"), frame);
    closeMap->setObjectName(QStringLiteral("CloseMap"));
    closeMap->setShortcuts(
        {QKeySequence(Qt::CTRL | Qt::Key_F4), QKeySequence(Qt::CTRL | Qt::Key_W)});
    QObject::connect(closeMap, &QAction::triggered, frame, [frame] {
        if (QMdiSubWindow* active = frame->MdiArea()->currentSubWindow())
            active->close();
    });
    frame->addAction(closeMap);

    QMenu* help = AddMenu(frame, bar, "HelpFileMenu", QStringLiteral("&Help"));
    add(help, "HelpFile", QStringLiteral("&Help File"), "help", QKeySequence::HelpContents,
        &MDIForm1::ShowHelpFile);
    add(help, "corvaneonline", QStringLiteral("&Corvane Online"), "online", none,
        &MDIForm1::ShowOnline);
    AddSeparator(help, "mnuhelpsplit");
    add(help, "mnuCredits", QStringLiteral("&Credits"), "credits", none, &MDIForm1::ShowCredits);
}

void FrameMenus::FillWindowList(QMenu& WindowMenu, QMdiArea& Area)
{
    // Below the arrangements: one checkable entry per open map, as desktop MDI
    // programs have.
    const QList<QAction*> actions = WindowMenu.actions();
    for (int i = 3; i < actions.size(); ++i) {
        WindowMenu.removeAction(actions.at(i));
        actions.at(i)->deleteLater();
    }
    const QList<QMdiSubWindow*> windows = Area.subWindowList();
    if (windows.isEmpty())
        return;
    WindowMenu.addSeparator();
    int number = 1;
    for (QMdiSubWindow* window : windows) {
        // The caption as the title bar shows it: "*" for "[*]" while modified, and an
        // ampersand in a file name kept as text.
        QString caption = window->windowTitle();
        caption.replace(QLatin1Char('&'), QStringLiteral("&&"))
            .replace(QStringLiteral("[*]"),
                     window->isWindowModified() ? QStringLiteral("*") : QString());
        QAction* action = WindowMenu.addAction(QStringLiteral("&%1 %2").arg(number++).arg(caption));
        action->setCheckable(true);
        action->setChecked(window == Area.currentSubWindow());
        QObject::connect(action, &QAction::triggered, &Area,
                         [&Area, window] { Area.setActiveSubWindow(window); });
    }
}
