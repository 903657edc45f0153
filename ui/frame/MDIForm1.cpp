#include "ui/frame/MDIForm1.h"

#include "core/base/ModalUi.h"
#include "core/base/Module1.h"
#include "core/document/OpenMapCount.h"
#include "core/forms/DroppedFiles.h"
#include "core/forms/FolderMemory.h"
#include "core/forms/HelpFile.h"
#include "core/forms/ZoomRules.h"
#include "core/forms/ZoomStep.h"
#include "core/interchange/NewMap.h"
#include "core/interchange/RecoveryOffer.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/dialogs/ColorPicker.h"
#include "ui/dialogs/GridForm.h"
#include "ui/dialogs/ImageSize.h"
#include "ui/dialogs/Zoom.h"
#include "ui/dialogs/frmOptions.h"
#include "ui/frame/AppResources.h"
#include "ui/frame/Credits.h"
#include "ui/frame/DrawingHint.h"
#include "ui/frame/FrameMenus.h"
#include "ui/frame/MapCaption.h"
#include "ui/frame/MapCommandSet.h"
#include "ui/frame/RecentMapsMenu.h"
#include "ui/frame/RecoverMaps.h"
#include "ui/frame/RecoveryKeeper.h"
#include "ui/frame/ShapesPanel.h"
#include "ui/frame/StartUp.h"
#include "ui/frame/ToolStrip.h"
#include "ui/frame/UndoActions.h"
#include "ui/tools/ConvertHTMLtoMap.h"
#include "ui/tools/GeneratedCodeForm.h"
#include "ui/tools/MapTestCommand.h"
#include "ui/tools/URLChecker.h"

#include <QAction>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>
#include <QToolButton>
#include <exception>

namespace {

QIcon Icon(const char* name)
{
    return QIcon(QStringLiteral(":/icons/%1.svg").arg(QString::fromLatin1(name)));
}

} // namespace

MDIForm1::MDIForm1(ModalUi& Ui, QWidget* parent)
    : QMainWindow(parent), ExecDialog([](QDialog& dialog) { return dialog.exec(); }), m_ui(Ui),
      m_mdiArea(new QMdiArea), m_toolStrip(new ToolStrip), m_statusPanel(new QLabel),
      m_zoomPanel(new QLabel)
{
    setObjectName(QStringLiteral("MDIForm1"));
    AppResources::Load();
    setWindowTitle(QStringLiteral("Vantrel 1.0.1"));
    setWindowIcon(Icon("vantrel"));

    m_mdiArea->setObjectName(QStringLiteral("MdiArea"));
    m_mdiArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_mdiArea->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_mdiArea->setBackground(QColor(128, 128, 128));
    auto* central = new QWidget;
    auto* layout = new QHBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_toolStrip);
    layout->addWidget(m_mdiArea, 1);
    setCentralWidget(central);

    statusBar()->setObjectName(QStringLiteral("StatusBar1"));
    m_statusPanel->setObjectName(QStringLiteral("StatusPanel1"));
    m_statusPanel->setMinimumWidth(160);
    m_zoomPanel->setObjectName(QStringLiteral("StatusPanel2"));
    statusBar()->addWidget(m_statusPanel, 1);
    statusBar()->addPermanentWidget(new DrawingHint(*m_mdiArea));
    statusBar()->addPermanentWidget(m_zoomPanel);

    m_shapesPanel = new ShapesPanel(m_ui, this);
    addDockWidget(Qt::RightDockWidgetArea, m_shapesPanel);
    connect(m_mdiArea, &QMdiArea::subWindowActivated, m_shapesPanel,
            [this] { m_shapesPanel->SetMap(ActiveMapWindow()); });
    FrameMenus::Create(*this);
    if (auto* file = findChild<QMenu*>(QStringLiteral("file")))
        m_recentMaps =
            new RecentMapsMenu(*file, findChild<QAction*>(QStringLiteral("filesplit")), *this);
    setAcceptDrops(true);
    ConnectToolStrip();
    m_mapCommands = std::make_unique<MapCommandSet>(*this);
    SetMapCommandsEnabled(OpenMapCount > 0);
    m_undoActions = new UndoActions(*findChild<QMenu*>(QStringLiteral("edit")),
                                    *m_toolStrip->Button(QStringLiteral("btnUndo")),
                                    *m_toolStrip->Button(QStringLiteral("btnRedo")), this);
    connect(m_undoActions, &UndoActions::UndoRequested, this, &MDIForm1::Undo);
    connect(m_undoActions, &UndoActions::RedoRequested, this, &MDIForm1::Redo);
    connect(m_mdiArea, &QMdiArea::subWindowActivated, this, &MDIForm1::UpdateZoomPanel);
    connect(m_mdiArea, &QMdiArea::subWindowActivated, this, &MDIForm1::OnMapActivated);

    // Centred on the screen, large enough for a picture and the strip.
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        resize(qMin(area.width(), qMax(900, area.width() * 4 / 5)),
               qMin(area.height(), qMax(680, area.height() * 4 / 5)));
        move(area.x() + (area.width() - width()) / 2, area.y() + (area.height() - height()) / 2);
    }
    // On a small screen the maps need the room; the panel waits under View > Shapes.
    m_shapesPanel->setVisible(width() >= 1000);
}

