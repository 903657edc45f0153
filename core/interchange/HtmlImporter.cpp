#include "core/interchange/HtmlImporter.h"

#include "core/base/Numeric.h"
#include "core/interchange/MapFile.h"

#include <QStringMatcher>
#include <QStringView>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <exception>
#include <optional>
#include <string>

// Choices where the conversion leaves room:
// - The imported shapes carry no status or alert text, and the default area gets none
//   either (DefStatus and DefAlert empty, DefAlertVal 0): the code is never read for them.
// - When the code has no default area, the map's default area is cleared: the pasted code
//   replaces the map's areas, so generating it again should give back what was pasted.
// - Areas whose shape keyword is "default", missing or unknown make no shape; the shape
//   list stays dense. Every area, a default one too, must have coords.
// - An area's attributes are looked for only up to its end ('>') and never inside the
//   next "<area ", and a quoted value must close before the next "<area " (a quote that
//   does not is taken as never closed). Well-formed code is unaffected; broken code gets
//   the error message instead of values that swallow the following areas, and the whole
//   conversion stays linear in the length of the text.
// - Areas are counted from the map tag on: an area written before it is not the map's.
// - Coordinates are picture pixels; the shapes are scaled to the map's current zoom.
// - A polygon needs at least one point; carriage returns inside coords are ignored like
//   line feeds, so code saved on Windows reads the same.

