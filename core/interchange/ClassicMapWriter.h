#pragma once

#include "core/interchange/MapCodeGenerator.h"
#include "core/interchange/MapWriter.h"

#include <QString>

// The historic form, byte for byte: IE filters, unescaped attribute values, CR LF.
class ClassicMapWriter : public MapWriter
{
public:
    explicit ClassicMapWriter(MapCodeGenerator::Form TheForm);

    void BeginMap(const MapDocument& Document) override;
    void WriteShape(int Index, PatShape& Shape) override;
    void WriteDefaultArea(const MapDocument& Document) override;
    void EndMap(const MapDocument& Document) override;

    const QString& Text() const { return m_text; }

private:
    MapCodeGenerator::Form m_form;
    QString m_text;
};
