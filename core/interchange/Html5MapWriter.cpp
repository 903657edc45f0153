#include "core/interchange/Html5MapWriter.h"

#include "core/document/MapDocument.h"
#include "core/interchange/HtmlText.h"
#include "core/interchange/MapArea.h"
#include "core/interchange/MapEffectsCss.h"
#include "core/interchange/PictureAddress.h"

namespace {

const QLatin1String CRLF("\r\n");

QString Attr(const char* name, const QString& value)
{
    QString out;
    HtmlText::AppendNamed(out, QLatin1String(name), value);
    return out;
}

const char* ShapeKeyword(MapArea::Kind kind)
{
    switch (kind) {
    case MapArea::Kind::Circle:
        return "circle";
    case MapArea::Kind::Poly:
        return "poly";
    case MapArea::Kind::Default:
        return "default";
    case MapArea::Kind::Rect:
        break;
    }
    return "rect";
}

} // namespace

Html5MapWriter::Html5MapWriter(MapCodeGenerator::Form TheForm) : m_form(TheForm) {}

QString Html5MapWriter::LinkAttributes(const MapArea& a)
{
    QString html;
    AppendLinkAttributes(html, a);
    return html;
}

void Html5MapWriter::AppendLinkAttributes(QString& html, const MapArea& a)
{
    // A shape without a link stays an area (it still takes the clicks it covers) but is
    // no link; every linked area has an alt text, empty when the shape has no comment.
    const bool linked = !a.URL.trimmed().isEmpty();
    if (linked)
        HtmlText::AppendNamed(html, QLatin1String("href"), a.URL);
    if (linked || !a.Comment.isEmpty())
        HtmlText::AppendNamed(html, QLatin1String("alt"), a.Comment);
    if (!a.Target.isEmpty())
        HtmlText::AppendNamed(html, QLatin1String("target"), a.Target);
    if (!a.Status.isEmpty())
        HtmlText::AppendNamed(html, QLatin1String("title"), a.Status);
    if (!a.Alert.isEmpty())
        HtmlText::AppendNamed(html, QLatin1String("onclick"),
                              QLatin1String("alert(") + HtmlText::JsString(a.Alert) +
                                  QLatin1Char(')'));
}

void Html5MapWriter::BeginMap(const MapDocument& d)
{
    m_head.clear();
    m_body.clear();
    m_body.reserve(static_cast<qsizetype>(d.ItemCount() + 1) * 100 + 1024);
    const QString css = MapEffectsCss::Rules(d, HtmlText::ClassName(d.MapName));
    if (!css.isEmpty())
        m_head = QLatin1String("<style>") + CRLF + css + QLatin1String("</style>") + CRLF;
    m_body += QLatin1String("<div") + Attr("class", HtmlText::ClassName(d.MapName)) +
              QLatin1Char('>') + CRLF;
    const QString name = HtmlText::Html5MapName(d.MapName);
    m_body +=
        QLatin1String("<map") + Attr("name", name) + Attr("id", name) + QLatin1Char('>') + CRLF;
}

void Html5MapWriter::WriteArea(const MapArea& a)
{
    m_body += QLatin1String("<area shape=\"");
    m_body += QLatin1String(ShapeKeyword(a.kind));
    m_body += QLatin1Char('"');
    if (a.kind != MapArea::Kind::Default) {
        m_body += QLatin1String(" coords=\"");
        for (std::size_t i = 0; i < a.coords.size(); ++i) {
            if (i > 0)
                m_body += QLatin1Char(',');
            HtmlText::AppendNumber(m_body, a.coords[i]);
        }
        m_body += QLatin1Char('"');
    }
    AppendLinkAttributes(m_body, a);
    m_body += QLatin1Char('>');
    m_body += CRLF;
}

void Html5MapWriter::WriteShape(int Index, PatShape& Shape)
{
    WriteArea(MapArea::FromShape(Shape, Index));
}

void Html5MapWriter::WriteDefaultArea(const MapDocument& d)
{
    WriteArea(MapArea::DefaultOf(d));
}

void Html5MapWriter::EndMap(const MapDocument& d)
{
    m_body += QLatin1String("</map>") + CRLF;
    const QString source = m_form == MapCodeGenerator::Form::Viewing
                               ? d.ImageName
                               : PictureAddress::FileUrl(d.ImagePath, d.ImageName);
    const QString alt = d.DefComment.trimmed().isEmpty() ? d.MapName : d.DefComment;
    m_body += QLatin1String("<img") + Attr("src", source) + Attr("alt", alt) +
              Attr("width", QString::number(d.SWidth)) +
              Attr("height", QString::number(d.SHeight)) +
              Attr("usemap", QLatin1Char('#') + HtmlText::Html5MapName(d.MapName)) +
              QLatin1Char('>') + CRLF;
    m_body += QLatin1String("</div>");
}

QString Html5MapWriter::Text() const
{
    if (m_head.isEmpty())
        return m_body;
    return QLatin1String("<!-- Put this style block in the head of your page. -->") + CRLF +
           m_head + m_body;
}
