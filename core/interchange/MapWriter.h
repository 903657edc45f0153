#pragma once

#include <QString>

class MapDocument;
class PatShape;

// One output format. MapWalk calls BeginMap, WriteShape for every shape in array
// order, WriteDefaultArea when the map has one, then EndMap.
class MapWriter
{
public:
    virtual ~MapWriter() = default;
    virtual void BeginMap(const MapDocument& Document) = 0;
    // Non-const: the classic form rescales the shape to zoom 1.0 and back.
    virtual void WriteShape(int Index, PatShape& Shape) = 0;
    virtual void WriteDefaultArea(const MapDocument& Document) = 0;
    virtual void EndMap(const MapDocument& Document) = 0;
};
