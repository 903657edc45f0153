#include "ui/canvas/ShapeCanvas.h"

#include "core/base/ModalUi.h"
#include "core/base/Module1.h"
#include "core/base/Numeric.h"
#include "core/document/CanvasGrid.h"
#include "core/document/CanvasHost.h"
#include "core/document/CanvasLayout.h"
#include "core/document/CommandGuard.h"
#include "core/document/DeleteShapeCommand.h"
#include "core/document/EditShapesCommand.h"
#include "core/document/HoverCursor.h"
#include "core/document/NudgeShapeCommand.h"
#include "core/document/OpenMapCount.h"
#include "core/document/PointerArea.h"
#include "core/document/ScrollBarRange.h"
#include "core/document/ShapeStepper.h"
#include "core/document/VertexEditor.h"
#include "core/forms/CommonDialogStuff.h"
#include "core/interchange/MapCodeGenerator.h"
#include "core/interchange/MapFile.h"
#include "core/interchange/MapOpenFailure.h"
#include "core/interchange/NewMap.h"
#include "core/interchange/PictureLoader.h"
#include "ui/canvas/CanvasSurface.h"
#include "ui/canvas/PictureBuffer.h"
#include "ui/canvas/PointerConfinement.h"

#include <QCloseEvent>
#include <QDir>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QWheelEvent>
#include <cmath>
#include <utility>

ShapeCanvas::ShapeCanvas(CanvasHost& Host, QWidget* parent)
    : QWidget(parent), m_host(Host), m_editor(m_document)
{
    setObjectName(QStringLiteral("ShapeCanvas"));
    BuildChildren();
    if (OpenMapCount == 0)
        m_host.SetMapCommandsEnabled(true);
    ++OpenMapCount;
    m_counted = true;
    // A new map: the document's own defaults, no shapes, nothing grabbed.
    m_document = MapDocument();
    m_document.SetSurface(m_canvas);
    m_document.HitState = -2;
    SetPicSize();
    m_editor.SetBeforeChange([this](std::int16_t index) { m_history.TouchInGesture(index); });
    connect(&m_history.Stack(), &QUndoStack::cleanChanged, this,
            [this](bool clean) { setWindowModified(!clean); });
}

ShapeCanvas::~ShapeCanvas()
{
    // A window destroyed without a confirmed close still leaves the count.
    if (m_counted) {
        m_counted = false;
        if (--OpenMapCount == 0)
            m_host.SetMapCommandsEnabled(false);
    }
    // The history dies after this body. Its last signals (clearing it reads as "clean")
    // must reach nobody: not a half-gone widget, and not the recovery files, which a map
    // gone without being closed keeps.
    m_history.Stack().disconnect();
    m_pointer->ReleaseAll();
    m_document.SetSurface(nullptr);
}

void ShapeCanvas::BuildChildren()
{
    m_holdPicbox = new QWidget(this);
    m_holdPicbox->setObjectName(QStringLiteral("HoldPicbox"));
    m_canvas = new CanvasSurface(m_document, m_holdPicbox);
    m_canvas->resize(0, 0);
    m_holdImage = new PictureBuffer(this);
    m_hScroll = new QScrollBar(Qt::Horizontal, this);
    m_hScroll->setObjectName(QStringLiteral("HScroll1"));
    m_vScroll = new QScrollBar(Qt::Vertical, this);
    m_vScroll->setObjectName(QStringLiteral("VScroll1"));
    m_scrollEnd = new QPushButton(this);
    m_scrollEnd->setObjectName(QStringLiteral("BntScrollEnd"));
    m_scrollEnd->setFocusPolicy(Qt::NoFocus);

    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    m_holdPicbox->setGeometry(0, 0, 200, 200);
    m_hScroll->setGeometry(0, 200, 200, bar);
    m_vScroll->setGeometry(200, 0, bar, 200);
    m_scrollEnd->setGeometry(200, 200, bar, bar);
    m_hScroll->setVisible(false);
    m_vScroll->setVisible(false);

    m_pointer = std::make_unique<PointerConfinement>(*m_holdPicbox, *m_canvas);
    connect(m_canvas, &CanvasSurface::Pressed, this, &ShapeCanvas::OnPressed);
    connect(m_canvas, &CanvasSurface::ControlPressed, this, &ShapeCanvas::OnControlPressed);
    connect(m_canvas, &CanvasSurface::Moved, this, &ShapeCanvas::OnMoved);
    connect(m_canvas, &CanvasSurface::Released, this, &ShapeCanvas::OnReleased);
    connect(m_canvas, &CanvasSurface::DoubleClicked, this, &ShapeCanvas::OnDoubleClicked);
    connect(m_canvas, &CanvasSurface::KeyPressed, this, &ShapeCanvas::OnKeyPressed);
    connect(m_canvas, &CanvasSurface::PointerLeft, this, &ShapeCanvas::OnPointerLeft);
    connect(m_canvas, &CanvasSurface::Resized, this, [this] { SetPicSize(); });
    connect(m_canvas, &CanvasSurface::FocusedByPress, this,
            [this] { m_activatingPress = m_host.ActiveMapWindow() != this; });
    connect(m_canvas, &CanvasSurface::Panned, this,
            [this](QPoint Delta) { ScrollBy(Delta.x(), Delta.y()); });
    connect(m_hScroll, &QScrollBar::sliderMoved, this, &ShapeCanvas::OnHScroll);
    connect(m_vScroll, &QScrollBar::sliderMoved, this, &ShapeCanvas::OnVScroll);
    connect(m_hScroll, &QScrollBar::valueChanged, this, &ShapeCanvas::OnHChange);
    connect(m_vScroll, &QScrollBar::valueChanged, this, &ShapeCanvas::OnVChange);
}

