#include "ui/canvas/CanvasSurface.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

CanvasSurface::CanvasSurface(const MapDocument& Document, QWidget* parent)
    : QWidget(parent), m_document(Document)
{
    setObjectName(QStringLiteral("TheCanvas"));
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    // Every pixel is painted from the picture; nothing needs erasing first.
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void CanvasSurface::SetBackground(const QImage& Picture)
{
    m_background = Picture;
    m_layer.Reset();
    InvalidateAll();
    RepaintNow();
}

void CanvasSurface::Render(QPainter& painter, const QRegion& Region) const
{
    m_layer.Paint(painter, m_document, m_background, Region);
}

bool CanvasSurface::SetViewScale(double Factor)
{
    if (!m_view.SetFactor(Factor))
        return false;
    InvalidateAll();
    RepaintNow();
    return true;
}

void CanvasSurface::InvalidateRect(const ShapeRect& rect)
{
    m_pending += m_view.ToScreen(rect.toQRect());
}

void CanvasSurface::InvalidateRegion(const QRegion& region)
{
    m_pending += m_view.ToScreen(region);
}

// Scaled, a validated area no longer covers whole screen pixels; repainting a little
// more is harmless, so only the unscaled view validates.
void CanvasSurface::ValidateRect(const ShapeRect& rect)
{
    if (m_view.IsIdentity())
        m_pending -= rect.toQRect();
}

void CanvasSurface::ValidateRegion(const QRegion& region)
{
    if (m_view.IsIdentity())
        m_pending -= region;
}

void CanvasSurface::InvalidateAll()
{
    m_pending = QRegion(rect());
}

void CanvasSurface::RepaintNow()
{
    const QRegion region = m_pending.intersected(rect());
    m_pending = QRegion();
    if (!region.isEmpty())
        update(region);
}

void CanvasSurface::SetHoverCursor(Qt::CursorShape Shape)
{
    if (m_spaceHeld || m_panning || cursor().shape() == Shape)
        return;
    setCursor(Shape);
}

void CanvasSurface::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    if (m_view.IsIdentity()) {
        Render(painter, event->region());
        return;
    }
    // Outlines use cosmetic pens and handles are drawn at screen size, so only the
    // picture itself grows or shrinks.
    painter.scale(m_view.Factor(), m_view.Factor());
    painter.setRenderHint(QPainter::SmoothPixmapTransform, m_view.Factor() < 1.0);
    Render(painter, m_view.ToDocument(event->region()));
}

bool CanvasSurface::event(QEvent* event)
{
    // Tab steps through the shapes here instead of moving the focus on.
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if ((key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) &&
            !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
            keyPressEvent(key);
            return true;
        }
    }
    return QWidget::event(event);
}

void CanvasSurface::mousePressEvent(QMouseEvent* event)
{
    setFocus(Qt::MouseFocusReason);
    if (m_spaceHeld) {
        m_panning = true;
        m_panFrom = event->globalPosition().toPoint();
        setCursor(Qt::ClosedHandCursor);
        return;
    }
    if (event->button() == Qt::LeftButton && (event->modifiers() & Qt::ControlModifier)) {
        emit ControlPressed(event->position(), event->globalPosition().toPoint());
        return;
    }
    emit Pressed(event->position(), event->globalPosition().toPoint());
}

void CanvasSurface::mouseMoveEvent(QMouseEvent* event)
{
    if (m_panning) {
        const QPoint now = event->globalPosition().toPoint();
        emit Panned(m_panFrom - now);
        m_panFrom = now;
        return;
    }
    emit Moved(event->position(), event->globalPosition().toPoint(), event->buttons());
}

void CanvasSurface::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_panning) {
        m_panning = false;
        setCursor(m_spaceHeld ? Qt::OpenHandCursor : Qt::ArrowCursor);
        return;
    }
    emit Released(event->position(), event->globalPosition().toPoint());
}

void CanvasSurface::mouseDoubleClickEvent(QMouseEvent*)
{
    if (m_spaceHeld)
        return;
    emit DoubleClicked();
}

void CanvasSurface::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        m_spaceHeld = true;
        if (!m_panning)
            setCursor(Qt::OpenHandCursor);
    }
    // A picture larger than its window scrolls from the keyboard too; the map is untouched.
    if (const QPoint page = PageScroll(*event); !page.isNull()) {
        emit Panned(page);
        event->accept();
        return;
    }
    // Some platforms send Shift+Tab as Tab with Shift held.
    if (event->key() == Qt::Key_Tab && (event->modifiers() & Qt::ShiftModifier))
        emit KeyPressed(Qt::Key_Backtab);
    else
        emit KeyPressed(event->key());
    event->accept();
}

QPoint CanvasSurface::PageScroll(const QKeyEvent& event) const
{
    const QSize window = parentWidget() != nullptr ? parentWidget()->size() : size();
    const bool sideways = event.modifiers() & Qt::ShiftModifier;
    // The ends lie at most the surface's own size away.
    const int far = sideways ? width() : height();
    int step = 0;
    switch (event.key()) {
    case Qt::Key_PageUp:
        step = -(sideways ? window.width() : window.height()) * 9 / 10;
        break;
    case Qt::Key_PageDown:
        step = (sideways ? window.width() : window.height()) * 9 / 10;
        break;
    case Qt::Key_Home:
        step = -far;
        break;
    case Qt::Key_End:
        step = far;
        break;
    default:
        return {};
    }
    return sideways ? QPoint(step, 0) : QPoint(0, step);
}

void CanvasSurface::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat())
        EndSpacePan();
    QWidget::keyReleaseEvent(event);
}

void CanvasSurface::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    if (event->reason() == Qt::MouseFocusReason)
        emit FocusedByPress();
}

void CanvasSurface::focusOutEvent(QFocusEvent* event)
{
    EndSpacePan();
    QWidget::focusOutEvent(event);
}

void CanvasSurface::EndSpacePan()
{
    m_spaceHeld = false;
    m_panning = false;
    unsetCursor();
}

void CanvasSurface::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    emit Resized();
}

void CanvasSurface::leaveEvent(QEvent* event)
{
    QWidget::leaveEvent(event);
    emit PointerLeft();
}
