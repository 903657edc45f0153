#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// How a stacking order changed, kept small: the differing stretch between the common
// head and tail of the two orders, or, when one shape only moved up or down the stack
// (bringing a shape to the top), just that stretch's bounds.
class OrderChange
{
public:
    OrderChange() = default;
    OrderChange(const std::vector<std::int16_t>& Before, const std::vector<std::int16_t>& After);

    bool IsEmpty() const { return m_kind == Kind::None; }
    // Turns Order (Before or After) into the other.
    void Apply(std::vector<std::int16_t>& Order, bool ToAfter) const;
    std::size_t Cost() const;

private:
    enum class Kind { None, MovedUp, MovedDown, Replaced };
    Kind m_kind = Kind::None;
    std::size_t m_first = 0;
    // MovedUp/MovedDown: length of the rotated stretch.
    std::size_t m_length = 0;
    std::vector<std::int16_t> m_before;
    std::vector<std::int16_t> m_after;
};
