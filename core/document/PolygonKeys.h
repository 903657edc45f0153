#pragma once

class MapDocument;

// The keys that act on a polygon while it is being drawn: Escape abandons it,
// Backspace takes back its last vertex (the only one abandons it), Enter closes it
// once it has three vertices. Without a polygon in progress nothing happens.
class PolygonKeys
{
public:
    // True when Key was one of the three and the polygon was in progress.
    static bool KeyDown(MapDocument& Document, int Key);

private:
    static void Abandon(MapDocument& Document);
    static void RemoveLastVertex(MapDocument& Document);
    static void Close(MapDocument& Document);
};
