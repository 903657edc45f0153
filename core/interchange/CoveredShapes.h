#pragma once

#include <vector>

struct MapArea;

// Which areas no visitor can click because earlier areas (which a browser prefers)
// cover every part of them that lies on the picture.
class CoveredShapes
{
public:
    // One flag per area, in order. Areas flagged in Skip (degenerate or off the
    // picture, reported otherwise) are never flagged.
    static std::vector<bool> Find(const std::vector<MapArea>& Areas, int Width, int Height,
                                  const std::vector<bool>& Skip);
};
