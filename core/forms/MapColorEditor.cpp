#include "core/forms/MapColorEditor.h"

#include "core/document/MapDocument.h"

#include <utility>

MapColorEditor::MapColorEditor(MapDocument& Document, std::function<void()> Redraw)
    : m_document(Document), m_redraw(std::move(Redraw)), m_startFocus(Document.FocusColor),
      m_startNormal(Document.NonFocusColor), m_startBorder(Document.BorderColor)
{
}

std::int32_t& MapColorEditor::Field(Which Colour)
{
    return const_cast<std::int32_t&>(std::as_const(*this).Field(Colour));
}

const std::int32_t& MapColorEditor::Field(Which Colour) const
{
    switch (Colour) {
    case Which::Focus:
        return m_document.FocusColor;
    case Which::Normal:
        return m_document.NonFocusColor;
    case Which::Border:
        break;
    }
    return m_document.BorderColor;
}

std::int32_t MapColorEditor::Select(Which Colour)
{
    m_selected = Colour;
    return Current();
}

std::int32_t MapColorEditor::Current() const
{
    return Field(m_selected);
}

std::int32_t MapColorEditor::Apply(int Red, int Green, int Blue)
{
    const std::int32_t colour = Compose(Red, Green, Blue);
    Field(m_selected) = colour;
    if (m_selected != Which::Border && m_redraw)
        m_redraw();
    return colour;
}

std::int32_t MapColorEditor::Reset()
{
    m_document.FocusColor = m_startFocus;
    m_document.NonFocusColor = m_startNormal;
    m_document.BorderColor = m_startBorder;
    if (m_redraw)
        m_redraw();
    switch (m_selected) {
    case Which::Focus:
        return m_startFocus;
    case Which::Normal:
        return m_startNormal;
    case Which::Border:
        break;
    }
    return m_startBorder;
}

std::int32_t MapColorEditor::Compose(int Red, int Green, int Blue)
{
    return Red + 256 * Green + 65536 * Blue;
}

QString MapColorEditor::AboutText()
{
    return QStringLiteral(
               "Here you can set the different colors to use.  Focus Color and Normal Color "
               "wont effect the finished image map product.  They are only here for you to "
               "set so you can better see the shapes you are working with.  ") +
           QStringLiteral("\n\n") +
           QStringLiteral(
               "Border Color is the color of the image border if and only if you choose your "
               "image to have a glowing or shadow border.  If your map has a normal border "
               "(which to preset in the Properties window), no border color will be visible.");
}
