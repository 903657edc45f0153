#pragma once

#include "core/interchange/MapCodeGenerator.h"
#include "core/interchange/MapWriter.h"

#include <QString>
#include <vector>

struct MapArea;

// A responsive map: the picture with an inline <svg> laid over it whose viewBox is the
// picture's size, so the areas scale with the picture at any width without a script.
// One <a> per shape, invisible until hovered or focused. The block is well-formed XML.
class SvgMapWriter : public MapWriter
{
public:
    explicit SvgMapWriter(MapCodeGenerator::Form TheForm);

    void BeginMap(const MapDocument& Document) override;
    void WriteShape(int Index, PatShape& Shape) override;
    void WriteDefaultArea(const MapDocument& Document) override;
    void EndMap(const MapDocument& Document) override;

    const QString& Text() const { return m_text; }

private:
    QString Link(const MapArea& Area, const QString& Geometry) const;

    MapCodeGenerator::Form m_form;
    std::vector<QString> m_links; // shape 0 first
    QString m_defaultLink;
    QString m_text;
};
