#include "core/interchange/MapTextReader.h"

#include "core/base/Numeric.h"

#include <QLocale>
#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Plain searches over the UTF-16 data: QStringView's single-character indexOf and count
// go through the general substring search, which costs several times more per line.
qsizetype IndexOf(QStringView text, char16_t c, qsizetype from)
{
    const char16_t* begin = text.utf16();
    const char16_t* end = begin + text.size();
    const char16_t* at = std::find(begin + std::min(from, text.size()), end, c);
    return at == end ? -1 : at - begin;
}

qsizetype Count(QStringView text, char16_t c)
{
    return std::count(text.utf16(), text.utf16() + text.size(), c);
}

bool IsDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

bool IsSign(QChar c)
{
    return c == QLatin1Char('+') || c == QLatin1Char('-');
}

// Optional sign and decimal digits; the value must lie within [low, high].
std::int64_t ToInteger(QStringView text, std::int64_t low, std::int64_t high)
{
    // Most numbers come untrimmed-clean; trimming them anyway costs a call each.
    if (!text.isEmpty() && (text.front().isSpace() || text.back().isSpace()))
        text = text.trimmed();
    qsizetype i = 0;
    const bool negative = !text.isEmpty() && text.front() == QLatin1Char('-');
    if (!text.isEmpty() && IsSign(text.front()))
        ++i;
    if (i == text.size())
        throw MapTextReader::FormatError();
    std::int64_t value = 0;
    for (; i < text.size(); ++i) {
        if (!IsDigit(text[i]))
            throw MapTextReader::FormatError();
        value = value * 10 + (text[i].unicode() - '0');
        if (value > high - low) // far enough out to stop before the sum can overflow
            throw MapTextReader::FormatError();
    }
    if (negative)
        value = -value;
    if (value < low || value > high)
        throw MapTextReader::FormatError();
    return value;
}

// sign? digits? ("." digits?)? (("e" | "E") sign? digits)?, with at least one digit
// before the exponent.
bool IsDecimal(QStringView text)
{
    qsizetype i = 0;
    const qsizetype n = text.size();
    if (i < n && IsSign(text[i]))
        ++i;
    qsizetype digits = 0;
    for (; i < n && IsDigit(text[i]); ++i)
        ++digits;
    if (i < n && text[i] == QLatin1Char('.')) {
        for (++i; i < n && IsDigit(text[i]); ++i)
            ++digits;
    }
    if (digits == 0)
        return false;
    if (i < n && (text[i] == QLatin1Char('e') || text[i] == QLatin1Char('E'))) {
        ++i;
        if (i < n && IsSign(text[i]))
            ++i;
        const qsizetype start = i;
        for (; i < n && IsDigit(text[i]); ++i) {
        }
        if (i == start)
            return false;
    }
    return i == n;
}

} // namespace

MapTextReader::MapTextReader(QString Text) : m_text(std::move(Text)) {}

QStringView MapTextReader::NextLine()
{
    if (m_pos >= m_text.size())
        throw FormatError();
    qsizetype end = IndexOf(m_text, u'\n', m_pos);
    if (end < 0)
        end = m_text.size();
    QStringView line = QStringView(m_text).mid(m_pos, end - m_pos);
    m_pos = end + 1;
    if (line.endsWith(QLatin1Char('\r')))
        line.chop(1);
    return line;
}

qsizetype MapTextReader::LinesLeft() const
{
    if (m_pos >= m_text.size())
        return 0;
    const QStringView rest = QStringView(m_text).mid(m_pos);
    return Count(rest, u'\n') + (rest.endsWith(QLatin1Char('\n')) ? 0 : 1);
}

QString MapTextReader::String()
{
    return NextLine().toString();
}

std::int16_t MapTextReader::Int16()
{
    return static_cast<std::int16_t>(ToInteger(NextLine(), std::numeric_limits<std::int16_t>::min(),
                                               std::numeric_limits<std::int16_t>::max()));
}

std::int32_t MapTextReader::Int32()
{
    return static_cast<std::int32_t>(ToInteger(NextLine(), std::numeric_limits<std::int32_t>::min(),
                                               std::numeric_limits<std::int32_t>::max()));
}

double MapTextReader::Double()
{
    const QStringView text = NextLine().trimmed();
    if (!IsDecimal(text))
        throw FormatError();
    bool ok = false;
    const double value = QLocale::c().toDouble(text, &ok);
    if (!ok || !std::isfinite(value))
        throw FormatError();
    return value;
}

bool MapTextReader::Boolean()
{
    const QStringView text = NextLine().trimmed();
    if (text.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
        return true;
    if (text.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
        return false;
    return ToInteger(text, std::numeric_limits<std::int32_t>::min(),
                     std::numeric_limits<std::int32_t>::max()) != 0;
}

std::vector<ShapePoint> MapTextReader::Points()
{
    const QStringView line = NextLine();
    // An empty line splits into no pieces at all (u = -1).
    const qsizetype u = line.isEmpty() ? -1 : Count(line, u',');
    const std::int64_t count = RoundHalfEven(static_cast<double>(u) / 2.0 - 1.0) + 1;
    std::vector<ShapePoint> points;
    if (count <= 0)
        return points;
    points.reserve(static_cast<std::size_t>(count));
    qsizetype start = 0;
    const auto nextPiece = [&]() {
        qsizetype end = IndexOf(line, u',', start);
        if (end < 0)
            end = line.size();
        const QStringView piece = line.mid(start, end - start);
        start = end + 1;
        return static_cast<std::int32_t>(ToInteger(piece, std::numeric_limits<std::int32_t>::min(),
                                                   std::numeric_limits<std::int32_t>::max()));
    };
    for (std::int64_t j = 0; j < count; ++j) {
        const std::int32_t x = nextPiece();
        const std::int32_t y = nextPiece();
        points.push_back({x, y});
    }
    return points;
}