MapDocument& ShapeCanvas::Document()
{
    return m_document;
}

const MapDocument& ShapeCanvas::Document() const
{
    return m_document;
}

const QImage& ShapeCanvas::HoldImageBuffer() const
{
    return m_holdImage->Image();
}

template <class Command> bool ShapeCanvas::Guarded(Command&& command)
{
    // A message box must not open while the pointer is held by the surface.
    return CommandGuard::Run(m_host.Dialogs(), std::forward<Command>(command),
                             [this] { m_pointer->ReleaseAll(); });
}

template <class Command> bool ShapeCanvas::GuardedWithSnapshot(Command&& command)
{
    MapDocument before = m_document;
    if (Guarded(std::forward<Command>(command)))
        return true;
    m_document = std::move(before);
    m_document.SetSurface(m_canvas);
    m_canvas->InvalidateAll();
    m_canvas->RepaintNow();
    return false;
}

// ---- picture, zoom, grid -----------------------------------------------------------

void ShapeCanvas::SetNewPicture(const QImage& Picture, const QString& PicturePath)
{
    // An unreadable picture makes no map: the window keeps what it had.
    if (Picture.isNull()) {
        m_host.Dialogs().Message(PictureLoader::CannotReadMessage(PicturePath),
                                 ModalUi::Icon::Critical);
        return;
    }
    NewMap::SetPicture(m_document, Picture, PicturePath);
    SetZoomLevel(1.0);
}

void ShapeCanvas::SetPicSize(bool* hBarShown, bool* vBarShown)
{
    const ScrollBarRange h = ScrollBarRange::For(m_canvas->width(), m_holdPicbox->width());
    m_hScroll->setVisible(h.Visible);
    if (h.Visible) {
        m_hScroll->setMaximum(h.Maximum);
        const int M = m_hScroll->maximum();
        m_hScroll->setPageStep(M / 25 + 1);
        m_hScroll->setSingleStep(M / 200 + 1);
        if (hBarShown != nullptr)
            *hBarShown = true;
    }
    const ScrollBarRange v = ScrollBarRange::For(m_canvas->height(), m_holdPicbox->height());
    m_vScroll->setVisible(v.Visible);
    if (v.Visible) {
        m_vScroll->setMaximum(v.Maximum);
        const int M = m_vScroll->maximum();
        m_vScroll->setPageStep(M / 25 + 1);
        m_vScroll->setSingleStep(M / 200 + 1);
        if (vBarShown != nullptr)
            *vBarShown = true;
    }
}

void ShapeCanvas::ResizeSurface(double Width, double Height)
{
    const int w = RoundToInt32(Width);
    const int h = RoundToInt32(Height);
    m_holdImage->ResizeBuffer(w, h);
    ScaleSurface();
}

void ShapeCanvas::ScaleSurface()
{
    const QSize buffer = m_holdImage->Image().size();
    m_canvas->resize(m_canvas->View().ScreenLength(buffer.width()),
                     m_canvas->View().ScreenLength(buffer.height()));
}

