#include "FuzzChecks.h"
#include "core/document/MapDocument.h"
#include "core/interchange/HtmlImporter.h"
#include "core/interchange/MapArea.h"
#include "core/interchange/MapCodeGenerator.h"

#include <QRegularExpression>
#include <QString>
#include <QStringView>
#include <cstddef>
#include <cstdint>

// Pasted HTML into a small map. A successful import is applied and its code generated;
// importing that code again must give the same shapes and points, and the same URLs, alt
// texts and targets wherever the classic code can carry them.

using FuzzChecks::Expect;

namespace {

// The classic code writes values as they are, inside double quotes: a value with a quote,
// an angle bracket or a line break in it, or with something that reads as a further
// attribute (a blank and later an equals sign), cannot come back unchanged. Nor can half a
// character: a value without quotes loses its first code unit, which may be the first half
// of a pair, and the other half alone is no text to write or lower-case.
bool Carried(const QString& Value)
{
    if (!QStringView(Value).isValidUtf16())
        return false;
    static const QRegularExpression breaks(QStringLiteral("[\"<>\r\n\t]| .*="),
                                           QRegularExpression::DotMatchesEverythingOption);
    return !breaks.match(Value).hasMatch();
}

// A blank value is left out of the code (a blank link becomes "#").
QString AsWritten(const QString& Value, const QString& WhenBlank = QString())
{
    return QString(Value).remove(QLatin1Char(' ')).isEmpty() ? WhenBlank : Value;
}

void SameText(const QString& Expected, const QString& Actual, const char* Field, std::size_t i)
{
    Expect(Expected == Actual,
           QStringLiteral("%1 of area %2: \"%3\" came back as \"%4\"")
               .arg(QLatin1String(Field), QString::number(i), Expected, Actual));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    MapDocument document;
    document.SWidth = 320;
    document.SHeight = 200;
    document.ImageName = QStringLiteral("pic.gif");
    document.ImagePath = QStringLiteral("/tmp/");
    document.DefURL = QStringLiteral("old.htm");

    const HtmlImporter::Result result = HtmlImporter::Convert(text, document);
    if (!result.ok) {
        Expect(!result.message.isEmpty() && result.shapes.empty(),
               QStringLiteral("a refused import says why and gives nothing"));
        return 0;
    }
    HtmlImporter::Apply(result, document);
    FuzzChecks::CheckInvariants(document);
    Expect(document.ItemCount() + 1 == static_cast<int>(result.shapes.size()),
           QStringLiteral("every imported area is a shape"));
    const QString code = MapCodeGenerator::GenerateMapCode(document, MapCodeGenerator::Form::Test);
    Expect(code.isEmpty() == result.shapes.empty(),
           QStringLiteral("code is empty exactly when there are no shapes"));
    if (code.isEmpty())
        return 0;

    bool carried = Carried(document.MapName) && Carried(document.DefURL) &&
                   Carried(document.DefComment) && Carried(document.DefTarget);
    for (const PatShape& shape : document.Shapes())
        carried = carried && Carried(shape.URL) && Carried(shape.Comment) && Carried(shape.Target);
    MapDocument again;
    again.SWidth = document.SWidth;
    again.SHeight = document.SHeight;
    const HtmlImporter::Result second = HtmlImporter::Convert(code, again);
    if (!carried) {
        // Values that break the markup: only what must still hold.
        Expect(!second.ok || second.shapes.size() >= result.shapes.size(),
               QStringLiteral("no area is lost"));
        return 0;
    }
    Expect(second.ok, QStringLiteral("the generated code imports: %1").arg(second.message));
    // The classic code writes the default area as a rectangle over the whole picture, so it
    // comes back as one more shape, and the map has no default area then.
    const bool hasDefault = MapArea::HasDefaultArea(document);
    const std::size_t shapes = document.Shapes().size();
    Expect(second.shapes.size() == shapes + (hasDefault ? 1 : 0),
           QStringLiteral("%1 areas came back as %2").arg(shapes).arg(second.shapes.size()));
    for (std::size_t i = 0; i < shapes; ++i) {
        const PatShape& before = document.Shapes()[i];
        const PatShape& after = second.shapes[i];
        Expect(before.GetShapeType() == after.GetShapeType() &&
                   FuzzChecks::AsCoded(before) == after.Points(),
               QStringLiteral("type or points of area %1 changed").arg(i));
        SameText(AsWritten(before.URL, QStringLiteral("#")), after.URL, "href", i);
        SameText(AsWritten(before.Comment), after.Comment, "alt", i);
        SameText(AsWritten(before.Target), after.Target, "target", i);
    }
    if (hasDefault) {
        const PatShape& area = second.shapes.back();
        Expect(area.GetShapeType() == Rectangle &&
                   area.Points() == std::vector<ShapePoint>{{0, 0},
                                                            {document.SWidth, 0},
                                                            {document.SWidth, document.SHeight},
                                                            {0, document.SHeight}},
               QStringLiteral("the default area is not the whole picture"));
        SameText(AsWritten(document.DefURL, QStringLiteral("#")), area.URL, "default href", 0);
        SameText(AsWritten(document.DefComment), area.Comment, "default alt", 0);
        SameText(AsWritten(document.DefTarget), area.Target, "default target", 0);
    }
    SameText(QString(), second.DefURL + second.DefComment + second.DefTarget, "default area", 0);
    return 0;
}
