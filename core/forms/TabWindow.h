#pragma once

#include <vector>

// Which tabs of the properties dialog its tab strip holds. A map of up to FullMapLimit
// shapes gets every tab. A bigger one gets the map tab, a run of shape tabs around the
// current one and the default area tab: a tab strip lays out every tab it holds, and
// thousands of them take minutes. Tabs are numbered as the dialog numbers them: 1 the
// map, 2..Count-1 the shapes, Count the default area.
class TabWindow
{
public:
    static constexpr int FullMapLimit = 100;
    // Shape tabs either side of the current one on a big map.
    static constexpr int Reach = 30;

    explicit TabWindow(int Count);

    // Puts Tab in the middle of the run; true when the held tabs changed.
    bool Centre(int Tab);
    // Centres again when Tab is close to an end of the run that is not the real end.
    bool Follow(int Tab);
    // The held tabs, in strip order.
    const std::vector<int>& Tabs() const { return m_tabs; }
    // Position of Tab in the strip, -1 when it is not held.
    int StripIndexOf(int Tab) const;
    int TabAt(int StripIndex) const;

private:
    int m_count;
    std::vector<int> m_tabs;
};
