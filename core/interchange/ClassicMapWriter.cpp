#include "core/interchange/ClassicMapWriter.h"

#include "core/base/Module1.h"
#include "core/document/MapDocument.h"
#include "core/interchange/PictureAddress.h"

#include <algorithm>

namespace {

const QChar Q = QLatin1Char('"');
const QLatin1String CRLF("\r\n");

// Only blanks make a field empty, as for the shapes' areas: a tab is content.
bool IsBlank(const QString& s)
{
    return std::all_of(s.begin(), s.end(), [](QChar c) { return c == QLatin1Char(' '); });
}

QString Escaped(QString s)
{
    return s.replace(QLatin1Char('\''), QLatin1String("\\'"));
}

// Hover effects, indexed by MapStyle.
const char* const HoverEffects[] = {
    "",
    " style=\"filter:gray()\" onmouseover=\"this.style.filter-='gray()'\" "
    "onmouseout=\"this.style.filter='gray()'\"",
    " style=\"filter:alpha(style=1,opacity=60,finishopacity=60)\" "
    "onmouseover=\"this.style.filter-='alpha(style=1,opacity=60,finishopacity=60)'\" "
    "onmouseout=\"this.style.filter='alpha(style=1,opacity=60,finishopacity=60)'\"",
    " style=\"filter:blur(strength=10,direction=90)\" "
    "onmouseover=\"this.style.filter-='blur(strength=10,direction=90)'\" "
    "onmouseout=\"this.style.filter='blur(strength=10,direction=90)'\"",
    " style=\"filter:invert()\" onmouseover=\"this.style.filter-='invert()'\" "
    "onmouseout=\"this.style.filter='invert()'\"",
    " style=\"filter:xray()\" onmouseover=\"this.style.filter-='xray()'\" "
    "onmouseout=\"this.style.filter='xray()'\"",
};

// Press effects, indexed by MapOnClick.
const char* const PressEffects[] = {
    "",
    " onmousedown=\"this.style.filter='gray()'\" onmouseup=\"this.style.filter-='gray()'\"",
    " onmousedown=\"this.style.filter='alpha(style=1,opacity=60,finishopacity=60)'\" "
    "onmouseup=\"this.style.filter-='alpha(style=1,opacity=60,finishopacity=60)'\"",
    " onmousedown=\"this.style.filter='blur(strength=10,direction=90)'\" "
    "onmouseup=\"this.style.filter-='blur(strength=10,direction=90)'\"",
    " onmousedown=\"this.style.filter='invert()'\" onmouseup=\"this.style.filter-='invert()'\"",
    " onmousedown=\"this.style.filter='xray()'\" onmouseup=\"this.style.filter-='xray()'\"",
};

QLatin1String Effect(const char* const (&table)[6], std::int16_t index)
{
    return QLatin1String(index >= 1 && index <= 5 ? table[index] : "");
}

QString DefaultArea(const MapDocument& d)
{
    QString html = QLatin1String("<area shape=") + Q + QLatin1String("rect") + Q;
    html += QLatin1String(" href=") + Q + (IsBlank(d.DefURL) ? QStringLiteral("#") : d.DefURL) + Q;
    html += QLatin1String(" coords=") + Q + QLatin1String("0,0,") + QString::number(d.SWidth) +
            QLatin1Char(',') + QString::number(d.SHeight) + Q;
    if (!IsBlank(d.DefComment))
        html += QLatin1String(" alt=") + Q + d.DefComment + Q;
    if (!IsBlank(d.DefTarget))
        html += QLatin1String(" target=") + Q + d.DefTarget + Q;
    if (!IsBlank(d.DefStatus)) {
        html += QLatin1String(" OnFocus=") + Q + QLatin1String("window.status='") +
                Escaped(d.DefStatus) + QLatin1Char('\'') + Q + QLatin1String(" OnBlur=") + Q +
                QLatin1String("window.status=''") + Q;
    }
    if (d.DefAlertVal != 0 && !d.DefAlert.isEmpty()) {
        html += QLatin1String(" OnClick=") + Q + QLatin1String("javascript:alert('") +
                Escaped(d.DefAlert) + QLatin1String("')") + Q;
    }
    html += QLatin1Char('>');
    return html;
}

} // namespace

ClassicMapWriter::ClassicMapWriter(MapCodeGenerator::Form TheForm) : m_form(TheForm) {}

void ClassicMapWriter::BeginMap(const MapDocument& d)
{
    m_text.clear();
    m_text.reserve(static_cast<qsizetype>(d.ItemCount() + 1) * 96 + 1024);
    m_text += QLatin1String("<map name=") + Q + d.MapName + Q + QLatin1Char('>') + CRLF;
}

void ClassicMapWriter::WriteShape(int, PatShape& Shape)
{
    m_text += Shape.GenerateHTML();
    m_text += CRLF;
}

void ClassicMapWriter::WriteDefaultArea(const MapDocument& d)
{
    m_text += DefaultArea(d) + CRLF;
}

void ClassicMapWriter::EndMap(const MapDocument& d)
{
    QString& text = m_text;
    text += QLatin1String("</map>") + CRLF;

    const QString width = QString::number(d.SWidth);
    const QString height = QString::number(d.SHeight);
    const QString hex = Module1::ColorToHex(d.BorderColor);
    if (d.MapBorder == 1) {
        text += QLatin1String("<div style=") + Q + QLatin1String("width:") + width +
                QLatin1String("pt;height:") + height +
                QLatin1String("pt;filter:dropshadow(offx=5, offy=5, color=#") + hex +
                QLatin1Char(')') + Q + QLatin1Char('>');
    } else if (d.MapBorder == 2) {
        text += QLatin1String("<div style=") + Q + QLatin1String("width:") + width +
                QLatin1String("pt;height:") + height + QLatin1String("pt;filter:glow(color=#") +
                hex + QLatin1String(", strength=5)") + Q +
                QLatin1String("><table cellpadding=5><tr><td>");
    }

    if (m_form == MapCodeGenerator::Form::Viewing) {
        text += QLatin1String("<img src=") + Q + d.ImageName + Q + QLatin1String(" usemap=") + Q +
                QLatin1Char('#') + d.MapName + Q + QLatin1String(" border=0");
    } else {
        text += QLatin1String("<img src=") + Q +
                PictureAddress::ClassicTestSource(d.ImagePath, d.ImageName) + Q +
                QLatin1String(" usemap=") + Q + QLatin1Char('#') + d.MapName + Q +
                QLatin1String(" height=") + height + QLatin1String(" width=") + width +
                QLatin1String(" border=0");
    }
    text += Effect(HoverEffects, d.MapStyle);
    text += Effect(PressEffects, d.MapOnClick);
    text += QLatin1Char('>');

    if (d.MapBorder == 1)
        text += QLatin1String("</div>");
    else if (d.MapBorder == 2)
        text += QLatin1String("</td></tr></table></div>");
}
