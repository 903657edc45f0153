#pragma once

#include <QRect>
#include <QRegion>
#include <cstdint>
#include <memory>
#include <vector>

class PatShape;

// Where each shape of a map paints, kept in an R-tree so that a repaint or a pick visits
// only the shapes near it, and which parts of the map changed look since last asked.
//
// The document reports how its list changes (Appended, Erased, Replaced) and which shapes
// may have changed (Touched); the index re-reads those lazily, at the next query, and
// compares what they would paint with what it knew. A copy starts over: it re-reads every
// shape and counts the whole map as changed.
class ShapeIndex
{
public:
    ShapeIndex();
    ~ShapeIndex();
    ShapeIndex(const ShapeIndex& other);
    ShapeIndex& operator=(const ShapeIndex& other);
    ShapeIndex(ShapeIndex&& other) noexcept;
    ShapeIndex& operator=(ShapeIndex&& other) noexcept;

    void Appended();
    // A shape put in before Index; the later ones move up one.
    void Inserted(std::size_t Index);
    void Erased(std::size_t Index);
    void Replaced(std::size_t Count);
    void Touched(std::size_t Index);

    // Indices, in ascending order, of the shapes whose paint bounds meet Area.
    std::vector<std::int16_t> Meeting(const QRect& Area, const std::vector<PatShape>& Shapes,
                                      std::int16_t Top);
    // Everything that may look different since the last call; All when that is the
    // whole map (then the region is empty).
    QRegion TakeChangedArea(const std::vector<PatShape>& Shapes, std::int16_t Top, bool& All);

private:
    struct Entry;
    struct Tree;

    std::vector<std::uint32_t> m_ids;
    std::vector<Entry> m_entries; // by id
    std::vector<std::uint32_t> m_touched;
    std::unique_ptr<Tree> m_tree;
    std::uint32_t m_top = UINT32_MAX;
    bool m_rebuild = true;
    QRegion m_changed;
    int m_changedRects = 0;
    bool m_changedAll = true;

    void StartOver();
    void Sync(const std::vector<PatShape>& Shapes, std::int16_t Top);
    void Refresh(std::uint32_t Id, const PatShape& Shape, bool IsTop);
    void AddChanged(const QRect& Area);
};
