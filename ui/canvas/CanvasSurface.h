#pragma once

#include "core/document/MapLayer.h"
#include "core/document/ViewScale.h"
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
    // The view scale: the widget shows the document surface this much larger. Shapes
    // still report areas in document pixels; positions in the signals are widget pixels.
    const ViewScale& View() const { return m_view; }
    // False when the factor stays as it was; otherwise everything is repainted.
    bool SetViewScale(double Factor);
    QPointF ToDocument(QPointF Position) const { return m_view.ToDocument(Position); }
    // What is waiting to be repainted, in widget pixels.
    const QRegion& PendingRegion() const { return m_pending; }
    // Paints Region of the surface into painter, as a paint event does.
    void Render(QPainter& painter, const QRegion& Region) const;

    void InvalidateRect(const ShapeRect& rect) override;
    void InvalidateRegion(const QRegion& region) override;
    void ValidateRect(const ShapeRect& rect) override;
    void ValidateRegion(const QRegion& region) override;
    void InvalidateAll() override;
    void RepaintNow() override;

    // The pointer's shape while no button is held, unless Space is panning.
    void SetHoverCursor(Qt::CursorShape Shape);

signals:
    void Pressed(QPointF Position, QPoint GlobalPosition);
    // A left press with Ctrl held: vertex editing, before the ordinary press.
    void ControlPressed(QPointF Position, QPoint GlobalPosition);
    void Moved(QPointF Position, QPoint GlobalPosition, Qt::MouseButtons Buttons);
    void Released(QPointF Position, QPoint GlobalPosition);
    void DoubleClicked();
    void KeyPressed(int Key);
    void PointerLeft();
    // Space held and the pointer dragged, or a page key: the view should move by Delta
    // screen pixels.
    void Panned(QPoint Delta);
    void Resized();
    // A press gave the surface the keyboard focus, before that press is heard of.
    void FocusedByPress();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    const MapDocument& m_document;
    QImage m_background;
    QRegion m_pending;
    ViewScale m_view;
    bool m_spaceHeld = false;
    bool m_panning = false;
    QPoint m_panFrom;

    void EndSpacePan();
    // How far a page key moves the view: Page Up and Down by most of the window, Home
    // and End to the ends; with Shift, sideways. Null for any other key.
    QPoint PageScroll(const QKeyEvent& event) const;
    // What was drawn, copied again on repaints; a cache, so const painting updates it.
    mutable MapLayer m_layer;
};
