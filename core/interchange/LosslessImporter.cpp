#include "core/interchange/LosslessImporter.h"

#include "core/base/Numeric.h"
#include "core/interchange/HtmlText.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>
#include <exception>
#include <optional>

// Choices:
// - An area without a shape keyword, or with one no browser knows, is a rectangle, as the
//   browsers take it; "default" is the default area.
// - Coordinates are separated by commas or blanks; an empty piece (the classic trailing
//   comma) is skipped; extra numbers are ignored and a polygon's odd last one dropped.
// - The status text is the title, else the text of a classic window.status script; the
//   alert is the text of an alert(...) call in the click script.
// - Replacing takes over the map's name; adding keeps it.
// - A map with no area but the default one is refused: it would leave the map empty.

namespace {

constexpr std::size_t MaxShapes = 32768;

QString MapTagMessage()
{
    return QStringLiteral("Map tag not found.");
}

QString NoAreasMessage()
{
    return QStringLiteral("No shape objects found.");
}

QString CoordsMessage(std::size_t area, const QString& coords)
{
    const QString shown = coords.size() > 60 ? coords.left(57) + QStringLiteral("...") : coords;
    return QStringLiteral("Area #%1 has coordinates that cannot be read: \"%2\".")
        .arg(area)
        .arg(shown);
}

// The numbers of a coords value; nothing when a piece is not a number.
std::optional<std::vector<std::int32_t>> Numbers(const QString& coords)
{
    std::vector<std::int32_t> numbers;
    const QStringView text(coords);
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        const bool separator = i == text.size() || text[i] == QLatin1Char(',') ||
                               text[i].isSpace() || text[i] == QLatin1Char(';');
        if (!separator)
            continue;
        const QStringView piece = text.sliced(start, i - start);
        start = i + 1;
        if (piece.isEmpty())
            continue;
        bool ok = false;
        const double value = piece.toDouble(&ok);
        if (!ok || !std::isfinite(value))
            return std::nullopt;
        try {
            numbers.push_back(RoundToInt32(value));
        } catch (const std::exception&) {
            return std::nullopt;
        }
    }
    return numbers;
}

// The first JavaScript string after Call (e.g. "alert(" or "window.status=") in Script.
QString ScriptText(const QString& Script, const QString& Call, bool* found = nullptr)
{
    static const QRegularExpression blanks(QStringLiteral("\\s*"));
    if (found != nullptr)
        *found = false;
    const qsizetype at = Script.indexOf(Call, 0, Qt::CaseInsensitive);
    if (at < 0)
        return QString();
    qsizetype from = at + Call.size();
    while (from < Script.size() && Script[from].isSpace())
        ++from;
    QString text;
    qsizetype end = 0;
    if (!HtmlText::ReadJsString(Script, from, text, end))
        return QString();
    if (found != nullptr)
        *found = true;
    return text;
}

struct AreaTexts
{
    QString url, comment, target, status, alert;
    std::int16_t alertBox = 0;
};

AreaTexts TextsOf(const HtmlMapReader::Area& a)
{
    AreaTexts t;
    if (a.hasHref && !a.noHref)
        t.url = a.href;
    t.comment = a.alt;
    t.target = a.target;
    t.status =
        !a.title.isEmpty() ? a.title : ScriptText(a.onfocus, QStringLiteral("window.status="));
    bool alert = false;
    t.alert = ScriptText(a.onclick, QStringLiteral("alert("), &alert);
    t.alertBox = alert && !t.alert.isEmpty() ? 1 : 0;
    return t;
}

enum class Kind { Rect, Circle, Poly, Default };

Kind KindOf(const QString& keyword)
{
    const QString k = keyword.trimmed().toLower();
    if (k == QLatin1String("default"))
        return Kind::Default;
    if (k == QLatin1String("circle") || k == QLatin1String("circ"))
        return Kind::Circle;
    if (k == QLatin1String("poly") || k == QLatin1String("polygon"))
        return Kind::Poly;
    return Kind::Rect;
}

// The shape's points at zoom 1.0, as the classic import builds them.
std::optional<std::vector<ShapePoint>> PointsOf(Kind kind, const std::vector<std::int32_t>& c)
{
    if (kind == Kind::Rect && c.size() >= 4)
        return std::vector<ShapePoint>{{c[0], c[1]}, {c[2], c[1]}, {c[2], c[3]}, {c[0], c[3]}};
    if (kind == Kind::Circle && c.size() >= 3) {
        const std::int64_t r = c[2];
        try {
            const std::int32_t left = ToInt32(c[0] - r), right = ToInt32(c[0] + r);
            const std::int32_t top = ToInt32(c[1] - r), bottom = ToInt32(c[1] + r);
            return std::vector<ShapePoint>{
                {left, top}, {right, top}, {right, bottom}, {left, bottom}};
        } catch (const std::exception&) {
            return std::nullopt;
        }
    }
    if (kind == Kind::Poly && c.size() >= 2 && c.size() / 2 <= MaxShapes) {
        std::vector<ShapePoint> points(c.size() / 2);
        for (std::size_t i = 0; i < points.size(); ++i)
            points[i] = {c[2 * i], c[2 * i + 1]};
        return points;
    }
    return std::nullopt;
}

LosslessImporter::Result Failure(const QString& message)
{
    LosslessImporter::Result result;
    result.message = message;
    return result;
}

} // namespace

