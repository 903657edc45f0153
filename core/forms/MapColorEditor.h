#pragma once

#include <QString>
#include <cstdint>
#include <functional>

class MapDocument;

// Live editing of a map's three colours: every change is written to the document at
// once, and Reset brings back the colours the editing started with.
class MapColorEditor
{
public:
    enum class Which { Focus, Normal, Border };

    // Redraw is called whenever the shapes must take new colours (not for the border,
    // which only shows in the generated HTML).
    MapColorEditor(MapDocument& Document, std::function<void()> Redraw);

    Which Selected() const { return m_selected; }
    // Chooses the colour being edited and returns its current value.
    std::int32_t Select(Which Colour);
    std::int32_t Current() const;
    // Writes red + 256 green + 65536 blue to the selected colour and returns it.
    std::int32_t Apply(int Red, int Green, int Blue);
    // Restores all three starting colours; returns the selected one's.
    std::int32_t Reset();

    static std::int32_t Compose(int Red, int Green, int Blue);
    static QString AboutText();

private:
    std::int32_t& Field(Which Colour);
    const std::int32_t& Field(Which Colour) const;

    MapDocument& m_document;
    std::function<void()> m_redraw;
    Which m_selected = Which::Focus;
    std::int32_t m_startFocus;
    std::int32_t m_startNormal;
    std::int32_t m_startBorder;
};