void ShapeCanvas::SetZoomLevel(double NewZoomLevel)
{
    GuardedWithSnapshot([&] {
        const double W = m_document.SWidth * NewZoomLevel;
        const double H = m_document.SHeight * NewZoomLevel;
        // Rescale the shapes first: an overflow then leaves the view as it was.
        // A wider counter: index 32767 is a valid shape and a 16-bit one would wrap.
        for (int i = 0; i <= m_document.ItemCount(); ++i)
            m_document.Shape(static_cast<std::int16_t>(i)).ResetPointsToZoom(NewZoomLevel);
        ResizeSurface(W, H);
        m_zooming = true;
        bool hShown = false;
        bool vShown = false;
        SetPicSize(&hShown, &vShown);
        if (!hShown)
            m_canvas->move(0, m_canvas->y());
        if (!vShown)
            m_canvas->move(m_canvas->x(), 0);
        m_zooming = false;
        // A bar whose value had to shrink with its range takes the surface along, so
        // that no empty strip shows past the picture.
        if (hShown && -m_canvas->x() > m_hScroll->value())
            OnHScroll(m_hScroll->value());
        if (vShown && -m_canvas->y() > m_vScroll->value())
            OnVScroll(m_vScroll->value());
        m_holdImage->StretchFrom(m_document.OrigPic);
        m_document.ZoomLevel = NewZoomLevel;
        DrawGrid(false);
        m_canvas->SetBackground(m_holdImage->Image());
        SetPicSize();
        m_document.DrawShapes();
    });
    FollowPointer();
    emit MapChanged(true);
}

void ShapeCanvas::RebuildBuffer()
{
    ResizeSurface(m_document.SWidth * m_document.ZoomLevel,
                  m_document.SHeight * m_document.ZoomLevel);
    m_holdImage->StretchFrom(m_document.OrigPic);
}

void ShapeCanvas::DrawGrid(bool ShouldSetPic)
{
    if (m_document.ShouldDrawGrid) {
        if (ShouldSetPic)
            RebuildBuffer();
        DrawGridLines();
        if (!ShouldSetPic)
            return;
    } else {
        if (!ShouldSetPic)
            return;
        RebuildBuffer();
    }
    m_canvas->SetBackground(m_holdImage->Image());
    SetPicSize();
}

void ShapeCanvas::DrawGridLines()
{
    CanvasGrid::DrawGridLines(m_holdImage->Image(), m_document.ZoomLevel * m_document.GridSpacing,
                              m_document.GridStyle, m_document.GridColor);
}

// ---- scrolling and layout ----------------------------------------------------------

void ShapeCanvas::OnHScroll(int Value)
{
    m_canvas->move(-Value, m_canvas->y());
}

void ShapeCanvas::OnVScroll(int Value)
{
    m_canvas->move(m_canvas->x(), -Value);
}

void ShapeCanvas::OnHChange(int Value)
{
    if (!m_zooming)
        OnHScroll(Value);
}

void ShapeCanvas::OnVChange(int Value)
{
    if (!m_zooming)
        OnVScroll(Value);
}

void ShapeCanvas::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (m_vScroll->isVisible())
        m_vScroll->setValue(0);
    if (m_hScroll->isVisible())
        m_hScroll->setValue(0);
    CanvasLayout current;
    current.HoldPicbox = m_holdPicbox->geometry();
    current.HScroll1 = m_hScroll->geometry();
    current.VScroll1 = m_vScroll->geometry();
    current.BntScrollEnd = m_scrollEnd->geometry();
    current.HoldImageTop = m_holdImage->y();
    const CanvasLayout next = CanvasLayout::Resized(current, width(), height());
    m_holdPicbox->setGeometry(next.HoldPicbox);
    m_hScroll->setGeometry(next.HScroll1);
    m_vScroll->setGeometry(next.VScroll1);
    m_scrollEnd->setGeometry(next.BntScrollEnd);
    m_holdImage->move(m_holdImage->x(), next.HoldImageTop);
    SetPicSize();
    // Tile and Cascade move and resize the window under the pointer.
    FollowPointer();
}

// ---- view scale --------------------------------------------------------------------

double ShapeCanvas::ViewScaleFactor() const
{
    return m_canvas->View().Factor();
}

void ShapeCanvas::SetViewScale(double Factor)
{
    SetViewScaleAt(Factor, QPointF(m_holdPicbox->width() / 2.0, m_holdPicbox->height() / 2.0));
}

