#pragma once

#include <QDockWidget>
#include <QMetaObject>
#include <QPointer>

class GeometryEditor;
class ModalUi;
class QItemSelection;
class QLineEdit;
class QTableView;
class ShapeCanvas;
class ShapeListModel;

// The "Shapes" dock: every shape of the active map in a list that can be filtered by
// URL, alt text or target, with the top shape's geometry below it. Choosing a row
// selects that shape in the map as a click would; a shape selected in the map selects
// its row; Del removes the chosen row's shape. F6 goes between the map and the list.
class ShapesPanel : public QDockWidget
{
    Q_OBJECT
public:
    explicit ShapesPanel(ModalUi& Ui, QWidget* parent = nullptr);

    // The map shown; null for none. The panel lets go when the map window goes.
    void SetMap(ShapeCanvas* Map);
    ShapeCanvas* Map() const { return m_map; }
    ShapeListModel& Model() const { return *m_model; }
    QTableView& List() const { return *m_list; }

private:
    QPointer<ShapeCanvas> m_map;
    QMetaObject::Connection m_changed;
    QMetaObject::Connection m_destroyed;
    ShapeListModel* m_model;
    QLineEdit* m_filterText;
    QTableView* m_list;
    GeometryEditor* m_geometry;
    bool m_syncing = false;

    void OnMapChanged(bool Everything);
    void OnRowChosen(const QItemSelection& Selected);
    // Del on a chosen row removes that shape.
    void DeleteChosen();
    // F6: from the map to the list, and from anywhere in the panel back to the map.
    void SwitchPane();
    // Selects the row of the map's top shape, if it passes the filter.
    void SyncSelection();
};
