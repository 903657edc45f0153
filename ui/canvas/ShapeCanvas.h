#pragma once

#include "core/document/CanvasEditor.h"
#include "core/document/MapDocument.h"
#include "core/document/MapHistory.h"
#include "core/document/StepTarget.h"
#include "core/shape/ShapeGeometry.h"

#include <QImage>
#include <QString>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class CanvasHost;
class CanvasSurface;
class PictureBuffer;
class PointerConfinement;
class QLabel;
class QPushButton;
class QScrollBar;

// One open map window: the picture at its zoom in a scrolled viewport, the optional
// grid, and the mouse and keyboard editing of the map's shapes.
//
// Public API used by the frame and the dialogs. Child widgets carry the object names
// HoldPicbox, TheCanvas, HoldImage, HScroll1, VScroll1 and BntScrollEnd.
class ShapeCanvas : public QWidget, public StepTarget
{
    Q_OBJECT
public:
    // Loads the window: counts it in OpenMapCount (enabling the frame's map commands
    // on the first) and sets the defaults of a new map.
    explicit ShapeCanvas(CanvasHost& Host, QWidget* parent = nullptr);
    ~ShapeCanvas() override;

    MapDocument& Document();
    const MapDocument& Document() const;

    // ---- picture, zoom, grid -------------------------------------------------------
    // A new map's picture: RealWidth/SWidth = the picture's width (and heights),
    // zoom 1.0, ImageName and ImagePath from PicturePath.
    void SetNewPicture(const QImage& Picture, const QString& PicturePath);
    void SetPicSize(bool* hBarShown = nullptr, bool* vBarShown = nullptr);
    void SetZoomLevel(double NewZoomLevel);
    void DrawGrid(bool ShouldSetPic = true);
    void DrawGridLines();

    // ---- files and code ------------------------------------------------------------
    // Loads a map file into this (fresh) window; messages go to the user. False on
    // failure, with the document untouched.
    bool OpenMapFile(const QString& FileNameToOpen);
    // A map brought back from a recovery file: modified, and saved to FileNameToKeep
    // (the map's own file; empty for one never saved).
    void AdoptRecovered(MapDocument Recovered, const QString& FileNameToKeep,
                        const QString& Caption);
    void SaveMap();
    void SaveMapAs();
    QString FileName() const;
    // Viewing form (loadwindow true) goes to the code window and returns "";
    // the test form is returned.
    QString GenerateMapCode(bool loadwindow);
    void CheckTheURLs();

    // ---- shape commands (errors become a critical message; the map stays whole) ----
    // Deletes the top shape as an undo step named StepName.
    void DeleteShape(const QString& StepName = QStringLiteral("Delete Shape"));
    // Copies the top shape into CopyOfShape; false when the map has no shapes.
    bool SetShapeEqualToTopShape(PatShape& CopyOfShape);
    void SetNewShape(const PatShape& NewShape);
    void MorphShape(std::int16_t SType);
    // TheIndex: the tab to open, 1 the map (also for -1), 2.. the shapes, then the default
    // area. Wider than a shape index: with 32,766 shapes and more, the last tabs lie past
    // 32,767.
    void ShapeProperties(int TheIndex);
    void DrawShapes();
    void ReStackArrayFromOptions(std::int16_t NewTopIndex);
    void SetShapeColors();
    // As a click on it would: Index becomes the top shape, its body grabbed; it is
    // scrolled into view. Ignored while a polygon is being drawn.
    void SelectShape(std::int16_t Index);
    // Tells the views of the map that it was changed from outside the window.
    void NotifyMapChanged(bool Everything);

    // ---- undo and modified state -----------------------------------------------------
    // Every change to the map is a step of History(); the map is modified while the
    // stack is away from its clean index (set on open and on every successful save).
    MapHistory& History() { return m_history; }
    QUndoStack& UndoStack() { return m_history.Stack(); }
    bool IsModified() const { return !m_history.Stack().isClean(); }
    void Undo();
    void Redo();
    // Runs Edit as one undo step named Name (MapHistory::Record): Indices names the
    // existing shapes it may change, WithProperties adds the map's own fields. A mouse
    // gesture still open (a polygon being drawn) becomes its own step first.
    bool RecordEdit(const QString& Name, const std::vector<std::int16_t>& Indices,
                    bool WithProperties, const std::function<void()>& Edit);
    // The same for an edit that may change every shape (import, properties dialog).
    bool RecordEditAll(const QString& Name, bool WithProperties, const std::function<void()>& Edit);

