#include "ui/frame/DrawingHint.h"

#include "core/document/MapDocument.h"
#include "ui/canvas/ShapeCanvas.h"

#include <QMdiArea>
#include <QMdiSubWindow>

DrawingHint::DrawingHint(QMdiArea& Area, QWidget* parent) : QLabel(parent), m_area(Area)
{
    setObjectName(QStringLiteral("StatusHint"));
    // A narrow window cuts the hint short rather than growing for it.
    setMinimumWidth(1);
    connect(&m_area, &QMdiArea::subWindowActivated, this, &DrawingHint::Follow);
    Update();
}

QString DrawingHint::For(const MapDocument& Document)
{
    const std::int16_t current = Document.CurrentShape;
    if (!Document.PolygonInProgress || current < 0 || current > Document.ItemCount())
        return QString();
    if (Document.Shape(current).Points().size() < 3)
        return QStringLiteral("Click to add corners; Backspace takes one back, Esc abandons "
                              "the polygon.");
    return QStringLiteral("Click the first corner or press Enter to close the polygon; "
                          "Backspace takes a corner back, Esc abandons it.");
}

void DrawingHint::Follow()
{
    // The current window, not the active one: a menu or a dialog may hold the focus.
    QMdiSubWindow* window = m_area.currentSubWindow();
    ShapeCanvas* map = window == nullptr ? nullptr : qobject_cast<ShapeCanvas*>(window->widget());
    if (map != m_map) {
        disconnect(m_changed);
        m_map = map;
        if (map != nullptr)
            m_changed = connect(map, &ShapeCanvas::MapChanged, this, &DrawingHint::Update);
    }
    Update();
}

void DrawingHint::Update()
{
    const QString hint = m_map ? For(m_map->Document()) : QString();
    setText(hint);
    setToolTip(hint);
    setVisible(!hint.isEmpty());
}
