#include "core/interchange/URLCheckList.h"

#include "core/base/Numeric.h"
#include "core/document/MapDocument.h"

URLCheckList::URLCheckList(const MapDocument& Document)
{
    for (const PatShape& shape : Document.Shapes())
        m_entries.append(shape.URL);
    m_entries.append(Document.DefURL);
}

bool URLCheckList::Edit(int Index, const QString& Answer, MapDocument& Document)
{
    if (Answer.isEmpty() || Index < 0 || Index >= m_entries.size())
        return false;
    if (IsDefaultEntry(Index))
        Document.DefURL = Answer;
    else
        Document.SetURL(ToInt16(Index), Answer);
    m_entries[Index] = Answer;
    return true;
}
