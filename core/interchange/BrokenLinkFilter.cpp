#include "core/interchange/BrokenLinkFilter.h"

#include "core/interchange/LinkTableModel.h"

BrokenLinkFilter::BrokenLinkFilter(LinkTableModel& Links, QObject* parent)
    : QSortFilterProxyModel(parent), m_links(Links)
{
    setSourceModel(&Links);
}

void BrokenLinkFilter::SetBrokenOnly(bool BrokenOnly)
{
    if (BrokenOnly == m_brokenOnly)
        return;
    m_brokenOnly = BrokenOnly;
    invalidateFilter();
}

bool BrokenLinkFilter::filterAcceptsRow(int SourceRow, const QModelIndex& SourceParent) const
{
    return !m_brokenOnly || SourceParent.isValid() || m_links.Status(SourceRow).IsBroken();
}
