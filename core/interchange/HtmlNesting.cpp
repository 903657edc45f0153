#include "core/interchange/HtmlNesting.h"

#include <QByteArrayView>
#include <algorithm>
#include <cstring>

namespace {

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Elements without content, elements a sibling closes, and elements whose text is no
// markup: none of them adds a level.
bool AddsNoLevel(QByteArrayView name)
{
    static const char* const names[] = {
        "area",  "base",   "br",    "col", "embed", "hr", "img",   "input", "link",   "meta",
        "param", "source", "track", "wbr", "p",     "li", "dt",    "dd",    "option", "optgroup",
        "tr",    "td",     "th",    "rb",  "rt",    "rp", "frame", "keygen"};
    return std::any_of(std::begin(names), std::end(names), [&](const char* n) {
        return name.compare(QByteArrayView(n), Qt::CaseInsensitive) == 0;
    });
}

bool IsRawText(QByteArrayView name)
{
    static const char* const names[] = {"script", "style",   "textarea", "title",    "xmp",
                                        "iframe", "noembed", "noframes", "plaintext"};
    return std::any_of(std::begin(names), std::end(names), [&](const char* n) {
        return name.compare(QByteArrayView(n), Qt::CaseInsensitive) == 0;
    });
}

} // namespace

int HtmlNesting::EstimatedDepth(const QByteArray& Utf8)
{
    const char* const text = Utf8.constData();
    const qsizetype size = Utf8.size();
    int depth = 0;
    int deepest = 0;
    qsizetype i = 0;
    const auto find = [&](const char* what, qsizetype from) {
        const qsizetype at = Utf8.indexOf(what, from);
        return at < 0 ? size : at;
    };
    while (i < size) {
        const char* open = static_cast<const char*>(std::memchr(text + i, '<', size - i));
        if (open == nullptr)
            break;
        i = open - text + 1;
        if (i >= size)
            break;
        if (text[i] == '!' || text[i] == '?') {
            const bool comment = Utf8.mid(i, 3) == "!--";
            i = comment ? find("-->", i + 3) + 3 : find(">", i) + 1;
            continue;
        }
        const bool closing = text[i] == '/';
        const qsizetype nameStart = closing ? i + 1 : i;
        if (nameStart >= size || !IsLetter(text[nameStart]))
            continue;
        qsizetype nameEnd = nameStart;
        while (nameEnd < size &&
               (IsLetter(text[nameEnd]) || (text[nameEnd] >= '0' && text[nameEnd] <= '9') ||
                text[nameEnd] == '-'))
            ++nameEnd;
        const QByteArrayView name(text + nameStart, nameEnd - nameStart);
        // To the tag's end, stepping over quoted attribute values.
        qsizetype at = nameEnd;
        char quote = 0;
        for (; at < size; ++at) {
            const char c = text[at];
            if (quote != 0) {
                if (c == quote)
                    quote = 0;
            } else if (c == '"' || c == '\'') {
                quote = c;
            } else if (c == '>') {
                break;
            }
        }
        const bool selfClosing = at > nameEnd && at < size && text[at - 1] == '/';
        i = at + 1;
        if (closing) {
            if (!AddsNoLevel(name))
                depth = std::max(0, depth - 1);
            continue;
        }
        if (IsRawText(name)) {
            // Its text runs to its end tag.
            const QByteArray end = "</" + name.toByteArray().toLower();
            qsizetype close = i;
            while (close < size) {
                close = Utf8.indexOf('<', close);
                if (close < 0) {
                    close = size;
                    break;
                }
                if (QByteArrayView(text + close, std::min<qsizetype>(end.size(), size - close))
                        .compare(end, Qt::CaseInsensitive) == 0)
                    break;
                ++close;
            }
            i = close;
            continue;
        }
        if (selfClosing || AddsNoLevel(name))
            continue;
        deepest = std::max(deepest, ++depth);
    }
    return deepest;
}
