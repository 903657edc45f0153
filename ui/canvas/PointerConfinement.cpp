#include "ui/canvas/PointerConfinement.h"

#include "core/document/PointerArea.h"

#include <QCursor>
#include <QGuiApplication>
#include <QWidget>

PointerConfinement::PointerConfinement(QWidget& Viewport, QWidget& Surface)
    : m_viewport(Viewport), m_surface(Surface)
{
    const QString platform = QGuiApplication::platformName();
    m_canCapture = platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
}

ShapeRect PointerConfinement::VisibleArea() const
{
    const QRect viewport(m_viewport.mapToGlobal(QPoint(0, 0)), m_viewport.size());
    const QRect surface(m_surface.mapToGlobal(QPoint(0, 0)), m_surface.size());
    return PointerArea::VisibleArea(viewport, surface);
}

QPointF PointerConfinement::PutBack(QPointF Position, QPoint GlobalPosition)
{
    const ShapeRect area = VisibleArea();
    if (PointerArea::Contains(area, GlobalPosition))
        return Position;
    const QPoint nearest = PointerArea::Nearest(area, GlobalPosition);
    QCursor::setPos(nearest);
    return m_surface.mapFromGlobal(QPointF(nearest));
}

QPointF PointerConfinement::Start(QPointF Position, QPoint GlobalPosition)
{
    m_confined = true;
    return PutBack(Position, GlobalPosition);
}

QPointF PointerConfinement::Hold(QPointF Position, QPoint GlobalPosition)
{
    return m_confined ? PutBack(Position, GlobalPosition) : Position;
}

void PointerConfinement::Capture()
{
    // Only the active window captures, so that a dialog opened over it keeps the mouse.
    if (m_canCapture && !HasCapture() && m_surface.isEnabled() && m_surface.isVisible() &&
        m_surface.isActiveWindow())
        m_surface.grabMouse();
}

void PointerConfinement::ReleaseCapture()
{
    if (HasCapture())
        m_surface.releaseMouse();
}

bool PointerConfinement::HasCapture() const
{
    return QWidget::mouseGrabber() == &m_surface;
}

void PointerConfinement::ReleaseAll()
{
    m_confined = false;
    ReleaseCapture();
}