void ShapeCanvas::SetViewScaleAt(double Factor, QPointF Anchor)
{
    const double old = m_canvas->View().Factor();
    const QPointF document = (Anchor - QPointF(m_canvas->pos())) / old;
    if (!m_canvas->SetViewScale(Factor))
        return;
    const double now = m_canvas->View().Factor();
    m_editor.SetVertexReach(m_canvas->View().DocumentReach(PatShape::VertexReach));
    m_zooming = true;
    ScaleSurface();
    SetPicSize();
    m_zooming = false;
    ScrollTo(
        static_cast<int>(std::lround(ViewScale::AnchoredOffset(document.x(), now, Anchor.x()))),
        static_cast<int>(std::lround(ViewScale::AnchoredOffset(document.y(), now, Anchor.y()))));
    emit ViewScaleChanged();
}

void ShapeCanvas::ZoomViewIn()
{
    SetViewScale(ViewScale::StepIn(ViewScaleFactor()));
}

void ShapeCanvas::ZoomViewOut()
{
    SetViewScale(ViewScale::StepOut(ViewScaleFactor()));
}

void ShapeCanvas::ActualSize()
{
    SetViewScale(1.0);
}

void ShapeCanvas::FitToWindow()
{
    // The viewport less the margin the pointer area keeps on the right and at the bottom.
    const QSizeF viewport(m_holdPicbox->width() - 4, m_holdPicbox->height() - 4);
    SetViewScale(ViewScale::Fit(m_holdImage->Image().size(), viewport));
    ScrollTo(0, 0);
}

void ShapeCanvas::ScrollTo(int H, int V)
{
    // A hidden bar means the picture fits along that axis: it sits at the edge.
    if (m_hScroll->isVisible()) {
        m_hScroll->setValue(H);
        OnHScroll(m_hScroll->value());
    } else {
        m_canvas->move(0, m_canvas->y());
    }
    if (m_vScroll->isVisible()) {
        m_vScroll->setValue(V);
        OnVScroll(m_vScroll->value());
    } else {
        m_canvas->move(m_canvas->x(), 0);
    }
    FollowPointer();
}

void ShapeCanvas::FollowPointer()
{
    // The picture moved or was rescaled under a still pointer (wheel, page keys, zoom):
    // a polygon's rubber band goes on ending under the pointer.
    if (m_document.PolygonInProgress && m_lastPointer)
        OnMoved(m_canvas->mapFromGlobal(QPointF(*m_lastPointer)), *m_lastPointer, Qt::NoButton);
}

void ShapeCanvas::ScrollBy(int Dx, int Dy)
{
    ScrollTo(m_hScroll->value() + Dx, m_vScroll->value() + Dy);
}

void ShapeCanvas::EnsureVisible(const QRect& DocumentRect)
{
    const QRect wanted = m_canvas->View().ToScreen(DocumentRect);
    const QRect shown(-m_canvas->pos(), m_holdPicbox->size());
    int h = shown.left();
    int v = shown.top();
    if (wanted.left() < shown.left() || wanted.right() > shown.right())
        h = wanted.width() > shown.width() ? wanted.left()
                                           : wanted.center().x() - shown.width() / 2;
    if (wanted.top() < shown.top() || wanted.bottom() > shown.bottom())
        v = wanted.height() > shown.height() ? wanted.top()
                                             : wanted.center().y() - shown.height() / 2;
    ScrollTo(h, v);
}

void ShapeCanvas::wheelEvent(QWheelEvent* event)
{
    const QPoint delta = event->angleDelta();
    if (event->modifiers() & Qt::ControlModifier) {
        const int notches = delta.y() != 0 ? delta.y() : delta.x();
        if (notches == 0)
            return;
        const QPointF anchor = m_holdPicbox->mapFrom(this, event->position());
        SetViewScaleAt(notches > 0 ? ViewScale::StepIn(ViewScaleFactor())
                                   : ViewScale::StepOut(ViewScaleFactor()),
                       anchor);
        event->accept();
        return;
    }
    // A notch moves three lines of twenty pixels, as text views do.
    const int pixelsPerNotch = 3 * 20;
    int dx = delta.x();
    int dy = delta.y();
    if (event->modifiers() & Qt::ShiftModifier) {
        dx = dy != 0 ? dy : dx;
        dy = 0;
    }
    ScrollBy(-dx * pixelsPerNotch / 120, -dy * pixelsPerNotch / 120);
    event->accept();
}

// ---- mouse and keyboard ------------------------------------------------------------

ShapeRect ShapeCanvas::VisibleArea() const
{
    return m_pointer->VisibleArea();
}

bool ShapeCanvas::PointerConfined() const
{
    return m_pointer->Confined();
}