namespace {

const QString ErrorMessage =
    QStringLiteral("There was an error, please check the HTML code you paste in.");

struct ConversionError
{
    // What is wrong with the area, for the user.
    enum Kind { Coordinates, Unclosed, NoEnd, NoCoords } kind = Coordinates;
};

QString AreaDetail(std::size_t Area, ConversionError::Kind Kind)
{
    static const char* const why[] = {
        "its coords do not give the points of its shape",
        "a value in it is not closed with a double quote",
        "it has no closing \">\"",
        "it has no coords",
    };
    return QStringLiteral("Area %1 of the map: %2.").arg(Area + 1).arg(QLatin1String(why[Kind]));
}

// More areas than the 16-bit shape list holds.
struct TooManyAreas
{
};

// The number at the start of Piece: blanks, tabs and line breaks anywhere are ignored;
// reading stops at the first character that cannot continue the number; no number is 0.
double ReadNumber(QStringView Piece)
{
    std::string digits;
    digits.reserve(static_cast<std::size_t>(std::min<qsizetype>(Piece.size(), 64)));
    enum { Sign, Whole, Fraction, ExpSign, Exponent } state = Sign;
    std::size_t validLength = 0; // longest prefix that is a complete number
    for (QChar c : Piece) {
        const char16_t u = c.unicode();
        if (u == u' ' || u == u'\t' || u == u'\n' || u == u'\r')
            continue;
        const bool digit = u >= u'0' && u <= u'9';
        if (state == Sign && (u == u'+' || u == u'-')) {
            state = Whole;
        } else if ((state == Sign || state == Whole) && digit) {
            state = Whole;
        } else if ((state == Sign || state == Whole) && u == u'.') {
            state = Fraction;
        } else if (state == Fraction && digit) {
        } else if ((state == Whole || state == Fraction) && u == u'e' && validLength > 0) {
            state = ExpSign;
        } else if (state == ExpSign && (u == u'+' || u == u'-')) {
            state = Exponent;
        } else if ((state == ExpSign || state == Exponent) && digit) {
            state = Exponent;
        } else {
            break;
        }
        digits.push_back(static_cast<char>(u));
        if (digit)
            validLength = digits.size();
    }
    if (validLength == 0)
        return 0.0;
    double value = 0.0;
    const char* first = digits.data();
    const char* last = digits.data() + validLength;
    if (*first == '+')
        ++first;
    const auto [ptr, ec] = std::from_chars(first, last, value);
    if (ec != std::errc() || ptr == first || !std::isfinite(value))
        throw ConversionError();
    return value;
}

// Position of c in Text at or after From, or -1. Plain search: QStringView::indexOf with a
// single character goes through the general substring search, several times slower on
// the short distances searched here.
qsizetype IndexOf(QStringView Text, char16_t c, qsizetype From = 0)
{
    if (From >= Text.size())
        return -1;
    const char16_t* begin = Text.utf16();
    const char16_t* end = begin + Text.size();
    const char16_t* at = std::find(begin + From, end, c);
    return at == end ? -1 : at - begin;
}

// A plain integer (blanks and line breaks ignored, as ReadNumber ignores them), or
// nothing when the piece needs the full number rules.
std::optional<std::int32_t> PlainInteger(QStringView Piece)
{
    std::int64_t value = 0;
    int digits = 0;
    bool negative = false;
    for (QChar c : Piece) {
        const char16_t u = c.unicode();
        if (u == u' ' || u == u'\t' || u == u'\n' || u == u'\r')
            continue;
        if (u == u'-' && digits == 0 && !negative) {
            negative = true;
            continue;
        }
        if (u < u'0' || u > u'9' || ++digits > 9)
            return std::nullopt;
        value = value * 10 + (u - u'0');
    }
    if (digits == 0)
        return std::nullopt;
    return static_cast<std::int32_t>(negative ? -value : value);
}

std::int32_t ReadCoordinate(QStringView Piece)
{
    if (const std::optional<std::int32_t> plain = PlainInteger(Piece))
        return *plain;
    try {
        return RoundToInt32(ReadNumber(Piece));
    } catch (const OverflowError&) {
        throw ConversionError();
    }
}

std::int32_t Checked(std::int64_t value)
{
    try {
        return ToInt32(value);
    } catch (const OverflowError&) {
        throw ConversionError();
    }
}

// Splits at commas, keeping at most MaxPieces pieces (the rest are not needed).
std::vector<QStringView> SplitCoords(QStringView List, std::size_t MaxPieces)
{
    std::vector<QStringView> pieces;
    pieces.reserve(std::min<std::size_t>(MaxPieces, 16));
    qsizetype from = 0;
    while (pieces.size() < MaxPieces) {
        const qsizetype comma = IndexOf(List, u',', from);
        if (comma < 0) {
            pieces.push_back(List.sliced(from));
            break;
        }
        pieces.push_back(List.sliced(from, comma - from));
        from = comma + 1;
    }
    return pieces;
}

std::vector<ShapePoint> BuildPoints(std::int16_t Type, QStringView List)
{
    if (Type == Rectangle) {
        const auto c = SplitCoords(List, 4);
        if (c.size() < 4)
            throw ConversionError();
        const std::int32_t x0 = ReadCoordinate(c[0]), y0 = ReadCoordinate(c[1]);
        const std::int32_t x1 = ReadCoordinate(c[2]), y1 = ReadCoordinate(c[3]);
        return {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
    }
    if (Type == Circle) {
        const auto c = SplitCoords(List, 3);
        if (c.size() < 3)
            throw ConversionError();
        const std::int64_t cx = ReadCoordinate(c[0]), cy = ReadCoordinate(c[1]);
        const std::int64_t r = ReadCoordinate(c[2]);
        const std::int32_t left = Checked(cx - r), right = Checked(cx + r);
        const std::int32_t top = Checked(cy - r), bottom = Checked(cy + r);
        return {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
    }
    // A polygon's point count is 16-bit: one piece more than 2 * 32768 is an overflow.
    const auto c = SplitCoords(List, 2 * 32768 + 2);
    const std::size_t count = c.size() / 2;
    if (count == 0 || count > 32768)
        throw ConversionError();
    std::vector<ShapePoint> points(count);
    for (std::size_t i = 0; i < count; ++i)
        points[i] = {ReadCoordinate(c[2 * i]), ReadCoordinate(c[2 * i + 1])};
    return points;
}

// Text.toLower(), with plain ASCII text (nearly all pasted HTML) lowered without the
// Unicode case tables, which cost more than the rest of the conversion together.
QString Lowered(const QString& Text)
{
    if (!std::all_of(Text.cbegin(), Text.cend(), [](QChar c) { return c.unicode() < 0x80; }))
        return Text.toLower();
    QString lowered(Text.size(), Qt::Uninitialized);
    std::transform(Text.cbegin(), Text.cend(), lowered.begin(), [](QChar c) {
        return c >= QLatin1Char('A') && c <= QLatin1Char('Z') ? QChar(c.unicode() + 32) : c;
    });
    return lowered;
}

HtmlImporter::Result Failure(const QString& message, const QString& detail = QString())
{
    HtmlImporter::Result result;
    result.message = message;
    result.detail = detail;
    return result;
}

enum class Attribute { Shape, Href, Target, Alt, Coords };
constexpr std::size_t AttributeCount = 5;
constexpr QStringView AttributeNames[AttributeCount] = {u" shape=", u" href=", u" target=",
                                                        u" alt=", u" coords="};

// One area element of the lower-cased text: attributes are searched in [start, end),
// quoted values must close before limit.
class AreaReader
{
public:
    // Finds the first place of every attribute in one pass over the area's blanks (each
    // name starts with one), instead of one substring search per attribute.
    AreaReader(QStringView Text, qsizetype Start, qsizetype End, qsizetype Limit)
        : m_text(Text), m_start(Start), m_end(End), m_limit(Limit)
    {
        m_found.fill(-1);
        const QStringView area = m_text.sliced(m_start, m_end - m_start);
        for (qsizetype at = IndexOf(area, u' '); at >= 0; at = IndexOf(area, u' ', at + 1)) {
            const QStringView rest = area.sliced(at);
            for (std::size_t a = 0; a < AttributeCount; ++a) {
                if (m_found[a] < 0 && rest.startsWith(AttributeNames[a])) {
                    m_found[a] = m_start + at;
                    break;
                }
            }
        }
    }

    qsizetype Find(Attribute Name) const { return m_found[static_cast<std::size_t>(Name)]; }

    // The value right after the attribute's name and its opening quote, up to the next
    // double quote.
    std::optional<QStringView> Value(Attribute Name) const
    {
        const qsizetype at = Find(Name);
        if (at < 0)
            return std::nullopt;
        const qsizetype from = at + AttributeNames[static_cast<std::size_t>(Name)].size() + 1;
        if (from > m_limit)
            throw ConversionError{ConversionError::Unclosed};
        const qsizetype quote = IndexOf(m_text.sliced(from, m_limit - from), u'"');
        if (quote < 0)
            throw ConversionError{ConversionError::Unclosed};
        return m_text.sliced(from, quote);
    }

    QString Text(Attribute Name) const
    {
        const auto value = Value(Name);
        return value ? value->toString() : QString();
    }

private:
    QStringView m_text;
    qsizetype m_start;
    qsizetype m_end;
    qsizetype m_limit;
    std::array<qsizetype, AttributeCount> m_found{};
};

} // namespace

HtmlImporter::Result HtmlImporter::Convert(const QString& Text, const MapDocument& Document)
{
    // Everything works on the lower-cased copy: imported names and URLs come out lower case.
    QString s = Lowered(Text);
    s.replace(QLatin1String(" shape=rect "), QLatin1String(" shape=\"rect\" "));
    s.replace(QLatin1String(" shape=default "), QLatin1String(" shape=\"default\" "));
    s.replace(QLatin1String(" shape=circle "), QLatin1String(" shape=\"circle\" "));
    s.replace(QLatin1String(" shape=polygon "), QLatin1String(" shape=\"polygon\" "));
    const QStringView text(s);
    const qsizetype length = text.size();

    const qsizetype mapTag = text.indexOf(QLatin1String("<map "));
    if (mapTag < 0)
        return Failure(QStringLiteral("Map tag not found."));
    const qsizetype name = text.indexOf(QLatin1String(" name="), mapTag);
    if (name < 0)
        return Failure(QStringLiteral("Map name not found."));
    // The name is checked for but not used: the map keeps its own name.
    if (name + 7 > length || text.indexOf(QLatin1Char('"'), name + 7) < 0)
        return Failure(ErrorMessage,
                       QStringLiteral("The map's name is not closed with a double quote."));

    std::vector<qsizetype> starts;
    // One matcher for every search: a plain indexOf on text this long rebuilds its skip
    // table on each call, which costs more than the search itself.
    const QStringMatcher areaTag(u"<area ");
    for (qsizetype at = areaTag.indexIn(text, mapTag); at >= 0; at = areaTag.indexIn(text, at + 1))
        starts.push_back(at);
    if (starts.empty())
        return Failure(QStringLiteral("No shape objects found."));

    Result result;
    std::size_t i = 0; // the area being read, for the message
    try {
        qsizetype close = -1; // the last '>' found; areas only move forward
        for (; i < starts.size(); ++i) {
            const qsizetype start = starts[i];
            const qsizetype limit = i + 1 < starts.size() ? starts[i + 1] : length;
            if (close < start)
                close = IndexOf(text, u'>', start);
            if (close < 0)
                throw ConversionError{ConversionError::NoEnd}; // so no coords before it
            const AreaReader area(text, start, std::min(close, limit), limit);

            const qsizetype shapeAt = area.Find(Attribute::Shape);
            const QChar letter = shapeAt >= 0 && shapeAt + 8 < length ? text[shapeAt + 8] : QChar();
            std::int16_t type = -1;
            if (letter == QLatin1Char('r'))
                type = Rectangle;
            else if (letter == QLatin1Char('c'))
                type = Circle;
            else if (letter == QLatin1Char('p'))
                type = Polygon;

            const QString href = area.Text(Attribute::Href);
            const QString target = area.Text(Attribute::Target);
            const QString alt = area.Text(Attribute::Alt);
            const auto coords = area.Value(Attribute::Coords);
            if (!coords)
                throw ConversionError{ConversionError::NoCoords};

            if (type < 0) {
                result.DefURL = href;
                result.DefComment = alt;
                result.DefTarget = target;
                continue;
            }
            if (result.shapes.size() >= 32768)
                throw TooManyAreas(); // the shape list is 16-bit
            const std::vector<ShapePoint> points = BuildPoints(type, *coords);
            PatShape shape;
            shape.ResetInfo(type, true, Document.NonFocusColor, href, alt, target, QString(), 0,
                            QString());
            shape.ResetPoints(static_cast<std::int16_t>(points.size() - 1));
            for (std::size_t p = 0; p < points.size(); ++p)
                shape.SetPoint(static_cast<std::int16_t>(p), points[p].x, points[p].y);
            shape.SetOpenGeneralInfo(Document.Surface(), 1.0);
            if (Document.ZoomLevel != 1.0)
                shape.ResetPointsToZoom(Document.ZoomLevel);
            result.shapes.push_back(std::move(shape));
        }
    } catch (const TooManyAreas&) {
        return Failure(ErrorMessage, MapFile::TooManyShapesDetail());
    } catch (const ConversionError& error) {
        return Failure(ErrorMessage, AreaDetail(i, error.kind));
    } catch (const std::exception&) {
        return Failure(ErrorMessage);
    }
    result.ok = true;
    return result;
}

void HtmlImporter::Apply(const Result& result, MapDocument& Document)
{
    if (!result.ok)
        return;
    std::vector<PatShape> shapes = result.shapes;
    for (PatShape& shape : shapes) {
        // The map window may have changed the zoom since the conversion.
        if (shape.Zoom() != Document.ZoomLevel)
            shape.ResetPointsToZoom(Document.ZoomLevel);
        shape.SetOpenGeneralInfo(Document.Surface(), Document.ZoomLevel);
    }
    Document.DefURL = result.DefURL;
    Document.DefComment = result.DefComment;
    Document.DefTarget = result.DefTarget;
    Document.DefStatus.clear();
    Document.DefAlert.clear();
    Document.DefAlertVal = 0;
    const auto last = static_cast<std::int16_t>(static_cast<std::int32_t>(shapes.size()) - 1);
    Document.ResizeShapeArray(last, true);
    Document.ReSetShapeArray(shapes, last);
}
