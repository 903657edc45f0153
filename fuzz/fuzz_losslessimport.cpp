#include "core/document/MapDocument.h"
#include "core/interchange/FormattedMapCode.h"
#include "core/interchange/HtmlMapReader.h"
#include "core/interchange/HtmlText.h"
#include "core/interchange/LosslessImporter.h"

#include <QString>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

// Pasted HTML read as a browser reads it, into a map that already has a shape; a
// successful import, written again as HTML5 and read back, must give the same shapes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    MapDocument document;
    document.SWidth = 320;
    document.SHeight = 200;
    const std::int16_t old = document.AddShape();
    document.Shape(old).ResetInfo(Rectangle, true, 0, QStringLiteral("old.htm"), QString(),
                                  QString(), QString(), 0, QString());
    document.Shape(old).ResetPoints(3);
    document.Shape(old).SetOpenGeneralInfo(nullptr, 1.0);

    QString refusal;
    const std::vector<HtmlMapReader::Map> maps = HtmlMapReader::ReadMaps(text, refusal);
    if (!refusal.isEmpty() && !maps.empty())
        std::abort();
    const std::size_t chosen = maps.empty() ? 0 : size % maps.size();
    const LosslessImporter::Result result = LosslessImporter::Convert(maps, chosen, document);
    if (!result.ok) {
        if (result.message.isEmpty() || !result.shapes.empty())
            std::abort();
        return 0;
    }
    const bool add = (size & 1) != 0;
    const int before = document.ItemCount() + 1;
    if (!LosslessImporter::Apply(result, document, add))
        std::abort();
    const int expected = static_cast<int>(result.shapes.size()) + (add ? before : 0);
    if (document.ItemCount() + 1 != expected)
        std::abort();

    const QString code =
        FormattedMapCode::Generate(document, MapFormat::Html5, MapCodeGenerator::Form::Viewing)
            .Text;
    MapDocument again;
    const LosslessImporter::Result second = LosslessImporter::Convert(code, again);
    if (!second.ok || static_cast<int>(second.shapes.size()) != expected)
        std::abort();
    // Texts compared as written: characters no page can hold are U+FFFD on both sides.
    const auto same = [](const QString& x, const QString& y) {
        return HtmlText::Attribute(x) == HtmlText::Attribute(y);
    };
    for (std::size_t i = 0; i < second.shapes.size(); ++i) {
        const PatShape& a = document.Shape(static_cast<std::int16_t>(i));
        const PatShape& b = second.shapes[i];
        if (a.URL.trimmed().isEmpty() != b.URL.isEmpty() ||
            (!a.URL.trimmed().isEmpty() && !same(a.URL, b.URL)) || !same(a.Target, b.Target) ||
            !same(a.StatusString, b.StatusString) || a.GetShapeType() != b.GetShapeType())
            std::abort();
    }
    return 0;
}