bool ShapeCanvas::OnlyActivates(QPointF Position, QPoint GlobalPosition)
{
    if (!std::exchange(m_activatingPress, false) || !m_document.PolygonInProgress)
        return false;
    m_pointer->Start(Position, GlobalPosition);
    OnMoved(Position, GlobalPosition, Qt::NoButton);
    return true;
}

void ShapeCanvas::OnPressed(QPointF Position, QPoint GlobalPosition)
{
    if (OnlyActivates(Position, GlobalPosition))
        return;
    m_lastPointer = GlobalPosition;
    m_history.BeginGesture();
    Guarded([&] {
        const QPointF p = m_canvas->ToDocument(m_pointer->Start(Position, GlobalPosition));
        m_editor.Press(RoundToInt32(p.x()), RoundToInt32(p.y()), m_host.CurrentDrawingMode());
    });
    emit MapChanged(false);
}

void ShapeCanvas::OnControlPressed(QPointF Position, QPoint GlobalPosition)
{
    if (OnlyActivates(Position, GlobalPosition))
        return;
    VertexEditor::Outcome outcome = VertexEditor::Outcome::NotOnPolygon;
    // The polygon edited may lie anywhere in the stack.
    m_history.BeginGesture(true);
    Guarded([&] {
        const QPointF p = m_canvas->ToDocument(m_pointer->Start(Position, GlobalPosition));
        outcome = VertexEditor::Edit(m_document, RoundToInt32(p.x()), RoundToInt32(p.y()),
                                     m_editor.VertexReach());
    });
    if (outcome == VertexEditor::Outcome::Inserted)
        m_gestureName = QStringLiteral("Insert Vertex");
    else if (outcome == VertexEditor::Outcome::Deleted)
        m_gestureName = QStringLiteral("Delete Vertex");
    if (outcome == VertexEditor::Outcome::TooFewVertices) {
        m_pointer->ReleaseAll();
        m_host.Dialogs().Message(VertexEditor::TooFewVerticesMessage(), ModalUi::Icon::Critical);
    } else if (outcome == VertexEditor::Outcome::NotOnPolygon) {
        OnPressed(Position, GlobalPosition);
        return;
    }
    emit MapChanged(false);
}

void ShapeCanvas::OnMoved(QPointF Position, QPoint GlobalPosition, Qt::MouseButtons Buttons)
{
    // Another map was made the active one (Ctrl+Tab) while a polygon is drawn here: the
    // pointer leaves for it instead of being put back on this picture.
    if (m_host.ActiveMapWindow() != this)
        m_pointer->ReleaseAll();
    Guarded([&] {
        const QPointF held = m_pointer->Hold(Position, GlobalPosition);
        const QPoint g = held == Position ? GlobalPosition : m_canvas->mapToGlobal(held.toPoint());
        m_lastPointer = g;
        const QPointF p = m_canvas->ToDocument(held);
        m_editor.Move(RoundToInt32(p.x()), RoundToInt32(p.y()), Buttons == Qt::LeftButton,
                      Buttons != Qt::NoButton);
        if (Buttons == Qt::NoButton)
            m_canvas->SetHoverCursor(HoverCursor::For(m_document, RoundToInt32(p.x()),
                                                      RoundToInt32(p.y()), m_editor.VertexReach(),
                                                      m_host.CurrentDrawingMode()));
        ShowPointerPosition(p, g);
    });
    if (Buttons != Qt::NoButton)
        emit MapChanged(false);
}

void ShapeCanvas::ShowPointerPosition(QPointF Position, QPoint GlobalPosition)
{
    // Over another map's window the pointer stays free (OnMoved let go of it); the
    // polygon waits for its next click.
    if (m_host.ActiveMapWindow() != this) {
        m_host.SetStatusText(QString());
        return;
    }
    const ShapeRect area = m_pointer->VisibleArea();
    m_pointer->Capture();
    if (!PointerArea::Contains(area, GlobalPosition)) {
        if (!m_pointer->Confined())
            m_pointer->ReleaseCapture();
        m_host.SetStatusText(QString());
        return;
    }
    m_host.SetStatusText(PointerArea::StatusText(Position.x(), Position.y(), m_document.ZoomLevel));
}

void ShapeCanvas::OnReleased(QPointF Position, QPoint GlobalPosition)
{
    Q_UNUSED(Position);
    Q_UNUSED(GlobalPosition);
    Guarded([&] { m_editor.Release(); });
    emit MapChanged(false);
    if (!m_document.PolygonInProgress) {
        m_pointer->End();
        FinishGesture();
    }
}

