#include "core/interchange/HtmlMapReader.h"

#include "core/interchange/HtmlNesting.h"
#include "core/interchange/ParsedHtml.h"

#include <gumbo.h>
#include <utility>

namespace {

QString Attribute(const GumboElement& element, const char* name, bool* present = nullptr)
{
    const GumboAttribute* attribute = gumbo_get_attribute(&element.attributes, name);
    if (present != nullptr)
        *present = attribute != nullptr;
    return attribute == nullptr ? QString() : QString::fromUtf8(attribute->value);
}

HtmlMapReader::Area ReadArea(const GumboElement& e)
{
    HtmlMapReader::Area area;
    area.shape = Attribute(e, "shape");
    area.coords = Attribute(e, "coords");
    area.href = Attribute(e, "href", &area.hasHref);
    Attribute(e, "nohref", &area.noHref);
    area.alt = Attribute(e, "alt");
    area.target = Attribute(e, "target");
    area.title = Attribute(e, "title");
    area.onfocus = Attribute(e, "onfocus");
    area.onclick = Attribute(e, "onclick");
    return area;
}

} // namespace

QString HtmlMapReader::TooDeepMessage()
{
    return QStringLiteral("The code nests its elements more than %1 levels deep, deeper than "
                          "browsers read it; it cannot be converted.")
        .arg(HtmlNesting::Limit);
}

std::vector<HtmlMapReader::Map> HtmlMapReader::ReadMaps(const QString& Text, QString& Refusal)
{
    std::vector<Map> maps;
    const QByteArray utf8 = Text.toUtf8();
    Refusal.clear();
    if (HtmlNesting::EstimatedDepth(utf8) > HtmlNesting::Limit) {
        Refusal = TooDeepMessage();
        return maps;
    }
    const ParsedHtml document(utf8);
    if (document.Output() == nullptr || document.Output()->document == nullptr)
        return maps;

    // Depth first in document order, without recursion: pasted code may nest deeply. Each
    // entry carries the map its node belongs to (-1 outside any map).
    std::vector<std::pair<const GumboNode*, int>> pending{{document.Output()->document, -1}};
    while (!pending.empty()) {
        auto [node, map] = pending.back();
        pending.pop_back();
        const GumboVector* children = nullptr;
        if (node->type == GUMBO_NODE_ELEMENT || node->type == GUMBO_NODE_TEMPLATE) {
            const GumboElement& element = node->v.element;
            if (element.tag == GUMBO_TAG_MAP) {
                bool named = false;
                QString name = Attribute(element, "name", &named);
                if (!named)
                    name = Attribute(element, "id");
                maps.push_back({name, {}});
                map = static_cast<int>(maps.size()) - 1;
            } else if (element.tag == GUMBO_TAG_AREA && map >= 0) {
                maps[static_cast<std::size_t>(map)].areas.push_back(ReadArea(element));
            }
            children = &element.children;
        } else if (node->type == GUMBO_NODE_DOCUMENT) {
            children = &node->v.document.children;
        }
        if (children == nullptr)
            continue;
        for (unsigned int i = children->length; i-- > 0;)
            pending.emplace_back(static_cast<const GumboNode*>(children->data[i]), map);
    }
    return maps;
}
