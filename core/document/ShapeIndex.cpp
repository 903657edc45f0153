#include "core/document/ShapeIndex.h"

#include "core/shape/PatShape.h"

#include <algorithm>
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/iterator/function_output_iterator.hpp>
#include <climits>
#include <utility>

namespace bg = boost::geometry;
namespace bgi = boost::geometry::index;

namespace {

using Point = bg::model::point<int, 2, bg::cs::cartesian>;
using Box = bg::model::box<Point>;
using Value = std::pair<Box, std::uint32_t>;

constexpr std::uint32_t NoShape = UINT32_MAX;
// Past this many changed areas, repainting everything is cheaper than joining them.
constexpr int ChangedAreaLimit = 256;
constexpr std::size_t RebuildLimit = 1024;

Box ToBox(const QRect& r)
{
    return Box(Point(r.left(), r.top()), Point(r.right(), r.bottom()));
}

// Everything that decides a shape's pixels besides its place: a cheap fingerprint.
std::uint64_t LookOf(const PatShape& shape, bool IsTop)
{
    std::uint64_t h = 1469598103934665603ULL;
    const auto mix = [&h](std::uint64_t v) {
        h ^= v;
        h *= 1099511628211ULL;
    };
    mix(static_cast<std::uint64_t>(shape.GetShapeType()));
    mix(shape.ShapeBuildingFinished ? 1 : 2);
    mix(static_cast<std::uint32_t>(shape.ShapeColor));
    mix(IsTop ? 3 : 4);
    for (const ShapePoint& p : shape.Points())
        mix((static_cast<std::uint64_t>(static_cast<std::uint32_t>(p.x)) << 32) |
            static_cast<std::uint32_t>(p.y));
    return h;
}

QRect BoundsOf(const PatShape& shape)
{
    return shape.Points().empty() ? QRect() : shape.PaintBounds().toQRect();
}

} // namespace

struct ShapeIndex::Entry
{
    QRect bounds;
    std::uint64_t look = 0;
    std::int32_t index = 0;
    bool live = true;
    bool queued = false;
    bool inTree = false;
};

struct ShapeIndex::Tree
{
    bgi::rtree<Value, bgi::quadratic<16>> rtree;
};

ShapeIndex::ShapeIndex() : m_tree(std::make_unique<Tree>()) {}

ShapeIndex::~ShapeIndex() = default;

ShapeIndex::ShapeIndex(const ShapeIndex&) : m_tree(std::make_unique<Tree>()) {}

ShapeIndex& ShapeIndex::operator=(const ShapeIndex& other)
{
    if (this != &other)
        StartOver();
    return *this;
}

ShapeIndex::ShapeIndex(ShapeIndex&& other) noexcept : m_tree(std::make_unique<Tree>())
{
    *this = std::move(other);
}

ShapeIndex& ShapeIndex::operator=(ShapeIndex&& other) noexcept
{
    if (this == &other)
        return *this;
    m_ids = std::move(other.m_ids);
    m_entries = std::move(other.m_entries);
    m_touched = std::move(other.m_touched);
    std::swap(m_tree, other.m_tree);
    m_top = other.m_top;
    m_rebuild = other.m_rebuild;
    // Whoever showed the old list has none of the new one on screen.
    m_changed = QRegion();
    m_changedRects = 0;
    m_changedAll = true;
    other.StartOver();
    return *this;
}

void ShapeIndex::StartOver()
{
    m_ids.clear();
    m_entries.clear();
    m_touched.clear();
    m_tree->rtree.clear();
    m_top = NoShape;
    m_rebuild = true;
    m_changed = QRegion();
    m_changedRects = 0;
    m_changedAll = true;
}

void ShapeIndex::Appended()
{
    const auto id = static_cast<std::uint32_t>(m_entries.size());
    Entry entry;
    entry.index = static_cast<std::int32_t>(m_ids.size());
    entry.queued = true;
    m_entries.push_back(entry);
    m_ids.push_back(id);
    m_touched.push_back(id);
}

void ShapeIndex::Inserted(std::size_t Index)
{
    if (Index >= m_ids.size()) {
        Appended();
        return;
    }
    const auto id = static_cast<std::uint32_t>(m_entries.size());
    Entry entry;
    entry.queued = true;
    m_entries.push_back(entry);
    m_ids.insert(m_ids.begin() + static_cast<std::ptrdiff_t>(Index), id);
    for (std::size_t i = Index; i < m_ids.size(); ++i)
        m_entries[m_ids[i]].index = static_cast<std::int32_t>(i);
    m_touched.push_back(id);
}

void ShapeIndex::Erased(std::size_t Index)
{
    if (Index >= m_ids.size())
        return;
    Entry& gone = m_entries[m_ids[Index]];
    if (gone.inTree) {
        m_tree->rtree.remove(Value(ToBox(gone.bounds), m_ids[Index]));
        AddChanged(gone.bounds);
    }
    gone.live = false;
    gone.inTree = false;
    m_ids.erase(m_ids.begin() + static_cast<std::ptrdiff_t>(Index));
    for (std::size_t i = Index; i < m_ids.size(); ++i)
        m_entries[m_ids[i]].index = static_cast<std::int32_t>(i);
}