void ShapeCanvas::FinishGesture()
{
    if (!m_history.GestureOpen())
        return;
    QString name;
    if (m_history.GestureAddsShapes()) {
        switch (m_document.Shapes().back().GetShapeType()) {
        case Circle:
            name = QStringLiteral("Draw Circle");
            break;
        case Polygon:
            name = QStringLiteral("Draw Polygon");
            break;
        default:
            name = QStringLiteral("Draw Rectangle");
            break;
        }
    } else if (m_document.HitState == -1) {
        name = QStringLiteral("Move Shape");
    } else if (m_document.HitState >= 0) {
        name = QStringLiteral("Reshape Shape");
    } else {
        name = QStringLiteral("Bring to Top");
    }
    if (!m_gestureName.isEmpty())
        name = std::exchange(m_gestureName, QString());
    m_history.FinishGesture(name, QStringLiteral("Bring to Top"));
}

void ShapeCanvas::SettleGesture()
{
    // No command lands in the middle of a polygon: its next click would go to whatever
    // shape the command left current. The polygon is closed as Enter closes it, or
    // abandoned as Escape does while it is too short to close.
    if (m_document.PolygonInProgress) {
        OnKeyPressed(Qt::Key_Return);
        if (m_document.PolygonInProgress)
            OnKeyPressed(Qt::Key_Escape);
    }
    // A drag ends here too: what the button still held does next would be no step.
    const bool dragging = m_history.GestureOpen();
    FinishGesture();
    if (dragging)
        m_document.HitState = -2;
}

void ShapeCanvas::OnDoubleClicked()
{
    const int tab = m_editor.DoubleClickTab();
    if (tab != 0)
        ShapeProperties(tab);
}

void ShapeCanvas::OnPointerLeft()
{
    // Without a capture, leaving the surface is the last move it hears of.
    if (!m_pointer->HasCapture())
        m_host.SetStatusText(QString());
}

bool ShapeCanvas::event(QEvent* event)
{
    // A dialog or another program taking over must get the pointer back.
    if (event->type() == QEvent::WindowDeactivate)
        m_pointer->ReleaseAll();
    return QWidget::event(event);
}

void ShapeCanvas::OnKeyPressed(int Key)
{
    const bool building = m_document.PolygonInProgress;
    if (Key == Qt::Key_Delete && !building) {
        if (m_document.ItemCount() >= 0)
            DeleteShape();
        return;
    }
    // Escape puts a shape being dragged back where the press found it.
    if (Key == Qt::Key_Escape && !building && m_history.GestureOpen()) {
        CancelGesture();
        return;
    }
    // Keys while a shape is drawn or dragged belong to that gesture's step.
    if (building || m_history.GestureOpen()) {
        Guarded([&] { m_editor.KeyDown(Key); });
        // A polygon closed or abandoned from the keyboard frees the pointer as a click
        // would.
        if (building && !m_document.PolygonInProgress) {
            m_pointer->End();
            FinishGesture();
        }
        emit MapChanged(false);
        return;
    }
    Nudge(Key);
}

void ShapeCanvas::Nudge(int Key)
{
    Guarded([&] {
        std::optional<MapChange> change =
            m_history.Capture({}, false, false, [&] { m_editor.KeyDown(Key); });
        if (!change)
            return;
        // Tab restacks; the arrows move.
        if (change->OnlyRestacks()) {
            m_history.Push(
                new EditShapesCommand(*this, QStringLiteral("Bring to Top"), std::move(*change)));
            return;
        }
        const QString name = m_document.HitState == -1 ? QStringLiteral("Move Shape")
                                                       : QStringLiteral("Reshape Shape");
        m_history.Push(new NudgeShapeCommand(*this, name, std::move(*change)));
    });
    emit MapChanged(false);
}

// ---- lifecycle ---------------------------------------------------------------------

void ShapeCanvas::closeEvent(QCloseEvent* event)
{
    if (!m_counted) {
        event->accept();
        return;
    }
    SettleGesture();
    if (IsModified()) {
        switch (m_host.Dialogs().AskToSaveChanges(windowTitle())) {
        case ModalUi::SaveChoice::Save:
            SaveMap();
            // A failed or cancelled save keeps the window.
            if (IsModified()) {
                event->ignore();
                return;
            }
            break;
        case ModalUi::SaveChoice::Discard:
            break;
        case ModalUi::SaveChoice::Cancel:
            event->ignore();
            return;
        }
    } else {
        const QString question = QStringLiteral("Are you sure you are done editing ") +
                                 QLatin1Char('"') + windowTitle() + QLatin1Char('"') +
                                 QLatin1Char('?');
        if (!m_host.Dialogs().Question(question)) {
            event->ignore();
            return;
        }
    }
    m_pointer->ReleaseAll();
    m_counted = false;
    if (OpenMapCount-- == 1)
        m_host.SetMapCommandsEnabled(false);
    event->accept();
    emit CloseConfirmed();
}