MDIForm1::~MDIForm1()
{
    // The map windows go first: they still talk to this frame while they close.
    for (QMdiSubWindow* window : m_mdiArea->subWindowList())
        delete window;
}

void MDIForm1::ConnectToolStrip()
{
    const std::pair<const char*, void (MDIForm1::*)()> buttons[] = {
        {"btnNewImage", &MDIForm1::LoadNewMap},  {"btnOpen", &MDIForm1::OpenMap},
        {"btnSave", &MDIForm1::SaveMap},         {"bntSaveAs", &MDIForm1::SaveMapAs},
        {"btnCut", &MDIForm1::CutShape},         {"btnCopy", &MDIForm1::CopyShape},
        {"btnPaste", &MDIForm1::PasteShape},     {"btnDelete", &MDIForm1::DeleteShape},
        {"btnProp", &MDIForm1::ShapeProperties}, {"btnColors", &MDIForm1::ShowMapColors},
        {"btnGen", &MDIForm1::GenerateCode},     {"btnTest", &MDIForm1::TestMap},
        {"btnHelp", &MDIForm1::ShowHelpFile},
    };
    for (const auto& [name, slot] : buttons)
        connect(m_toolStrip->Button(QString::fromLatin1(name)), &QToolButton::clicked, this, slot);
}

// ---- maps -----------------------------------------------------------------------------

ShapeCanvas* MDIForm1::AddMapWindow()
{
    auto* map = new ShapeCanvas(*this);
    map->setAttribute(Qt::WA_DeleteOnClose);
    // What the user sees of the map: the map's zoom times the view scale.
    connect(map, &ShapeCanvas::ViewScaleChanged, this, &MDIForm1::UpdateZoomPanel);
    auto* caption = new MapCaption(*map, [this] { UpdateTitle(); });
    QMdiSubWindow* window = m_mdiArea->addSubWindow(map);
    window->setAttribute(Qt::WA_DeleteOnClose);
    // The frame's Close Map owns Ctrl+F4 and Ctrl+W: with every window's own Close
    // holding them too, the keys are ambiguous and close nothing.
    if (QMenu* menu = window->systemMenu()) {
        for (QAction* action : menu->actions()) {
            const QList<QKeySequence> keys = action->shortcuts();
            if (keys.contains(QKeySequence(Qt::CTRL | Qt::Key_F4)) ||
                keys.contains(QKeySequence(Qt::CTRL | Qt::Key_W)))
                action->setShortcuts({});
        }
    }
    window->setWindowIcon(Icon("vantrel"));
    caption->Attach(*window);
    m_undoActions->Track(*map);
    if (m_recovery != nullptr)
        m_recovery->Track(*map);
    return map;
}

void MDIForm1::ShowMapWindow(ShapeCanvas& Map)
{
    QMdiSubWindow* window = qobject_cast<QMdiSubWindow*>(Map.parentWidget());
    if (window == nullptr)
        return;
    // Room for the picture and the scroll bars, as far as the area allows.
    const MapDocument& doc = Map.Document();
    const QSize area = m_mdiArea->viewport()->size();
    const QSize wanted(doc.SWidth + 44, doc.SHeight + 66);
    window->resize(qBound(320, wanted.width(), qMax(320, area.width() - 20)),
                   qBound(240, wanted.height(), qMax(240, area.height() - 20)));
    window->show();
    // The area puts a window where it overlaps least, which may be past its edge; such a
    // window goes on a cascade from the top-left corner instead, in sight.
    if (!m_mdiArea->viewport()->rect().contains(window->geometry())) {
        const int step = 24;
        const QSize room = area - window->size();
        const int places = qMax(1, qMin(room.width(), room.height()) / step + 1);
        const int k = int(m_mdiArea->subWindowList().size() - 1) % places;
        window->move(k * step, k * step);
    }
    m_mdiArea->setActiveSubWindow(window);
    UpdateZoomPanel();
}