void ShapeIndex::Replaced(std::size_t Count)
{
    for (const Entry& entry : m_entries) {
        if (entry.inTree)
            AddChanged(entry.bounds);
    }
    m_tree->rtree.clear();
    m_entries.assign(Count, Entry{});
    m_ids.resize(Count);
    for (std::size_t i = 0; i < Count; ++i) {
        m_ids[i] = static_cast<std::uint32_t>(i);
        m_entries[i].index = static_cast<std::int32_t>(i);
    }
    m_touched.clear();
    m_top = NoShape;
    m_rebuild = true;
}

void ShapeIndex::Touched(std::size_t Index)
{
    if (m_rebuild || Index >= m_ids.size())
        return;
    Entry& entry = m_entries[m_ids[Index]];
    if (entry.queued)
        return;
    entry.queued = true;
    m_touched.push_back(m_ids[Index]);
}

void ShapeIndex::AddChanged(const QRect& Area)
{
    if (m_changedAll || Area.isEmpty())
        return;
    if (++m_changedRects > ChangedAreaLimit) {
        m_changedAll = true;
        m_changed = QRegion();
        return;
    }
    m_changed += Area;
}

void ShapeIndex::Refresh(std::uint32_t Id, const PatShape& Shape, bool IsTop)
{
    Entry& entry = m_entries[Id];
    const QRect bounds = BoundsOf(Shape);
    const std::uint64_t look = LookOf(Shape, IsTop);
    if (entry.inTree && bounds == entry.bounds && look == entry.look)
        return;
    if (entry.inTree) {
        m_tree->rtree.remove(Value(ToBox(entry.bounds), Id));
        AddChanged(entry.bounds);
    }
    entry.inTree = !bounds.isEmpty();
    if (entry.inTree) {
        m_tree->rtree.insert(Value(ToBox(bounds), Id));
        AddChanged(bounds);
    }
    entry.bounds = bounds;
    entry.look = look;
}

void ShapeIndex::Sync(const std::vector<PatShape>& Shapes, std::int16_t Top)
{
    // A list changed behind our back is read again from scratch.
    if (m_ids.size() != Shapes.size())
        Replaced(Shapes.size());
    const std::uint32_t top =
        Top >= 0 && static_cast<std::size_t>(Top) < m_ids.size() ? m_ids[Top] : NoShape;
    // Most of the map changed (a zoom): packing the tree anew beats moving every entry.
    if (m_touched.size() > RebuildLimit && m_touched.size() > m_ids.size() / 4) {
        for (const std::uint32_t id : m_touched)
            m_entries[id].queued = false;
        m_touched.clear();
        m_changedAll = true;
        m_rebuild = true;
    }
    if (m_rebuild) {
        std::vector<Value> values;
        values.reserve(Shapes.size());
        for (std::size_t i = 0; i < Shapes.size(); ++i) {
            Entry& entry = m_entries[m_ids[i]];
            entry.bounds = BoundsOf(Shapes[i]);
            entry.look = LookOf(Shapes[i], m_ids[i] == top);
            entry.inTree = !entry.bounds.isEmpty();
            entry.queued = false;
            if (entry.inTree) {
                AddChanged(entry.bounds);
                values.emplace_back(ToBox(entry.bounds), m_ids[i]);
            }
        }
        // Packed in one go: faster to build and to search than one insert at a time.
        m_tree->rtree = decltype(m_tree->rtree)(values.begin(), values.end());
        m_touched.clear();
        m_top = top;
        m_rebuild = false;
        return;
    }
    if (top != m_top) {
        for (const std::uint32_t id : {m_top, top}) {
            if (id < m_entries.size() && m_entries[id].live && !m_entries[id].queued) {
                m_entries[id].queued = true;
                m_touched.push_back(id);
            }
        }
        m_top = top;
    }
    for (const std::uint32_t id : m_touched) {
        Entry& entry = m_entries[id];
        entry.queued = false;
        if (entry.live)
            Refresh(id, Shapes[static_cast<std::size_t>(entry.index)], id == top);
    }
    m_touched.clear();
}

std::vector<std::int16_t> ShapeIndex::Meeting(const QRect& Area,
                                              const std::vector<PatShape>& Shapes, std::int16_t Top)
{
    Sync(Shapes, Top);
    std::vector<std::int16_t> found;
    if (Area.isEmpty())
        return found;
    m_tree->rtree.query(bgi::intersects(ToBox(Area)),
                        boost::make_function_output_iterator([&](const Value& v) {
                            found.push_back(static_cast<std::int16_t>(m_entries[v.second].index));
                        }));
    std::sort(found.begin(), found.end());
    return found;
}

QRegion ShapeIndex::TakeChangedArea(const std::vector<PatShape>& Shapes, std::int16_t Top,
                                    bool& All)
{
    Sync(Shapes, Top);
    All = m_changedAll;
    QRegion changed = std::move(m_changed);
    m_changed = QRegion();
    m_changedRects = 0;
    m_changedAll = false;
    return changed;
}