LosslessImporter::Result LosslessImporter::Convert(const std::vector<HtmlMapReader::Map>& Maps,
                                                   std::size_t MapIndex,
                                                   const MapDocument& Document)
{
    if (MapIndex >= Maps.size())
        return Failure(MapTagMessage());
    const HtmlMapReader::Map& map = Maps[MapIndex];
    if (map.areas.empty())
        return Failure(NoAreasMessage());

    Result result;
    result.MapName = map.name;
    try {
        for (std::size_t i = 0; i < map.areas.size(); ++i) {
            const HtmlMapReader::Area& area = map.areas[i];
            const Kind kind = KindOf(area.shape);
            const AreaTexts texts = TextsOf(area);
            if (kind == Kind::Default) {
                result.hasDefaultArea = true;
                result.DefURL = texts.url;
                result.DefComment = texts.comment;
                result.DefTarget = texts.target;
                result.DefStatus = texts.status;
                result.DefAlert = texts.alert;
                result.DefAlertVal = texts.alertBox;
                continue;
            }
            const auto numbers = Numbers(area.coords);
            const auto points = numbers ? PointsOf(kind, *numbers) : std::nullopt;
            if (!points)
                return Failure(CoordsMessage(i + 1, area.coords));
            if (result.shapes.size() >= MaxShapes)
                return Failure(QStringLiteral("The code has more areas than a map can hold "
                                              "(32,768)."));
            const std::int16_t type =
                kind == Kind::Circle ? Circle : (kind == Kind::Poly ? Polygon : Rectangle);
            PatShape shape;
            shape.ResetInfo(type, true, Document.NonFocusColor, texts.url, texts.comment,
                            texts.target, texts.status, texts.alertBox, texts.alert);
            shape.ResetPoints(static_cast<std::int16_t>(points->size() - 1));
            for (std::size_t p = 0; p < points->size(); ++p)
                shape.SetPoint(static_cast<std::int16_t>(p), (*points)[p].x, (*points)[p].y);
            shape.SetOpenGeneralInfo(Document.Surface(), 1.0);
            if (Document.ZoomLevel != 1.0)
                shape.ResetPointsToZoom(Document.ZoomLevel);
            result.shapes.push_back(std::move(shape));
        }
    } catch (const std::exception&) {
        return Failure(QStringLiteral("There was an error, please check the HTML code you paste "
                                      "in."));
    }
    if (result.shapes.empty())
        return Failure(NoAreasMessage()); // a default area alone would leave the map empty
    result.ok = true;
    return result;
}

LosslessImporter::Result LosslessImporter::Convert(const QString& Text, const MapDocument& Document)
{
    QString refusal;
    const std::vector<HtmlMapReader::Map> maps = HtmlMapReader::ReadMaps(Text, refusal);
    return refusal.isEmpty() ? Convert(maps, 0, Document) : Failure(refusal);
}

LosslessImporter::Result LosslessImporter::FromClassic(const HtmlImporter::Result& Classic,
                                                       const QString& MapName)
{
    Result result;
    result.ok = Classic.ok;
    result.message = Classic.message;
    result.detail = Classic.detail;
    result.MapName = MapName;
    result.shapes = Classic.shapes;
    result.DefURL = Classic.DefURL;
    result.DefComment = Classic.DefComment;
    result.DefTarget = Classic.DefTarget;
    result.hasDefaultArea = !(Classic.DefURL + Classic.DefComment + Classic.DefTarget).isEmpty();
    return result;
}

QString LosslessImporter::AddLimitMessage(const Result& result, const MapDocument& Document)
{
    const std::size_t total =
        static_cast<std::size_t>(Document.ItemCount() + 1) + result.shapes.size();
    if (total <= MaxShapes)
        return QString();
    return QStringLiteral("The map has %1 shapes; with the %2 imported ones it would pass the "
                          "limit of 32,768.")
        .arg(Document.ItemCount() + 1)
        .arg(result.shapes.size());
}

bool LosslessImporter::Apply(const Result& result, MapDocument& Document, bool Add)
{
    if (!result.ok || (Add && !AddLimitMessage(result, Document).isEmpty()))
        return false;
    std::vector<PatShape> shapes = result.shapes;
    for (PatShape& shape : shapes) {
        // The map window may have changed the zoom since the conversion.
        if (shape.Zoom() != Document.ZoomLevel)
            shape.ResetPointsToZoom(Document.ZoomLevel);
        shape.SetOpenGeneralInfo(Document.Surface(), Document.ZoomLevel);
    }
    if (!Add || result.hasDefaultArea) {
        Document.DefURL = result.DefURL;
        Document.DefComment = result.DefComment;
        Document.DefTarget = result.DefTarget;
        Document.DefStatus = result.DefStatus;
        Document.DefAlert = result.DefAlert;
        Document.DefAlertVal = result.DefAlertVal;
    }
    if (!Add) {
        Document.MapName = result.MapName;
        const auto last = static_cast<std::int16_t>(static_cast<std::int32_t>(shapes.size()) - 1);
        Document.ResizeShapeArray(last, true);
        Document.ReSetShapeArray(shapes, last);
        return true;
    }
    // The current shapes keep their places and stacking; the new ones go below them.
    std::vector<PatShape> all = Document.Shapes();
    std::vector<std::int16_t> order = Document.ShapeOrder();
    for (PatShape& shape : shapes) {
        order.push_back(static_cast<std::int16_t>(all.size()));
        all.push_back(std::move(shape));
    }
    Document.AdoptShapes(std::move(all), std::move(order));
    Document.SetShapeColors();
    return true;
}
