#pragma once

#include <QDialog>
#include <QPointer>

class MapFindingsModel;
class QLabel;
class QModelIndex;
class QTreeView;
class ShapeCanvas;

// "Check Map": the findings of the map check for one map, beside the editor (not modal),
// so that the user can fix them one by one. Double-click or Enter on a finding brings
// its shape to the top of its map.
class MapCheckWindow : public QDialog
{
    Q_OBJECT
public:
    explicit MapCheckWindow(QWidget* parent = nullptr);

    // Opens (or reuses) the frame's check window on Map; does nothing without a map.
    static MapCheckWindow* ShowFor(QWidget& Frame, ShapeCanvas* Map);

    void Check(ShapeCanvas& Map);
    // Checks the same map again, as it is now.
    void CheckAgain();
    // Brings the shape of a finding's row up in its map; false when the row names no
    // shape or the map was closed.
    bool ShowShapeOf(int Row);
    const MapFindingsModel& Findings() const { return *m_model; }

private:
    QPointer<ShapeCanvas> m_map;
    MapFindingsModel* m_model;
    QTreeView* m_list;
    QLabel* m_summary;
};