// ---- files and code ----------------------------------------------------------------

bool ShapeCanvas::OpenMapFile(const QString& FileNameToOpen)
{
    MapFile::ReadResult result = MapFile::OpenMapFile(FileNameToOpen, m_canvas);
    if (!result.ok) {
        // The cause, when known, goes with the last message; a missing picture is named.
        const QString detail = MapOpenFailure::Detail(
            FileNameToOpen,
            result.missingPicture.isEmpty()
                ? result.detail
                : MapFile::PictureMissingDetail(QDir::toNativeSeparators(result.missingPicture)));
        for (qsizetype i = 0; i < result.messages.size(); ++i)
            m_host.Dialogs().DetailedMessage(result.messages[i], ModalUi::Icon::Critical,
                                             i + 1 == result.messages.size() ? detail : QString());
        return false;
    }
    m_document = std::move(result.document);
    m_document.SetSurface(m_canvas);
    m_fileName = result.fileName;
    setWindowTitle(Module1::FileTitle(m_fileName));
    SetZoomLevel(m_document.ZoomLevel);
    m_history.Stack().clear();
    return true;
}

void ShapeCanvas::AdoptRecovered(MapDocument Recovered, const QString& FileNameToKeep,
                                 const QString& Caption)
{
    m_document = std::move(Recovered);
    m_document.SetSurface(m_canvas);
    m_fileName = FileNameToKeep;
    setWindowTitle(Caption);
    SetZoomLevel(m_document.ZoomLevel);
    m_history.Stack().clear();
    // Nothing to undo, yet not what the file holds.
    m_history.Stack().resetClean();
}

void ShapeCanvas::SaveMap()
{
    QString name = m_fileName;
    if (name.isEmpty()) {
        name = m_host.Dialogs().AskForMapNameToSave();
        if (name.isEmpty())
            return;
        name = CommonDialogStuff::WithMapExtension(name);
    }
    const MapFile::WriteResult result = MapFile::SaveMap(m_document, name);
    if (!result.ok) {
        m_host.Dialogs().DetailedMessage(result.message, ModalUi::Icon::Critical, result.detail);
        return;
    }
    m_fileName = name;
    setWindowTitle(Module1::FileTitle(name));
    m_history.Stack().setClean();
}

void ShapeCanvas::SaveMapAs()
{
    const QString previous = m_fileName;
    m_fileName.clear();
    SaveMap();
    if (m_fileName.isEmpty())
        m_fileName = previous;
}

QString ShapeCanvas::FileName() const
{
    return m_fileName;
}

QString ShapeCanvas::GenerateMapCode(bool loadwindow)
{
    QString code;
    Guarded([&] {
        code = MapCodeGenerator::GenerateMapCode(m_document, loadwindow
                                                                 ? MapCodeGenerator::Form::Viewing
                                                                 : MapCodeGenerator::Form::Test);
    });
    if (code.isEmpty()) {
        if (m_document.ItemCount() < 0)
            m_host.Dialogs().Message(MapCodeGenerator::NoShapesMessage(), ModalUi::Icon::Critical);
        return QString();
    }
    if (!loadwindow)
        return code;
    m_host.ShowGeneratedCode(code);
    return QString();
}

void ShapeCanvas::CheckTheURLs()
{
    m_host.ShowUrlChecker(*this);
}

// ---- shape commands ----------------------------------------------------------------

void ShapeCanvas::DeleteShape(const QString& StepName)
{
    SettleGesture();
    Guarded([&] {
        if (m_document.ItemCount() < 0)
            return;
        auto* step = new DeleteShapeCommand(*this, StepName, m_document);
        try {
            m_document.DeleteShape();
        } catch (...) {
            delete step;
            throw;
        }
        m_history.Push(step);
    });
    emit MapChanged(true);
}

bool ShapeCanvas::SetShapeEqualToTopShape(PatShape& CopyOfShape)
{
    // Cut copies before it deletes: both must see the same top shape.
    SettleGesture();
    bool copied = false;
    Guarded([&] { copied = m_document.SetShapeEqualToTopShape(CopyOfShape); });
    return copied;
}

