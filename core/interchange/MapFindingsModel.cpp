#include "core/interchange/MapFindingsModel.h"

#include <QColor>

void MapFindingsModel::SetFindings(std::vector<MapFinding> Findings)
{
    beginResetModel();
    m_findings = std::move(Findings);
    endResetModel();
}

int MapFindingsModel::ShapeAt(int Row) const
{
    if (Row < 0 || Row >= rowCount())
        return -1;
    const int index = m_findings[static_cast<std::size_t>(Row)].Index;
    return index >= 0 ? index : -1;
}

int MapFindingsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_findings.size());
}

int MapFindingsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 3;
}

QVariant MapFindingsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const MapFinding& finding = m_findings[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole) {
        switch (index.column()) {
        case 0:
            return finding.Place();
        case 1:
            return finding.SeverityName();
        default:
            return finding.Text;
        }
    }
    if (role == Qt::ForegroundRole && index.column() == 1 &&
        finding.severity == MapFinding::Severity::Error)
        return QColor(Qt::darkRed);
    if (role == Qt::ToolTipRole)
        return finding.Line();
    return {};
}

QVariant MapFindingsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case 0:
        return QStringLiteral("Where");
    case 1:
        return QStringLiteral("Kind");
    default:
        return QStringLiteral("Finding");
    }
}
