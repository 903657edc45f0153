#pragma once

#include "core/interchange/MapFinding.h"

#include <vector>

class MapDocument;

// Looks over a map for what makes it fail its visitors: missing alt texts, links that
// go nowhere, shapes off the picture, shapes without area or that cross themselves,
// shapes earlier ones hide completely, a bad map name, and text the classic code cannot
// carry. Findings come shape by shape, map-level ones first.
class MapCheck
{
public:
    // FindCovered false leaves out the one costly search (shapes hidden by earlier ones).
    static std::vector<MapFinding> Check(const MapDocument& Document, bool FindCovered = true);
};
