#include "core/interchange/ParsedHtml.h"

#include <gumbo.h>

namespace {

constexpr std::size_t BlockSize = 1 << 20;
constexpr std::size_t Alignment = alignof(std::max_align_t);

std::size_t Aligned(std::size_t size)
{
    return (size + Alignment - 1) / Alignment * Alignment;
}

} // namespace

ParsedHtml::ParsedHtml(const QByteArray& Utf8) : m_text(Utf8)
{
    GumboOptions options = kGumboDefaultOptions;
    options.allocator = &ParsedHtml::Allocate;
    options.deallocator = &ParsedHtml::Release;
    options.userdata = &m_arena;
    options.max_errors = 0; // nobody reads them; they only cost memory
    m_output = gumbo_parse_with_options(&options, m_text.constData(),
                                        static_cast<std::size_t>(m_text.size()));
}

ParsedHtml::~ParsedHtml() = default; // the arena holds everything gumbo allocated

void* ParsedHtml::Allocate(void* userdata, std::size_t size)
{
    auto* arena = static_cast<Arena*>(userdata);
    size = Aligned(size == 0 ? 1 : size);
    if (size > BlockSize / 4) {
        // Big buffers (long texts) get a block of their own, so blocks are not wasted.
        arena->blocks.emplace_back(new std::max_align_t[size / Alignment]);
        return arena->blocks.back().get();
    }
    if (size > arena->left) {
        arena->blocks.emplace_back(new std::max_align_t[BlockSize / Alignment]);
        arena->next = reinterpret_cast<char*>(arena->blocks.back().get());
        arena->left = BlockSize;
    }
    void* at = arena->next;
    arena->next += size;
    arena->left -= size;
    return at;
}

void ParsedHtml::Release(void*, void*)
{
    // Freed with the arena.
}
