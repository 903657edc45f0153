#include "core/document/OrderChange.h"

#include <algorithm>

OrderChange::OrderChange(const std::vector<std::int16_t>& Before,
                         const std::vector<std::int16_t>& After)
{
    std::size_t head = 0;
    const std::size_t shorter = std::min(Before.size(), After.size());
    while (head < shorter && Before[head] == After[head])
        ++head;
    if (head == Before.size() && head == After.size())
        return;
    std::size_t tail = 0;
    while (tail < shorter - head &&
           Before[Before.size() - 1 - tail] == After[After.size() - 1 - tail])
        ++tail;
    const auto b0 = Before.begin() + static_cast<std::ptrdiff_t>(head);
    const auto b1 = Before.end() - static_cast<std::ptrdiff_t>(tail);
    const auto a0 = After.begin() + static_cast<std::ptrdiff_t>(head);
    const auto a1 = After.end() - static_cast<std::ptrdiff_t>(tail);
    m_first = head;
    const std::size_t length = static_cast<std::size_t>(b1 - b0);
    if (length >= 2 && length == static_cast<std::size_t>(a1 - a0)) {
        // One entry moved from the end of the stretch to its start (up the stack), or
        // the other way.
        if (*a0 == *(b1 - 1) && std::equal(a0 + 1, a1, b0)) {
            m_kind = Kind::MovedUp;
            m_length = length;
            return;
        }
        if (*(a1 - 1) == *b0 && std::equal(a0, a1 - 1, b0 + 1)) {
            m_kind = Kind::MovedDown;
            m_length = length;
            return;
        }
    }
    m_kind = Kind::Replaced;
    m_before.assign(b0, b1);
    m_after.assign(a0, a1);
}

void OrderChange::Apply(std::vector<std::int16_t>& Order, bool ToAfter) const
{
    const auto first = Order.begin() + static_cast<std::ptrdiff_t>(m_first);
    switch (m_kind) {
    case Kind::None:
        return;
    case Kind::MovedUp:
    case Kind::MovedDown: {
        const auto last = first + static_cast<std::ptrdiff_t>(m_length);
        // Up: the last entry of the stretch comes first; undoing it is the reverse.
        if ((m_kind == Kind::MovedUp) == ToAfter)
            std::rotate(first, last - 1, last);
        else
            std::rotate(first, first + 1, last);
        return;
    }
    case Kind::Replaced: {
        const std::vector<std::int16_t>& from = ToAfter ? m_before : m_after;
        const std::vector<std::int16_t>& to = ToAfter ? m_after : m_before;
        const auto end = first + static_cast<std::ptrdiff_t>(from.size());
        const auto common = static_cast<std::ptrdiff_t>(std::min(from.size(), to.size()));
        std::copy(to.begin(), to.begin() + common, first);
        if (to.size() > from.size())
            Order.insert(end, to.begin() + common, to.end());
        else
            Order.erase(first + common, end);
        return;
    }
    }
}

std::size_t OrderChange::Cost() const
{
    return sizeof(OrderChange) + (m_before.capacity() + m_after.capacity()) * sizeof(std::int16_t);
}
