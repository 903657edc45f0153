#include "core/forms/GridOptions.h"

#include "core/base/Numeric.h"
#include "core/document/MapDocument.h"
#include "core/forms/LeadingNumber.h"

const std::array<std::int32_t, 6>& GridOptions::Colors()
{
    static const std::array<std::int32_t, 6> colors = {
        RGBColor(0, 0, 0),   RGBColor(255, 255, 255), RGBColor(170, 170, 170),
        RGBColor(255, 0, 0), RGBColor(0, 255, 0),     RGBColor(0, 0, 255)};
    return colors;
}

QStringList GridOptions::ColorKeys()
{
    return {QStringLiteral("key1"), QStringLiteral("key2"), QStringLiteral("key3"),
            QStringLiteral("key4"), QStringLiteral("key5"), QStringLiteral("key6")};
}

QStringList GridOptions::ColorCaptions()
{
    return {QStringLiteral("Black"), QStringLiteral("White"), QStringLiteral("Gray"),
            QStringLiteral("Red"),   QStringLiteral("Green"), QStringLiteral("Blue")};
}

QStringList GridOptions::StyleNames()
{
    return {QStringLiteral("Lines"), QStringLiteral("Dashed Lines"), QStringLiteral("Dots")};
}

GridOptions::Fields GridOptions::Read(const MapDocument& Document)
{
    Fields fields;
    fields.ColorNum = Document.GridColorNum;
    fields.Style = Document.GridStyle;
    fields.Spacing = QString::number(Document.GridSpacing);
    fields.Display = Document.ShouldDrawGrid;
    fields.Snap = Document.GridSnap;
    return fields;
}

void GridOptions::Write(const Fields& TheFields, MapDocument& Document)
{
    if (TheFields.ColorNum < 1 || TheFields.ColorNum > int(Colors().size()))
        throw IndexOutOfRangeError();
    Document.GridColorNum = ToInt16(TheFields.ColorNum);
    Document.GridColor = Colors()[std::size_t(Document.GridColorNum - 1)];
    Document.GridStyle = TheFields.Style;
    Document.GridSpacing = LeadingNumber::Of(TheFields.Spacing);
    Document.ShouldDrawGrid = TheFields.Display;
    Document.GridSnap = TheFields.Snap;
}
