#include "core/interchange/MapCodeGenerator.h"

#include "core/interchange/ClassicMapWriter.h"
#include "core/interchange/MapWalk.h"

QString MapCodeGenerator::GenerateMapCode(MapDocument& Document, Form form)
{
    ClassicMapWriter writer(form);
    return MapWalk::Walk(Document, writer) ? writer.Text() : QString();
}
