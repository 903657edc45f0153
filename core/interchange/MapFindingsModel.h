#pragma once

#include "core/interchange/MapFinding.h"

#include <QAbstractTableModel>
#include <vector>

// The map check's findings as a table (place, kind, text) for the check window.
class MapFindingsModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    void SetFindings(std::vector<MapFinding> Findings);
    const std::vector<MapFinding>& Findings() const { return m_findings; }
    // The shape a row names (array index), or -1 for the map or the default area.
    int ShapeAt(int Row) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    std::vector<MapFinding> m_findings;
};