void MDIForm1::DiscardMapWindow(ShapeCanvas* Map)
{
    // Never shown and never asked about: the map could not be made.
    delete Map->parentWidget();
}

void MDIForm1::LoadNewMap()
{
    const QString path = m_ui.AskForPicture();
    if (!path.isEmpty())
        NewMapFromPicture(Module1::CutAtNul(path));
}

ShapeCanvas* MDIForm1::NewMapFromPicture(const QString& Path)
{
    const NewMap::Result made = NewMap::FromPicture(Path);
    if (!made.ok) {
        m_ui.DetailedMessage(made.message, ModalUi::Icon::Critical, made.detail);
        return nullptr;
    }
    ShapeCanvas* map = AddMapWindow();
    map->SetNewPicture(made.document.OrigPic, Path);
    map->setWindowTitle(QStringLiteral("Untitled"));
    ShowMapWindow(*map);
    RememberFile(Path, false);
    return map;
}

void MDIForm1::OpenMap()
{
    const QString path = m_ui.AskForMapToOpen();
    if (!path.isEmpty())
        OpenMapFile(Module1::CutAtNul(path));
}

ShapeCanvas* MDIForm1::OpenMapFile(const QString& Path)
{
    ShapeCanvas* map = AddMapWindow();
    if (!map->OpenMapFile(Path)) {
        DiscardMapWindow(map);
        return nullptr;
    }
    ShowMapWindow(*map);
    RememberFile(Path, true);
    return map;
}

void MDIForm1::OpenFiles(const QStringList& Paths)
{
    for (const QString& path : Paths) {
        if (path.endsWith(QStringLiteral(".imp"), Qt::CaseInsensitive))
            OpenMapFile(path);
        else
            NewMapFromPicture(path);
    }
}

void MDIForm1::ShowStartUp()
{
    StartUp dialog(m_ui, this);
    if (ExecDialog(dialog) != QDialog::Accepted)
        return;
    if (dialog.NewMapChosen())
        LoadNewMap();
    else
        OpenMap();
}

