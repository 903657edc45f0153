#include "FuzzChecks.h"
#include "core/document/MapDocument.h"
#include "core/interchange/MapFile.h"
#include "core/interchange/MapTextWriter.h"

#include <QByteArray>
#include <cstddef>
#include <cstdint>

// Bytes read as a map file whose picture "pic.png" lies beside it. A map that loads must
// keep the shape list's invariants and come back from writing and reading field by field
// as the format writes it (its code is the map code target's).

using FuzzChecks::Expect;

namespace {

// A text value as the writer leaves it: a line break inside becomes a blank.
QString Written(QString Value)
{
    for (const QChar c : {QChar(u'\r'), QChar(u'\n'), QChar(0)})
        Value.replace(c, QLatin1Char(' '));
    return Value;
}

void SameText(const QString& Before, const QString& After, const char* Field)
{
    Expect(Written(Before) == After, QStringLiteral("%1 changed: \"%2\" became \"%3\"")
                                         .arg(QLatin1String(Field), Before, After));
}

void SameNumber(double Before, double After, const char* Field)
{
    // Numbers are compared as the format writes them (at most 15 significant digits).
    const QString b = MapTextWriter::DoubleText(Before);
    const QString a = MapTextWriter::DoubleText(After);
    Expect(b == a, QStringLiteral("%1 changed: %2 became %3").arg(QLatin1String(Field), b, a));
}

void SameValue(std::int64_t Before, std::int64_t After, const char* Field)
{
    Expect(Before == After,
           QStringLiteral("%1 changed: %2 became %3")
               .arg(QLatin1String(Field), QString::number(Before), QString::number(After)));
}

// After is Before written and read back once. The stacking order comes back as its
// inverse (each shape's record holds an order entry that is read as that shape's
// position), and the shape on top then has the focus colour.
void SameDocument(const MapDocument& Before, const MapDocument& After)
{
    SameText(Before.MapName, After.MapName, "MapName");
    SameValue(Before.MapStyle, After.MapStyle, "MapStyle");
    SameValue(Before.MapOnClick, After.MapOnClick, "MapOnClick");
    SameValue(Before.MapBorder, After.MapBorder, "MapBorder");
    SameText(Before.ImagePath, After.ImagePath, "ImagePath");
    SameText(Before.ImageName, After.ImageName, "ImageName");
    SameValue(Before.RealWidth, After.RealWidth, "RealWidth");
    SameValue(Before.RealHeight, After.RealHeight, "RealHeight");
    SameValue(Before.SWidth, After.SWidth, "SWidth");
    SameValue(Before.SHeight, After.SHeight, "SHeight");
    SameNumber(Before.ZoomLevel, After.ZoomLevel, "ZoomLevel");
    SameNumber(Before.GridSpacing, After.GridSpacing, "GridSpacing");
    SameValue(Before.GridColor, After.GridColor, "GridColor");
    SameValue(Before.GridStyle, After.GridStyle, "GridStyle");
    SameValue(Before.GridColorNum, After.GridColorNum, "GridColorNum");
    SameValue(Before.ShouldDrawGrid, After.ShouldDrawGrid, "ShouldDrawGrid");
    SameValue(Before.GridSnap, After.GridSnap, "GridSnap");
    SameValue(Before.FocusColor, After.FocusColor, "FocusColor");
    SameValue(Before.NonFocusColor, After.NonFocusColor, "NonFocusColor");
    SameValue(Before.BorderColor, After.BorderColor, "BorderColor");
    SameValue(Before.ItemCount(), After.ItemCount(), "ItemCount");
    for (std::size_t i = 0; i < Before.Shapes().size(); ++i) {
        const PatShape& b = Before.Shapes()[i];
        const PatShape& a = After.Shapes()[i];
        SameValue(b.GetShapeType(), a.GetShapeType(), "ShapeType");
        Expect(b.Points() == a.Points(), QStringLiteral("points of shape %1 changed").arg(i));
        SameText(b.URL, a.URL, "URL");
        SameText(b.Comment, a.Comment, "Comment");
        SameText(b.Target, a.Target, "Target");
        SameText(b.StatusString, a.StatusString, "StatusString");
        // The alert switch is written as -1 or 0.
        SameValue(b.AlertBox != 0 ? -1 : 0, a.AlertBox, "AlertBox");
        SameText(b.AlertString, a.AlertString, "AlertString");
        const auto position = static_cast<std::size_t>(Before.ShapeOrder()[i]);
        SameValue(static_cast<std::int64_t>(i), After.ShapeOrder()[position], "ShapeOrder");
        const bool top = static_cast<std::size_t>(After.ShapeOrder().front()) == i;
        SameValue(top ? After.FocusColor : After.NonFocusColor, a.ShapeColor, "ShapeColor");
    }
    SameText(Before.DefURL, After.DefURL, "DefURL");
    SameText(Before.DefComment, After.DefComment, "DefComment");
    SameText(Before.DefTarget, After.DefTarget, "DefTarget");
    SameText(Before.DefStatus, After.DefStatus, "DefStatus");
    SameValue(Before.DefAlertVal != 0 ? -1 : 0, After.DefAlertVal, "DefAlertVal");
    SameText(Before.DefAlert, After.DefAlert, "DefAlert");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString& path = FuzzChecks::MapPath();
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    MapFile::ReadResult read = MapFile::ReadMap(bytes, path);
    if (!read.ok) {
        Expect(!read.messages.isEmpty() && read.document.ItemCount() == -1,
               QStringLiteral("a refused map says why and holds nothing"));
        return 0;
    }
    FuzzChecks::CheckInvariants(read.document);

    const QByteArray written = MapFile::MapBytes(read.document, path);
    const MapFile::ReadResult again = MapFile::ReadMap(written, path);
    Expect(again.ok, QStringLiteral("a written map reads back"));
    FuzzChecks::CheckInvariants(again.document);
    SameDocument(read.document, again.document);
    // Read twice the order is itself again, and so are the bytes.
    const QByteArray second = MapFile::MapBytes(again.document, path);
    const MapFile::ReadResult third = MapFile::ReadMap(second, path);
    Expect(third.ok && MapFile::MapBytes(third.document, path) == written,
           QStringLiteral("writing twice gives the same bytes"));
    return 0;
}
