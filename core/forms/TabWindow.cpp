#include "core/forms/TabWindow.h"

#include <algorithm>

namespace {

// How close to the end of the run a selection moves the run along.
constexpr int FollowMargin = 5;

} // namespace

TabWindow::TabWindow(int Count) : m_count(std::max(Count, 2))
{
    Centre(1);
}

bool TabWindow::Centre(int Tab)
{
    std::vector<int> tabs;
    const int firstShape = 2;
    const int lastShape = m_count - 1;
    int from = firstShape;
    int to = lastShape;
    if (lastShape - firstShape + 1 > FullMapLimit) {
        const int middle = std::clamp(Tab, firstShape, lastShape);
        from = std::max(firstShape, middle - Reach);
        to = std::min(lastShape, from + 2 * Reach);
        from = std::max(firstShape, to - 2 * Reach);
    }
    tabs.reserve(static_cast<std::size_t>(std::max(0, to - from + 1)) + 2);
    tabs.push_back(1);
    for (int tab = from; tab <= to; ++tab)
        tabs.push_back(tab);
    tabs.push_back(m_count);
    if (tabs == m_tabs)
        return false;
    m_tabs = std::move(tabs);
    return true;
}

bool TabWindow::Follow(int Tab)
{
    if (m_tabs.size() < 3 || Tab <= 1 || Tab >= m_count)
        return false;
    const int first = m_tabs[1];
    const int last = m_tabs[m_tabs.size() - 2];
    const bool nearStart = first > 2 && Tab - first < FollowMargin;
    const bool nearEnd = last < m_count - 1 && last - Tab < FollowMargin;
    if (!nearStart && !nearEnd && StripIndexOf(Tab) >= 0)
        return false;
    return Centre(Tab);
}

int TabWindow::StripIndexOf(int Tab) const
{
    const auto found = std::find(m_tabs.begin(), m_tabs.end(), Tab);
    return found == m_tabs.end() ? -1 : static_cast<int>(found - m_tabs.begin());
}

int TabWindow::TabAt(int StripIndex) const
{
    if (StripIndex < 0 || StripIndex >= static_cast<int>(m_tabs.size()))
        return 0;
    return m_tabs[static_cast<std::size_t>(StripIndex)];
}