bool MDIForm1::StartRecovery(const QString& Folder)
{
    if (m_recovery != nullptr)
        return false;
    m_recovery = new RecoveryKeeper(Folder, this);
    // Said once: editing goes on without recovery files.
    connect(&m_recovery->Store(), &RecoveryStore::WriteFailed, this,
            [this](const QString& text) { statusBar()->showMessage(text, 20'000); });
    for (ShapeCanvas* map : MapWindows())
        m_recovery->Track(*map);
    m_recovery->Store().Start();

    RecoveryOffer offer(m_recovery->Store());
    if (offer.IsEmpty())
        return false;
    RecoverMaps dialog(offer, m_ui, this);
    ExecDialog(dialog);
    std::vector<RecoveryStore::Found> recovered = offer.TakeRecovered();
    std::vector<ShapeCanvas*> opened;
    for (RecoveryStore::Found& found : recovered) {
        ShapeCanvas* map = AddMapWindow();
        map->AdoptRecovered(std::move(found.document), found.fileName, found.caption);
        ShowMapWindow(*map);
        opened.push_back(map);
    }
    // The old files go once this run has kept the maps itself.
    m_recovery->Store().WriteDue();
    for (std::size_t i = 0; i < recovered.size(); ++i) {
        if (!m_recovery->FileOf(*opened[i]).isEmpty())
            offer.Adopted(recovered[i]);
    }
    return !recovered.empty();
}

QList<ShapeCanvas*> MDIForm1::MapWindows() const
{
    QList<ShapeCanvas*> maps;
    for (QMdiSubWindow* window : m_mdiArea->subWindowList()) {
        if (auto* map = qobject_cast<ShapeCanvas*>(window->widget()))
            maps.append(map);
    }
    return maps;
}

// ---- commands on the active map -------------------------------------------------------

void MDIForm1::OnActiveMap(const std::function<void(ShapeCanvas&)>& Command)
{
    ShapeCanvas* map = ActiveMapWindow();
    if (map == nullptr)
        return;
    try {
        Command(*map);
    } catch (const std::exception& error) {
        m_ui.Message(QString::fromLocal8Bit(error.what()), ModalUi::Icon::Critical);
    }
}

void MDIForm1::Undo()
{
    OnActiveMap([](ShapeCanvas& map) { map.Undo(); });
    UpdateZoomPanel();
}

void MDIForm1::Redo()
{
    OnActiveMap([](ShapeCanvas& map) { map.Redo(); });
    UpdateZoomPanel();
}

void MDIForm1::SaveMap()
{
    OnActiveMap([this](ShapeCanvas& map) {
        map.SaveMap();
        RememberFile(map.FileName(), true);
    });
}

void MDIForm1::SaveMapAs()
{
    OnActiveMap([this](ShapeCanvas& map) {
        map.SaveMapAs();
        RememberFile(map.FileName(), true);
    });
}

void MDIForm1::RememberFile(const QString& Path, bool IsMap)
{
    if (Path.isEmpty())
        return;
    QSettings settings;
    FolderMemory(settings).Remember(IsMap ? FolderMemory::Kind::Map : FolderMemory::Kind::Picture,
                                    Path);
    if (IsMap && m_recentMaps != nullptr)
        m_recentMaps->Add(Path);
}

void MDIForm1::dragEnterEvent(QDragEnterEvent* event)
{
    if (!DroppedFiles::Paths(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MDIForm1::dragMoveEvent(QDragMoveEvent* event)
{
    if (!DroppedFiles::Paths(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MDIForm1::dropEvent(QDropEvent* event)
{
    const QStringList paths = DroppedFiles::Paths(event->mimeData());
    if (paths.isEmpty())
        return;
    event->acceptProposedAction();
    OpenFiles(paths);
}

void MDIForm1::GenerateCode()
{
    OnActiveMap([](ShapeCanvas& map) { map.GenerateMapCode(true); });
}

void MDIForm1::TestMap()
{
    OnActiveMap([this](ShapeCanvas& map) { MapTestCommand::Run(map, m_ui); });
}

void MDIForm1::CutShape()
{
    OnActiveMap([this](ShapeCanvas& map) { m_clipboard.Cut(map); });
}

void MDIForm1::CopyShape()
{
    OnActiveMap([this](ShapeCanvas& map) { m_clipboard.Copy(map); });
}

void MDIForm1::PasteShape()
{
    OnActiveMap([this](ShapeCanvas& map) { m_clipboard.Paste(map, m_ui); });
}

void MDIForm1::DeleteShape()
{
    OnActiveMap([](ShapeCanvas& map) { map.DeleteShape(); });
}

void MDIForm1::MorphShape(std::int16_t SType)
{
    OnActiveMap([SType](ShapeCanvas& map) { map.MorphShape(SType); });
}

void MDIForm1::ZoomIn()
{
    ZoomBy(true);
}

void MDIForm1::ZoomOut()
{
    ZoomBy(false);
}

void MDIForm1::ZoomBy(bool In)
{
    OnActiveMap([this, In](ShapeCanvas& map) {
        const MapDocument& doc = map.Document();
        const ZoomStep::Result step = In ? ZoomStep::In(doc.ZoomLevel, doc.SWidth, doc.SHeight)
                                         : ZoomStep::Out(doc.ZoomLevel, doc.SWidth, doc.SHeight);
        if (step.outcome == ZoomStep::Outcome::Refused)
            m_ui.Message(ZoomRules::TooGreatMessage(), ModalUi::Icon::Critical);
        else if (step.outcome == ZoomStep::Outcome::Zoomed)
            map.SetZoomLevel(step.NewLevel);
    });
    UpdateZoomPanel();
}

void MDIForm1::ShowCustomZoom()
{
    OnActiveMap([this](ShapeCanvas& map) {
        Zoom dialog(map, m_ui, this);
        ExecDialog(dialog);
    });
    UpdateZoomPanel();
}

void MDIForm1::ShowImageSize()
{
    OnActiveMap([this](ShapeCanvas& map) {
        ImageSize dialog(map, m_ui, this);
        map.RecordEdit(QStringLiteral("Image Size"), {}, true, [&] { ExecDialog(dialog); });
    });
    UpdateZoomPanel();
}

void MDIForm1::ShowGridOptions()
{
    OnActiveMap([this](ShapeCanvas& map) {
        GridForm dialog(map, m_ui, this);
        map.RecordEdit(QStringLiteral("Grid Options"), {}, true, [&] { ExecDialog(dialog); });
    });
}

void MDIForm1::ShowMapColors()
{
    OnActiveMap([this](ShapeCanvas& map) {
        ColorPicker dialog(map, m_ui, this);
        map.RecordEdit(QStringLiteral("Map Colors"), {}, true, [&] { ExecDialog(dialog); });
    });
}

void MDIForm1::ShapeProperties()
{
    OnActiveMap([](ShapeCanvas& map) { map.ShapeProperties(-1); });
}

void MDIForm1::ShowConvertHtml()
{
    OnActiveMap([this](ShapeCanvas& map) {
        ConvertHTMLtoMap dialog(map, m_ui, this);
        map.RecordEditAll(QStringLiteral("Import HTML"), true, [&] { ExecDialog(dialog); });
    });
}

void MDIForm1::CheckTheURLs()
{
    OnActiveMap([](ShapeCanvas& map) { map.CheckTheURLs(); });
}

void MDIForm1::ShowHelpFile()
{
    HelpFile::ShowManual(m_ui);
}

void MDIForm1::ShowOnline()
{
    HelpFile::ShowOnline(m_ui);
}

void MDIForm1::ShowCredits()
{
    Credits credits(this);
    ExecDialog(credits);
}

void MDIForm1::UpdateZoomPanel()
{
    const ShapeCanvas* map = ActiveMapWindow();
    m_zoomPanel->setText(map == nullptr ? QString()
                                        : QStringLiteral("Zoom: %1%")
                                              .arg(qRound(map->Document().ZoomLevel *
                                                          map->ViewScaleFactor() * 100)));
}

void MDIForm1::OnMapActivated()
{
    m_undoActions->SetActive(ActiveMapWindow());
    // The pointer's place belongs to the map it was over; the new one says its own once the
    // pointer moves over it.
    m_statusPanel->clear();
    UpdateTitle();
}

void MDIForm1::UpdateTitle()
{
    // The product's caption alone while no map is open.
    const QString product = QStringLiteral("Vantrel 1.0.1");
    const ShapeCanvas* map = ActiveMapWindow();
    if (map == nullptr) {
        setWindowTitle(product);
        setWindowModified(false);
        return;
    }
    setWindowTitle(product + QStringLiteral(" - ") + MapCaption::Marked(map->windowTitle()));
    setWindowModified(map->IsModified());
}

// ---- CanvasHost -----------------------------------------------------------------------

CanvasHost::DrawingMode MDIForm1::CurrentDrawingMode() const
{
    return m_toolStrip->Mode();
}

void MDIForm1::SetStatusText(const QString& Text)
{
    m_statusPanel->setText(Text);
}

ShapeCanvas* MDIForm1::ActiveMapWindow() const
{
    // currentSubWindow, not activeSubWindow: a menu or dialog may hold the focus.
    QMdiSubWindow* window = m_mdiArea->currentSubWindow();
    return window == nullptr ? nullptr : qobject_cast<ShapeCanvas*>(window->widget());
}

void MDIForm1::SetMapCommandsEnabled(bool Enabled)
{
    if (m_mapCommands)
        m_mapCommands->SetEnabled(Enabled);
}

void MDIForm1::ShowShapeProperties(ShapeCanvas& Canvas, int TheIndex)
{
    frmOptions dialog(Canvas, m_ui, this);
    dialog.OpenOnTab(TheIndex);
    ExecDialog(dialog);
    Canvas.DrawShapes();
}

void MDIForm1::ShowGeneratedCode(const QString& Code)
{
    GeneratedCodeForm dialog(Code, m_ui, this);
    if (ShapeCanvas* map = ActiveMapWindow())
        dialog.SetFormats(GeneratedCodeForm::FormatsOf(*map));
    ExecDialog(dialog);
}

void MDIForm1::ShowUrlChecker(ShapeCanvas& Canvas)
{
    URLChecker dialog(Canvas, m_ui, this);
    ExecDialog(dialog);
}

void MDIForm1::closeEvent(QCloseEvent* event)
{
    // Each map asks before it closes; the first No keeps the program open.
    for (QMdiSubWindow* window : m_mdiArea->subWindowList()) {
        if (!window->close()) {
            event->ignore();
            return;
        }
    }
    event->accept();
}
