#pragma once

#include "core/document/MapProperties.h"
#include "core/document/OrderChange.h"
#include "core/shape/PatShape.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

class MapDocument;

// The before and after of one user action on a map, holding only what the action
// touched: the shapes it changed (by index), shapes added or removed at the end of the
// list, the change of stacking order and, when asked for, the map's own properties.
//
// Recording: construct it on the document before the change (the top shape is always
// recorded, as restacking recolours it), Touch every existing shape the change may
// modify, change the document, then Finish. Touching more than is changed costs
// nothing after Finish: unchanged shapes are dropped.
class MapChange
{
public:
    MapChange(const MapDocument& Before, bool WithProperties);

    // Records shape Index as it is now; later touches of the same shape, and indices
    // outside the list, are ignored.
    void Touch(const MapDocument& Document, std::int16_t Index);
    void TouchAll(const MapDocument& Document);
    void Finish(const MapDocument& After);

    // Nothing a file would keep has changed (shape colours follow the stacking).
    bool IsEmpty() const;
    // Puts the document in the recorded after (or before) state, rescaling the shapes
    // to the document's present zoom and repainting what moved.
    void Apply(MapDocument& Document, bool ToAfter) const;
    // The picture on screen must be rebuilt (image size or grid changed).
    bool ChangesView() const;
    bool AddsShapes() const { return m_countAfter > m_countBefore; }
    // Only the stacking order (and so the colours) changed.
    bool OnlyRestacks() const;
    std::size_t CountBefore() const { return m_countBefore; }
    // The one shape this change modified, when it modified exactly one existing shape
    // and nothing else; -1 otherwise.
    std::int16_t SoleShape() const;
    // Takes Later's after state as its own (Later must start where this one ends).
    void Absorb(const MapChange& Later);
    std::size_t Cost() const;

    // Whether a and b hold the same shape as a file sees it (colour aside).
    static bool SameShape(const PatShape& a, const PatShape& b);

private:
    struct ShapeState
    {
        std::int16_t Index;
        PatShape Before;
        PatShape After;
    };

    std::vector<ShapeState> m_shapes;
    std::vector<PatShape> m_added;
    std::vector<PatShape> m_removed;
    std::size_t m_countBefore = 0;
    std::size_t m_countAfter = 0;
    std::vector<std::int16_t> m_orderBefore;
    OrderChange m_order;
    std::optional<MapProperties> m_propertiesBefore;
    std::optional<MapProperties> m_propertiesAfter;
    std::vector<bool> m_touched;
    bool m_finished = false;

    void Repaint(const MapDocument& Document) const;
};
