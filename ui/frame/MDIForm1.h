#pragma once

#include "core/document/CanvasHost.h"
#include "ui/frame/ShapeClipboard.h"

#include <QMainWindow>
#include <functional>
#include <memory>

class MapCommandSet;
class ModalUi;
class QDialog;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class RecentMapsMenu;
class RecoveryKeeper;
class ShapesPanel;
class ToolStrip;
class UndoActions;

// The editor's main window: menus, the tool strip with the drawing modes, the status
// bar and one child window per open map. Commands act on the active map.
class MDIForm1 : public QMainWindow, public CanvasHost
{
    Q_OBJECT
public:
    explicit MDIForm1(ModalUi& Ui, QWidget* parent = nullptr);
    ~MDIForm1() override;

    // Runs every dialog of the program's own (properties, start-up, credits and the
    // tool windows) modally; tests replace it to fill in and close the dialog.
    std::function<int(QDialog&)> ExecDialog;

    // ---- maps ----------------------------------------------------------------------
    // "New Map": asks for a picture and opens a new map on it ("Untitled").
    void LoadNewMap();
    // "Load Map": asks for a map file and opens it; a failed open leaves no window.
    void OpenMap();
    // A new map on the picture at Path; null (the user told) when it cannot be read.
    ShapeCanvas* NewMapFromPicture(const QString& Path);
    // The map file at Path in a new window; null when it cannot be opened.
    ShapeCanvas* OpenMapFile(const QString& Path);
    // Files named on the command line: .imp files as maps, anything else as pictures.
    void OpenFiles(const QStringList& Paths);
    // The start-up question; then a new map or an open one, as chosen.
    void ShowStartUp();
    // Keeps recovery files of the modified maps in Folder from now on, and offers the
    // maps a run that ended without closing them left there ("Recover Maps"). True
    // when maps were recovered.
    bool StartRecovery(const QString& Folder);
    // Null until StartRecovery.
    RecoveryKeeper* Recovery() const { return m_recovery; }
    QList<ShapeCanvas*> MapWindows() const;
    QMdiArea* MdiArea() const { return m_mdiArea; }
    ShapeClipboard& Clipboard() { return m_clipboard; }
    ToolStrip& Tools() const { return *m_toolStrip; }
    // The "Shapes" dock on the active map.
    ShapesPanel& ShapesDock() const { return *m_shapesPanel; }
    // File > Open Recent.
    RecentMapsMenu& RecentMaps() const { return *m_recentMaps; }

    // ---- commands on the active map --------------------------------------------------
    void Undo();
    void Redo();
    UndoActions& Undoing() const { return *m_undoActions; }
    void SaveMap();
    void SaveMapAs();
    void GenerateCode();
    void TestMap();
    void CutShape();
    void CopyShape();
    void PasteShape();
    void DeleteShape();
    void MorphShape(std::int16_t SType);
    void ZoomIn();
    void ZoomOut();
    void ShowCustomZoom();
    void ShowImageSize();
    void ShowGridOptions();
    void ShowMapColors();
    void ShapeProperties();
    void ShowConvertHtml();
    void CheckTheURLs();
    void ShowHelpFile();
    void ShowOnline();
    void ShowCredits();

    // ---- CanvasHost ----------------------------------------------------------------
    DrawingMode CurrentDrawingMode() const override;
    void SetStatusText(const QString& Text) override;
    ShapeCanvas* ActiveMapWindow() const override;
    void SetMapCommandsEnabled(bool Enabled) override;
    ModalUi& Dialogs() override { return m_ui; }
    void ShowShapeProperties(ShapeCanvas& Canvas, int TheIndex) override;
    void ShowGeneratedCode(const QString& Code) override;
    void ShowUrlChecker(ShapeCanvas& Canvas) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    // Pictures dropped on the frame start new maps; .imp files open.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    ModalUi& m_ui;
    ShapeClipboard m_clipboard;
    QMdiArea* m_mdiArea;
    ToolStrip* m_toolStrip;
    QLabel* m_statusPanel;
    QLabel* m_zoomPanel;
    ShapesPanel* m_shapesPanel;
    RecentMapsMenu* m_recentMaps = nullptr;
    std::unique_ptr<MapCommandSet> m_mapCommands;
    UndoActions* m_undoActions = nullptr;
    RecoveryKeeper* m_recovery = nullptr;

    void ConnectToolStrip();
    ShapeCanvas* AddMapWindow();
    void ShowMapWindow(ShapeCanvas& Map);
    void DiscardMapWindow(ShapeCanvas* Map);
    void ZoomBy(bool In);
    void UpdateZoomPanel();
    // Undo and the frame's title follow the active map.
    void OnMapActivated();
    void UpdateTitle();
    // A map file or picture was opened or saved at Path.
    void RememberFile(const QString& Path, bool IsMap);
    // Runs Command on the active map; an error becomes a critical message and the
    // program goes on.
    void OnActiveMap(const std::function<void(ShapeCanvas&)>& Command);
};
