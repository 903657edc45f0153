#include "core/document/MapDocument.h"
#include "core/interchange/MapCodeGenerator.h"
#include "core/interchange/MapFile.h"

#include <QByteArray>
#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <exception>

// Bytes read as a map file whose picture "pic.png" lies beside it. A map that loads must
// keep the shape list's invariants, survive being written and read again, and give its
// code in both forms (a run-time error such as a 16-bit overflow is allowed: the editor
// reports it as a message).

namespace {

const QString& MapPath()
{
    static QTemporaryDir folder;
    static const QString path = [] {
        QImage picture(4, 3, QImage::Format_RGB32);
        picture.fill(Qt::red);
        if (!folder.isValid() || !picture.save(folder.filePath(QStringLiteral("pic.png"))))
            std::abort();
        return folder.filePath(QStringLiteral("fuzz.imp"));
    }();
    return path;
}

void CheckInvariants(const MapDocument& document)
{
    const std::size_t count = static_cast<std::size_t>(document.ItemCount() + 1);
    if (document.Shapes().size() != count || document.ShapeOrder().size() != count)
        std::abort();
    std::vector<bool> seen(count, false);
    for (std::int16_t entry : document.ShapeOrder()) {
        if (entry < 0 || static_cast<std::size_t>(entry) >= count || seen[entry])
            std::abort();
        seen[static_cast<std::size_t>(entry)] = true;
    }
    for (const PatShape& shape : document.Shapes()) {
        if (shape.Points().empty())
            std::abort();
    }
}

void Generate(MapDocument& document, MapCodeGenerator::Form form)
{
    try {
        const QString code = MapCodeGenerator::GenerateMapCode(document, form);
        if (code.isEmpty() != (document.ItemCount() < 0))
            std::abort();
    } catch (const std::exception&) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    MapFile::ReadResult read = MapFile::ReadMap(bytes, MapPath());
    if (!read.ok) {
        if (read.messages.isEmpty() || read.document.ItemCount() != -1)
            std::abort();
        return 0;
    }
    CheckInvariants(read.document);

    const QByteArray written = MapFile::MapBytes(read.document, MapPath());
    const MapFile::ReadResult again = MapFile::ReadMap(written, MapPath());
    // A carriage return inside a line is written as a blank; nothing else changes.
    const QString name =
        QString(read.document.MapName).replace(QLatin1Char('\r'), QLatin1Char(' '));
    if (!again.ok || again.document.ItemCount() != read.document.ItemCount() ||
        again.document.MapName != name)
        std::abort();

    Generate(read.document, MapCodeGenerator::Form::Viewing);
    Generate(read.document, MapCodeGenerator::Form::Test);
    return 0;
}
