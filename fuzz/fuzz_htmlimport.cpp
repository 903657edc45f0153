#include "core/document/MapDocument.h"
#include "core/interchange/HtmlImporter.h"
#include "core/interchange/MapCodeGenerator.h"

#include <QString>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

// Pasted HTML into a small map; a successful import is applied and its code generated,
// and that code must import again to the same number of areas.
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
        if (result.message.isEmpty() || !result.shapes.empty())
            std::abort();
        return 0;
    }
    HtmlImporter::Apply(result, document);
    if (document.ItemCount() + 1 != static_cast<int>(result.shapes.size()))
        std::abort();
    const QString code = MapCodeGenerator::GenerateMapCode(document, MapCodeGenerator::Form::Test);
    if (code.isEmpty() != result.shapes.empty())
        std::abort();
    if (!code.isEmpty()) {
        MapDocument again;
        const HtmlImporter::Result second = HtmlImporter::Convert(code, again);
        // Values with quotes or '>' in them break the markup; only check what must hold.
        if (second.ok && second.shapes.size() < result.shapes.size())
            std::abort();
    }
    return 0;
}