void ShapeCanvas::SetNewShape(const PatShape& NewShape)
{
    SettleGesture();
    const bool pasted = GuardedWithSnapshot([&] {
        m_history.Record(QStringLiteral("Paste Shape"), {}, false,
                         [&] { m_document.SetNewShape(NewShape); });
    });
    // A pasted shape lands in the picture's top-left corner, which may be scrolled away.
    if (pasted && m_document.ItemCount() >= 0)
        EnsureVisible(PatShape::BoundingRect(m_document.TopShape().Points(), false).toQRect());
    emit MapChanged(true);
}

void ShapeCanvas::MorphShape(std::int16_t SType)
{
    SettleGesture();
    GuardedWithSnapshot([&] {
        m_history.Record(QStringLiteral("Morph Shape"), {}, false,
                         [&] { m_document.MorphShape(SType); });
    });
    emit MapChanged(true);
}

void ShapeCanvas::ShapeProperties(int TheIndex)
{
    SettleGesture();
    std::optional<MapChange> change = m_history.Capture(
        {}, true, true, [&] { m_host.ShowShapeProperties(*this, TheIndex == -1 ? 1 : TheIndex); });
    // Switching tabs restacks even when the dialog is cancelled: then that is the step.
    if (change)
        m_history.Push(new EditShapesCommand(*this,
                                             change->OnlyRestacks()
                                                 ? QStringLiteral("Bring to Top")
                                                 : QStringLiteral("Shape Properties"),
                                             std::move(*change)));
}

// ---- undo ------------------------------------------------------------------------------

void ShapeCanvas::Undo()
{
    m_pointer->ReleaseAll();
    // In the middle of a drag or a polygon, undo takes back only what it has done so far.
    if (m_history.GestureOpen()) {
        CancelGesture();
        return;
    }
    Guarded([&] { m_history.Undo(); });
}

void ShapeCanvas::CancelGesture()
{
    m_pointer->ReleaseAll();
    m_gestureName.clear();
    Guarded([&] { m_history.CancelGesture(); });
    // A button still held lets go of the shape: the rest of the drag moves nothing.
    m_document.HitState = -2;
    emit MapChanged(true);
}

void ShapeCanvas::Redo()
{
    Guarded([&] { m_history.Redo(); });
}

bool ShapeCanvas::RecordEdit(const QString& Name, const std::vector<std::int16_t>& Indices,
                             bool WithProperties, const std::function<void()>& Edit)
{
    SettleGesture();
    return m_history.Record(Name, Indices, WithProperties, Edit);
}

bool ShapeCanvas::RecordEditAll(const QString& Name, bool WithProperties,
                                const std::function<void()>& Edit)
{
    SettleGesture();
    return m_history.RecordAll(Name, WithProperties, Edit);
}

void ShapeCanvas::StepChangedView()
{
    SetZoomLevel(m_document.ZoomLevel);
}

void ShapeCanvas::StepApplied()
{
    // Undo and redo change the map behind every command's back.
    emit MapChanged(true);
}

void ShapeCanvas::DrawShapes()
{
    Guarded([&] { m_document.DrawShapes(); });
    emit MapChanged(true);
}

void ShapeCanvas::ReStackArrayFromOptions(std::int16_t NewTopIndex)
{
    Guarded([&] {
        const std::int16_t oldTop =
            m_document.ItemCount() >= 0 ? m_document.ShapeOrder().front() : std::int16_t{-1};
        m_document.ReStackArrayFromOptions(NewTopIndex);
        for (const std::int16_t index : {oldTop, NewTopIndex})
            m_canvas->InvalidateRect(m_document.Shape(index).PaintBounds());
        m_canvas->RepaintNow();
    });
    emit MapChanged(true);
}

void ShapeCanvas::SelectShape(std::int16_t Index)
{
    if (m_document.PolygonInProgress || Index < 0 || Index > m_document.ItemCount())
        return;
    // As a click that only restacks, an undo step of its own.
    Guarded([&] {
        RecordEdit(QStringLiteral("Bring to Top"), {Index}, false,
                   [&] { ShapeStepper::Select(m_document, Index); });
    });
    const ShapeRect b = PatShape::BoundingRect(m_document.Shape(Index).Points(), false);
    EnsureVisible(b.toQRect());
    emit MapChanged(false);
}

void ShapeCanvas::NotifyMapChanged(bool Everything)
{
    emit MapChanged(Everything);
}

void ShapeCanvas::SetShapeColors()
{
    Guarded([&] {
        m_document.SetShapeColors();
        m_document.DrawShapes();
    });
    emit MapChanged(true);
}
