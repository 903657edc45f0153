#include "core/interchange/MapWalk.h"

#include "core/document/MapDocument.h"
#include "core/interchange/MapArea.h"
#include "core/interchange/MapWriter.h"

bool MapWalk::Walk(MapDocument& Document, MapWriter& Writer)
{
    if (Document.ItemCount() < 0)
        return false;
    Writer.BeginMap(Document);
    // An int loop: a 16-bit index would wrap before passing the last of 32,768 shapes.
    for (int i = 0; i <= Document.ItemCount(); ++i)
        Writer.WriteShape(i, Document.Shape(static_cast<std::int16_t>(i)));
    if (MapArea::HasDefaultArea(Document))
        Writer.WriteDefaultArea(Document);
    Writer.EndMap(Document);
    return true;
}
