#pragma once

#include <QLabel>
#include <QMetaObject>
#include <QPointer>

class MapDocument;
class QMdiArea;
class ShapeCanvas;

// A status bar panel that says how to go on while a polygon is being drawn in the
// current map (the pointer is held on the picture until it is closed), and is hidden
// otherwise.
class DrawingHint : public QLabel
{
    Q_OBJECT
public:
    explicit DrawingHint(QMdiArea& Area, QWidget* parent = nullptr);

    // What the panel says for Document; empty when nothing is being drawn.
    static QString For(const MapDocument& Document);

private:
    QMdiArea& m_area;
    QPointer<ShapeCanvas> m_map;
    QMetaObject::Connection m_changed;

    void Follow();
    void Update();
};
