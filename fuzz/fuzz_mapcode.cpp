#include "FuzzChecks.h"
#include "core/document/MapDocument.h"
#include "core/interchange/FormattedMapCode.h"
#include "core/interchange/HtmlImporter.h"
#include "core/interchange/MapArea.h"
#include "core/interchange/MapCodeGenerator.h"
#include "core/interchange/MapFile.h"

#include <QByteArray>
#include <QXmlStreamReader>
#include <cstddef>
#include <cstdint>
#include <exception>

// Bytes read as a map file, then written as code in every format and both forms. The
// classic format is exactly the classic generator's; the HTML5 code imports back to the
// same shapes and points; the SVG block is well-formed XML with one link per area.
// A run-time error (a 16-bit overflow while rescaling) is allowed: the editor reports it.

using FuzzChecks::Expect;

namespace {

int Links(const QString& Xml)
{
    QXmlStreamReader reader(Xml);
    int links = 0;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == u"a")
            ++links;
    }
    Expect(!reader.hasError(), QStringLiteral("SVG code is not well-formed: %1 at line %2")
                                   .arg(reader.errorString())
                                   .arg(reader.lineNumber()));
    return links;
}

void CheckForm(MapDocument& Document, MapCodeGenerator::Form Form)
{
    MapDocument copy = Document;
    const QString classic = MapCodeGenerator::GenerateMapCode(copy, Form);
    Expect(FormattedMapCode::Generate(Document, MapFormat::Classic, Form).Text == classic,
           QStringLiteral("the classic format is the classic generator's code"));
    Expect(classic.isEmpty() == (Document.ItemCount() < 0),
           QStringLiteral("code is empty exactly when there are no shapes"));
    if (classic.isEmpty())
        return;

    // The classic import wants coords on every area, which an HTML5 default area has not:
    // the shapes are checked without one.
    MapDocument shapesOnly = Document;
    shapesOnly.DefURL = shapesOnly.DefComment = shapesOnly.DefStatus = shapesOnly.DefAlert = {};
    const FormattedMapCode html5 = FormattedMapCode::Generate(shapesOnly, MapFormat::Html5, Form);
    MapDocument imported;
    imported.SWidth = Document.SWidth;
    imported.SHeight = Document.SHeight;
    const HtmlImporter::Result back = HtmlImporter::Convert(html5.Body, imported);
    Expect(back.ok, QStringLiteral("HTML5 code imports: %1").arg(back.message));
    Expect(back.shapes.size() == Document.Shapes().size(),
           QStringLiteral("HTML5 code has %1 areas for %2 shapes")
               .arg(back.shapes.size())
               .arg(Document.Shapes().size()));
    // Code is written at zoom 1.0, and the import reads it at 1.0.
    for (std::size_t i = 0; i < back.shapes.size(); ++i) {
        PatShape expected = Document.Shapes()[i];
        expected.ResetPointsToZoom(1.0);
        Expect(back.shapes[i].GetShapeType() == expected.GetShapeType() &&
                   back.shapes[i].Points() == FuzzChecks::AsCoded(expected),
               QStringLiteral("type or points of area %1 changed").arg(i));
    }

    const FormattedMapCode svg = FormattedMapCode::Generate(Document, MapFormat::Svg, Form);
    const int areas =
        static_cast<int>(Document.Shapes().size()) + (MapArea::HasDefaultArea(Document) ? 1 : 0);
    const int links = Links(svg.Text);
    Expect(links == areas,
           QStringLiteral("SVG code has %1 links for %2 areas").arg(links).arg(areas));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    MapFile::ReadResult read = MapFile::ReadMap(bytes, FuzzChecks::MapPath());
    if (!read.ok)
        return 0;
    try {
        CheckForm(read.document, MapCodeGenerator::Form::Viewing);
        CheckForm(read.document, MapCodeGenerator::Form::Test);
    } catch (const std::exception&) {
    }
    return 0;
}
