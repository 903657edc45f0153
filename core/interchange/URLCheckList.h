#pragma once

#include <QString>
#include <QStringList>

class MapDocument;

// What the URL checker lists and does with it, without a screen: the shapes' URLs in
// shape order followed by the default area's, and edits written straight back to the map.
class URLCheckList
{
public:
    explicit URLCheckList(const MapDocument& Document);

    const QStringList& Entries() const { return m_entries; }
    bool IsDefaultEntry(int Index) const { return Index == m_entries.size() - 1; }

    // Writes a non-empty Answer to the shape's URL (or DefURL for the last entry) and
    // to the list; an empty answer changes nothing. True when something changed.
    bool Edit(int Index, const QString& Answer, MapDocument& Document);

    // The list's click events: the one raised when the list is filled is swallowed,
    // every later one checks the address. True when this click should check.
    bool TakeClick() { return ++m_clicks > 1; }
    void ResetClicks() { m_clicks = 0; }

private:
    QStringList m_entries;
    int m_clicks = 0;
};
