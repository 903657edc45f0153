#pragma once

class MapDocument;
class MapWriter;

// The one walk over a map that every output format shares: shapes in array order (a
// browser gives overlapping areas to the first), then the default area.
class MapWalk
{
public:
    // False, writing nothing, when the map has no shapes.
    static bool Walk(MapDocument& Document, MapWriter& Writer);
};
