#include "ui/canvas/CanvasSurface.h"

#include "core/document/MapPainter.h"

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
    InvalidateAll();
    RepaintNow();
}

void CanvasSurface::Render(QPainter& painter, const QRegion& Region) const
{
    MapPainter::Paint(painter, m_document, m_background, Region);
}

void CanvasSurface::InvalidateRect(const ShapeRect& rect)
{
    m_pending += rect.toQRect();
}

void CanvasSurface::InvalidateRegion(const QRegion& region)
{
    m_pending += region;
}

void CanvasSurface::ValidateRect(const ShapeRect& rect)
{
    m_pending -= rect.toQRect();
}

void CanvasSurface::ValidateRegion(const QRegion& region)
{
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

void CanvasSurface::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    Render(painter, event->region());
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
    if (event->button() == Qt::LeftButton && (event->modifiers() & Qt::ControlModifier)) {
        emit ControlPressed(event->position(), event->globalPosition().toPoint());
        return;
    }
    emit Pressed(event->position(), event->globalPosition().toPoint());
}

void CanvasSurface::mouseMoveEvent(QMouseEvent* event)
{
    emit Moved(event->position(), event->globalPosition().toPoint(), event->buttons());
}

void CanvasSurface::mouseReleaseEvent(QMouseEvent* event)
{
    emit Released(event->position(), event->globalPosition().toPoint());
}

void CanvasSurface::mouseDoubleClickEvent(QMouseEvent*)
{
    emit DoubleClicked();
}

void CanvasSurface::keyPressEvent(QKeyEvent* event)
{
    // Some platforms send Shift+Tab as Tab with Shift held.
    if (event->key() == Qt::Key_Tab && (event->modifiers() & Qt::ShiftModifier))
        emit KeyPressed(Qt::Key_Backtab);
    else
        emit KeyPressed(event->key());
    event->accept();
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
