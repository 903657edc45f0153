#include "core/interchange/SvgMapWriter.h"

#include "core/document/MapDocument.h"
#include "core/interchange/HtmlText.h"
#include "core/interchange/MapArea.h"
#include "core/interchange/MapEffectsCss.h"
#include "core/interchange/PictureAddress.h"

#include <algorithm>
#include <cstdlib>

namespace {

const QLatin1String CRLF("\r\n");

QString Attr(const char* name, const QString& value)
{
    return QLatin1Char(' ') + QLatin1String(name) + QLatin1String("=\"") +
           HtmlText::Attribute(value) + QLatin1Char('"');
}

QString Number(std::int64_t value)
{
    return QString::number(value);
}

QString Geometry(const MapArea& a, std::int32_t Width, std::int32_t Height)
{
    const auto& c = a.coords;
    switch (a.kind) {
    case MapArea::Kind::Rect:
        // An area's corners may be given in any order; SVG needs a positive size.
        return QLatin1String("<rect x=\"") + Number(std::min(c[0], c[2])) +
               QLatin1String("\" y=\"") + Number(std::min(c[1], c[3])) +
               QLatin1String("\" width=\"") + Number(std::abs(std::int64_t(c[2]) - c[0])) +
               QLatin1String("\" height=\"") + Number(std::abs(std::int64_t(c[3]) - c[1])) +
               QLatin1String("\"/>");
    case MapArea::Kind::Circle:
        return QLatin1String("<circle cx=\"") + Number(c[0]) + QLatin1String("\" cy=\"") +
               Number(c[1]) + QLatin1String("\" r=\"") + Number(std::abs(c[2])) +
               QLatin1String("\"/>");
    case MapArea::Kind::Poly: {
        QString points;
        points.reserve(static_cast<qsizetype>(c.size()) * 5);
        for (std::size_t i = 0; i + 1 < c.size(); i += 2) {
            if (i > 0)
                points += QLatin1Char(' ');
            points += Number(c[i]) + QLatin1Char(',') + Number(c[i + 1]);
        }
        return QLatin1String("<polygon points=\"") + points + QLatin1String("\"/>");
    }
    case MapArea::Kind::Default:
        break;
    }
    return QLatin1String("<rect x=\"0\" y=\"0\" width=\"") + Number(Width) +
           QLatin1String("\" height=\"") + Number(Height) + QLatin1String("\"/>");
}

} // namespace

SvgMapWriter::SvgMapWriter(MapCodeGenerator::Form TheForm) : m_form(TheForm) {}

void SvgMapWriter::BeginMap(const MapDocument& d)
{
    m_links.clear();
    m_links.reserve(static_cast<std::size_t>(d.ItemCount() + 1));
    m_defaultLink.clear();
    m_text.clear();
}

QString SvgMapWriter::Link(const MapArea& a, const QString& geometry) const
{
    QString html;
    html.reserve(64 + a.URL.size() + 2 * a.Comment.size() + a.Target.size() + geometry.size());
    html += QLatin1String("<a");
    if (!a.URL.trimmed().isEmpty())
        HtmlText::AppendNamed(html, QLatin1String("href"), a.URL);
    if (!a.Target.isEmpty())
        HtmlText::AppendNamed(html, QLatin1String("target"), a.Target);
    if (!a.Comment.isEmpty())
        HtmlText::AppendNamed(html, QLatin1String("aria-label"), a.Comment);
    if (!a.Alert.isEmpty())
        HtmlText::AppendNamed(html, QLatin1String("onclick"),
                              QLatin1String("alert(") + HtmlText::JsString(a.Alert) +
                                  QLatin1Char(')'));
    html += QLatin1Char('>');
    // The tooltip: the alt text, else the status text that used to show on hover.
    const QString& title = a.Comment.isEmpty() ? a.Status : a.Comment;
    if (!title.isEmpty()) {
        html += QLatin1String("<title>");
        HtmlText::AppendAttribute(html, title);
        html += QLatin1String("</title>");
    }
    html += geometry;
    html += QLatin1String("</a>");
    return html;
}

void SvgMapWriter::WriteShape(int Index, PatShape& Shape)
{
    const MapArea area = MapArea::FromShape(Shape, Index);
    m_links.push_back(Link(area, Geometry(area, 0, 0)));
}

void SvgMapWriter::WriteDefaultArea(const MapDocument& d)
{
    const MapArea area = MapArea::DefaultOf(d);
    m_defaultLink = Link(area, Geometry(area, d.SWidth, d.SHeight));
}

void SvgMapWriter::EndMap(const MapDocument& d)
{
    const QString cls = HtmlText::ClassName(d.MapName);
    const QString scope = QLatin1Char('.') + cls;
    const QString source = m_form == MapCodeGenerator::Form::Viewing
                               ? d.ImageName
                               : PictureAddress::FileUrl(d.ImagePath, d.ImageName);
    const QString alt = d.DefComment.trimmed().isEmpty() ? d.MapName : d.DefComment;
    const QString width = Number(d.SWidth);
    const QString height = Number(d.SHeight);

    QString& t = m_text;
    t.reserve(static_cast<qsizetype>(m_links.size()) * 110 + 2048);
    t += QLatin1String("<div") + Attr("class", cls) +
         QLatin1String(" style=\"position:relative;display:inline-block;max-width:100%;"
                       "line-height:0\">") +
         CRLF;
    t += QLatin1String("<img") + Attr("src", source) + Attr("alt", alt) + Attr("width", width) +
         Attr("height", height) +
         QLatin1String(" style=\"display:block;width:100%;height:auto\"/>") + CRLF;
    t += QLatin1String("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 ") + width +
         QLatin1Char(' ') + height +
         QLatin1String("\" preserveAspectRatio=\"none\" "
                       "style=\"position:absolute;left:0;top:0;width:100%;height:100%\"") +
         Attr("aria-label", alt) + QLatin1String(">") + CRLF;
    t += QLatin1String("<style>") + CRLF;
    t += scope + QLatin1String(" a > * { fill: transparent; stroke: none; }") + CRLF;
    t += scope + QLatin1String(" a:hover > *, ") + scope +
         QLatin1String(" a:focus > * { fill: rgba(255,255,255,0.25); stroke: #000; "
                       "stroke-width: 2px; vector-effect: non-scaling-stroke; }") +
         CRLF;
    t += scope + QLatin1String(" a:focus { outline: 2px solid #06c; }") + CRLF;
    t += MapEffectsCss::Rules(d, cls);
    t += QLatin1String("</style>") + CRLF;
    // Later elements lie on top and take the pointer first, so the default area goes
    // first and the shapes last to first: the earlier shape wins, as in a classic map.
    if (!m_defaultLink.isEmpty())
        t += m_defaultLink + CRLF;
    for (auto link = m_links.rbegin(); link != m_links.rend(); ++link)
        t += *link + CRLF;
    t += QLatin1String("</svg>") + CRLF;
    t += QLatin1String("</div>");
}
