#pragma once

#include <QSortFilterProxyModel>

class LinkTableModel;

// The link table, optionally narrowed to the links a visitor could not follow.
class BrokenLinkFilter : public QSortFilterProxyModel
{
    Q_OBJECT
public:
    explicit BrokenLinkFilter(LinkTableModel& Links, QObject* parent = nullptr);

    void SetBrokenOnly(bool BrokenOnly);
    bool BrokenOnly() const { return m_brokenOnly; }

protected:
    bool filterAcceptsRow(int SourceRow, const QModelIndex& SourceParent) const override;

private:
    LinkTableModel& m_links;
    bool m_brokenOnly = false;
};
