#pragma once

#include "core/shape/ShapeSurface.h"

#include <QImage>
#include <QRegion>
#include <QWidget>

class MapDocument;

// TheCanvas: the drawing surface of a map window. Shapes report the areas their
// changes touch; the surface gathers them and repaints exactly those from the
// background picture and the document. Mouse and key input is handed on as signals.
class CanvasSurface : public QWidget, public ShapeSurface
{
    Q_OBJECT
public:
    CanvasSurface(const MapDocument& Document, QWidget* parent = nullptr);

    // The zoomed picture (with any grid); everything is repainted.
    void SetBackground(const QImage& Picture);
    const QImage& Background() const { return m_background; }
    // What is waiting to be repainted.
    const QRegion& PendingRegion() const { return m_pending; }
    // Paints Region of the surface into painter, as a paint event does.
    void Render(QPainter& painter, const QRegion& Region) const;

    void InvalidateRect(const ShapeRect& rect) override;
    void InvalidateRegion(const QRegion& region) override;
    void ValidateRect(const ShapeRect& rect) override;
    void ValidateRegion(const QRegion& region) override;
    void InvalidateAll() override;
    void RepaintNow() override;

signals:
    void Pressed(QPointF Position, QPoint GlobalPosition);
    // A left press with Ctrl held: vertex editing, before the ordinary press.
    void ControlPressed(QPointF Position, QPoint GlobalPosition);
    void Moved(QPointF Position, QPoint GlobalPosition, Qt::MouseButtons Buttons);
    void Released(QPointF Position, QPoint GlobalPosition);
    void DoubleClicked();
    void KeyPressed(int Key);
    void PointerLeft();
    void Resized();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    const MapDocument& m_document;
    QImage m_background;
    QRegion m_pending;
};
