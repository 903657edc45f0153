#pragma once

#include "core/shape/ShapeGeometry.h"

#include <QPoint>
#include <QPointF>

class QWidget;

// Keeps the pointer inside the visible part of a map's drawing surface while the user
// works on it, and gives the surface the mouse capture while the pointer is over it.
// The platform has no cursor clipping here: a pointer that leaves the area while
// confined is put back on the area's nearest point.
class PointerConfinement
{
public:
    PointerConfinement(QWidget& Viewport, QWidget& Surface);

    // In screen pixels; right and bottom are one past the last pixel and count as inside.
    ShapeRect VisibleArea() const;
    bool Confined() const { return m_confined; }
    // Confines from now on; returns the surface position to use for the press.
    QPointF Start(QPointF Position, QPoint GlobalPosition);
    // While confined, a position outside the area becomes its nearest point (the pointer
    // is moved there too); otherwise Position is returned as it is.
    QPointF Hold(QPointF Position, QPoint GlobalPosition);
    void End() { m_confined = false; }

    // The capture of pointer moves, taken only by the surface of the active window.
    void Capture();
    void ReleaseCapture();
    bool HasCapture() const;
    // Lets go of everything, before a dialog opens or when the window loses the focus.
    void ReleaseAll();

private:
    QWidget& m_viewport;
    QWidget& m_surface;
    bool m_confined = false;
    // Headless platforms have no pointer to capture.
    bool m_canCapture = true;

    QPointF PutBack(QPointF Position, QPoint GlobalPosition);
};