    // ---- StepTarget ------------------------------------------------------------------
    MapDocument& StepDocument() override { return m_document; }
    void StepChangedView() override;
    void StepApplied() override;

    // ---- view state ----------------------------------------------------------------
    // The drawing surface TheCanvas and the buffer HoldImage.
    CanvasSurface& Surface() const { return *m_canvas; }
    const QImage& HoldImageBuffer() const;
    // The part of the surface the user sees, in screen pixels (right and bottom one
    // past the last pixel; both count as inside).
    ShapeRect VisibleArea() const;
    // While true the pointer is kept inside VisibleArea().
    bool PointerConfined() const;
    const CanvasEditor& Editor() const { return m_editor; }

    // ---- view scale (how closely the user looks; never changes the map) ---------------
    double ViewScaleFactor() const;
    // Anchor: a point of the viewport HoldPicbox that keeps showing the same picture
    // point; the viewport's centre when omitted.
    void SetViewScale(double Factor);
    void SetViewScaleAt(double Factor, QPointF Anchor);
    void ZoomViewIn();
    void ZoomViewOut();
    void ActualSize();
    void FitToWindow();
    // Scrolls by screen pixels, as far as the bars go.
    void ScrollBy(int Dx, int Dy);
    // Scrolls so that the document rectangle (surface pixels at the map's zoom) shows,
    // as much of it as fits.
    void EnsureVisible(const QRect& DocumentRect);

signals:
    void ViewScaleChanged();
    // The map may have changed: Everything after a command on the whole map, otherwise
    // only the top and the current shape (a mouse or key edit).
    void MapChanged(bool Everything);
    // The user let the window close (the map saved, discarded or never changed).
    void CloseConfirmed();

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool event(QEvent* event) override;

private:
    CanvasHost& m_host;
    MapDocument m_document;
    CanvasEditor m_editor;
    QWidget* m_holdPicbox = nullptr;
    CanvasSurface* m_canvas = nullptr;
    PictureBuffer* m_holdImage = nullptr;
    QScrollBar* m_hScroll = nullptr;
    QScrollBar* m_vScroll = nullptr;
    QPushButton* m_scrollEnd = nullptr;
    QString m_fileName;
    // True only while SetZoomLevel resizes the surface: value changes of the bars then
    // leave the surface where it is.
    bool m_zooming = false;
    // Counted in OpenMapCount until a confirmed close.
    bool m_counted = false;
    std::unique_ptr<PointerConfinement> m_pointer;
    MapHistory m_history{*this};
    // Names the open gesture when the press itself decided what it is.
    QString m_gestureName;
    // Where the pointer last was over the surface, in screen pixels: a polygon's rubber
    // band goes back there when the picture moves or grows under a still pointer.
    std::optional<QPoint> m_lastPointer;
    // The press under way is the one that made this map the active one.
    bool m_activatingPress = false;

    void BuildChildren();
    void ResizeSurface(double Width, double Height);
    // The surface widget at the buffer's size times the view scale.
    void ScaleSurface();
    void ScrollTo(int H, int V);
    void RebuildBuffer();
    void OnPressed(QPointF Position, QPoint GlobalPosition);
    void OnControlPressed(QPointF Position, QPoint GlobalPosition);
    void OnMoved(QPointF Position, QPoint GlobalPosition, Qt::MouseButtons Buttons);
    void OnReleased(QPointF Position, QPoint GlobalPosition);
    void OnDoubleClicked();
    void OnKeyPressed(int Key);
    void OnPointerLeft();
    void OnHScroll(int Value);
    void OnVScroll(int Value);
    void OnHChange(int Value);
    void OnVChange(int Value);
    void ShowPointerPosition(QPointF Position, QPoint GlobalPosition);
    void FollowPointer();
    // A click that brings back a map whose polygon waits only activates it: the corner
    // goes where the user clicks next, with the rubber band in sight.
    bool OnlyActivates(QPointF Position, QPoint GlobalPosition);
    // Ends an open mouse gesture as its own step, before another command changes the
    // map.
    void SettleGesture();
    void FinishGesture();
    // Takes back the open gesture, as if it had never started.
    void CancelGesture();
    void Nudge(int Key);
    template <class Command> bool Guarded(Command&& command);
    template <class Command> bool GuardedWithSnapshot(Command&& command);
};
