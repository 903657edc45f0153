#pragma once

#include <QByteArray>
#include <cstddef>
#include <memory>
#include <vector>

struct GumboInternalOutput;

// An HTML document parsed by gumbo, which follows the HTML5 parsing algorithm as
// browsers do. The parser's memory comes from an arena released in one go: gumbo's own
// clean-up recurses through the tree and would overflow the stack on deeply nested input.
class ParsedHtml
{
public:
    explicit ParsedHtml(const QByteArray& Utf8);
    ~ParsedHtml();
    ParsedHtml(const ParsedHtml&) = delete;
    ParsedHtml& operator=(const ParsedHtml&) = delete;

    // Null only when gumbo could not allocate.
    const GumboInternalOutput* Output() const { return m_output; }

private:
    static void* Allocate(void* arena, std::size_t size);
    static void Release(void* arena, void* pointer);

    struct Arena
    {
        std::vector<std::unique_ptr<std::max_align_t[]>> blocks;
        char* next = nullptr;
        std::size_t left = 0;
    };

    QByteArray m_text; // gumbo points into it
    Arena m_arena;
    GumboInternalOutput* m_output = nullptr;
};
