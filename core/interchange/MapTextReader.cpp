#include "core/interchange/MapTextReader.h"

#include "core/base/Numeric.h"

#include <QLocale>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif
#include <QStringDecoder>
#include <QtAlgorithms>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

bool IsDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

bool IsSign(QChar c)
{
    return c == QLatin1Char('+') || c == QLatin1Char('-');
}

// Optional sign and decimal digits, between any blanks; the value must lie within
// [low, high].
std::int64_t ToInteger(QStringView text, std::int64_t low, std::int64_t high)
{
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

// The blanks a line may hold around a number: QChar::isSpace below 0x80 but the line
// feed, which ends the line (tab, vertical tab, form feed, carriage return, space).
bool IsLineBlank(char c)
{
    const auto code = static_cast<unsigned char>(c);
    return code <= ' ' && ((std::uint64_t(0x100003A00) >> code) & 1) != 0;
}

// The digits at the start of the eight bytes at p, read together: their count, and their
// value when there are fewer than eight (most numbers of a map).
Q_ALWAYS_INLINE int LeadingDigits(const char* p, std::uint64_t& Value)
{
    std::uint64_t chunk = 0;
    std::memcpy(&chunk, p, sizeof chunk);
    // Digits become 0 to 9 in their byte; the others have a high nibble here (a carry out
    // of a byte only disturbs the bytes after it, past the first non-digit).
    const std::uint64_t x = chunk ^ 0x3030303030303030u;
    const std::uint64_t others = (x | (x + 0x0606060606060606u)) & 0xF0F0F0F0F0F0F0F0u;
    if (others == 0)
        return 8;
    const int count = qCountTrailingZeroBits(others) / 8;
    if (count == 0)
        return 0;
    // The digits to the top bytes (first digit first), then pairs, fours, all.
    std::uint64_t v = x << (64 - 8 * count);
    v = ((v & 0x0F0F0F0F0F0F0F0Fu) * 2561) >> 8;
    v = ((v & 0x00FF00FF00FF00FFu) * 6553601) >> 16;
    Value = ((v & 0x0000FFFF0000FFFFu) * 42949672960001u) >> 32;
    return count;
}

// Scans a number of the form the writer leaves, in place: blanks, an optional sign, 1 to
// 18 digits (too few to overflow), blanks. Returns where it stopped; Plain is false when
// the form did not hold, and then the full rule on the decoded text decides.
Q_ALWAYS_INLINE const char* ScanInteger(const char* p, const char* end, std::int64_t& Value,
                                        bool& Plain)
{
    while (p != end && IsLineBlank(*p))
        ++p;
    bool negative = false;
    if (p != end && (*p == '-' || *p == '+')) {
        negative = *p == '-';
        ++p;
    }
    const char* const digits = p;
    std::uint64_t value = 0;
    if (end - p >= 8) {
        const int count = LeadingDigits(p, value);
        if (count < 8) {
            p += count;
            Plain = count > 0;
            while (p != end && IsLineBlank(*p))
                ++p;
            Value = negative ? -static_cast<std::int64_t>(value) : static_cast<std::int64_t>(value);
            return p;
        }
    }
    for (; p != end; ++p) {
        const unsigned digit = static_cast<unsigned char>(*p) - unsigned('0');
        if (digit > 9)
            break;
        value = value * 10 + digit;
    }
    Plain = p != digits && p - digits <= 18;
    while (p != end && IsLineBlank(*p))
        ++p;
    Value = negative ? -static_cast<std::int64_t>(value) : static_cast<std::int64_t>(value);
    return p;
}

// One line of the text, every character kept: QString::fromUtf8 would drop a byte-order
// mark at its start, which only the start of the whole file may lose.
QString FromUtf8(QByteArrayView line)
{
    QStringDecoder utf8(QStringDecoder::Utf8,
                        QStringDecoder::Flag::ConvertInitialBom | QStringDecoder::Flag::Stateless);
    return utf8(line);
}

std::int64_t InRange(std::int64_t value, std::int64_t low, std::int64_t high)
{
    if (value < low || value > high)
        throw MapTextReader::FormatError();
    return value;
}

} // namespace

MapTextReader::MapTextReader(QByteArray Utf8, bool Ascii) : m_text(std::move(Utf8)), m_ascii(Ascii)
{
}

MapTextReader::MapTextReader(QByteArray Utf8, bool Ascii, qsizetype Position)
    : m_text(std::move(Utf8)), m_ascii(Ascii), m_pos(Position), m_valueStart(Position)
{
}

MapTextReader MapTextReader::Fork() const
{
    return MapTextReader(m_text, m_ascii, m_pos);
}

void MapTextReader::SkipLines(qsizetype Count)
{
    const char* p = m_text.constData() + std::min(m_pos, m_text.size());
    const char* const end = m_text.constData() + m_text.size();
#if defined(__SSE2__)
    // Line ends counted a stretch at a time, 16 bytes in a step, up to 255 in each byte of
    // the sum: this passes over half of a big map's lines. The stretch that holds the last
    // one is left to the line-by-line search below.
    constexpr qsizetype Stretch = 255 * 16;
    const __m128i lineEnd = _mm_set1_epi8('\n');
    while (Count > 0 && end - p >= Stretch) {
        __m128i sums = _mm_setzero_si128();
        for (qsizetype i = 0; i < Stretch; i += 16)
            sums = _mm_sub_epi8(
                sums,
                _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i)), lineEnd));
        const __m128i total = _mm_sad_epu8(sums, _mm_setzero_si128());
        const qsizetype here = _mm_cvtsi128_si32(total) + _mm_extract_epi16(total, 4);
        if (here >= Count)
            break;
        Count -= here;
        p += Stretch;
    }
#endif
    for (; Count > 0; --Count) {
        const auto* lineEnd = static_cast<const char*>(std::memchr(p, '\n', size_t(end - p)));
        if (lineEnd == nullptr)
            throw FormatError();
        p = lineEnd + 1;
    }
    m_pos = p - m_text.constData();
}

Q_ALWAYS_INLINE QByteArrayView MapTextReader::NextLine()
{
    const qsizetype size = m_text.size();
    if (m_pos >= size)
        throw FormatError();
    const char* const start = m_text.constData() + m_pos;
    const auto* lineEnd = static_cast<const char*>(std::memchr(start, '\n', size_t(size - m_pos)));
    qsizetype length = lineEnd != nullptr ? lineEnd - start : size - m_pos;
    m_pos += length + 1;
    if (length > 0 && start[length - 1] == '\r')
        --length;
    return QByteArrayView(start, length);
}

QString MapTextReader::Text(QByteArrayView Line) const
{
    return m_ascii ? QString::fromLatin1(Line) : FromUtf8(Line);
}

Q_ALWAYS_INLINE QString MapTextReader::Value(QByteArrayView Line)
{
    const auto ascii = [](QByteArrayView line) {
        return std::all_of(line.begin(), line.end(),
                           [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    };
    const qsizetype readable = m_text.constData() + m_text.size() - Line.data();
    return m_ascii || ascii(Line) ? m_packed.Ascii(Line, readable) : FromUtf8(Line);
}

QString MapTextReader::String()
{
    m_valueStart = m_pos;
    return Value(NextLine());
}

std::int64_t MapTextReader::Integer(std::int64_t Low, std::int64_t High)
{
    m_valueStart = m_pos;
    const char* const text = m_text.constData();
    const char* const end = text + m_text.size();
    const char* const p = text + m_pos;
    // As the writer leaves it: a blank or a minus sign, up to seven digits, a blank, CR LF.
    if (end - p >= 11 && (*p == ' ' || *p == '-')) {
        std::uint64_t digits = 0;
        const int count = LeadingDigits(p + 1, digits);
        if (count > 0 && count < 8 && p[count + 1] == ' ' && p[count + 2] == '\r' &&
            p[count + 3] == '\n') {
            m_pos += count + 4;
            const auto value = static_cast<std::int64_t>(digits);
            return InRange(*p == '-' ? -value : value, Low, High);
        }
    }
    if (m_pos < m_text.size()) {
        std::int64_t value = 0;
        bool plain = false;
        const char* const stop = ScanInteger(text + m_pos, end, value, plain);
        if (plain && (stop == end || *stop == '\n')) {
            m_pos = stop - text + 1;
            return InRange(value, Low, High);
        }
    }
    return ToInteger(Text(NextLine()), Low, High);
}

std::int16_t MapTextReader::Int16()
{
    return static_cast<std::int16_t>(Integer(std::numeric_limits<std::int16_t>::min(),
                                             std::numeric_limits<std::int16_t>::max()));
}

std::int32_t MapTextReader::Int32()
{
    return static_cast<std::int32_t>(Integer(std::numeric_limits<std::int32_t>::min(),
                                             std::numeric_limits<std::int32_t>::max()));
}

double MapTextReader::Double()
{
    m_valueStart = m_pos;
    const QString line = Text(NextLine());
    const QStringView text = QStringView(line).trimmed();
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
    m_valueStart = m_pos;
    const QString line = Text(NextLine());
    const QStringView text = QStringView(line).trimmed();
    if (text.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
        return true;
    if (text.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
        return false;
    return ToInteger(text, std::numeric_limits<std::int32_t>::min(),
                     std::numeric_limits<std::int32_t>::max()) != 0;
}

std::vector<ShapePoint> MapTextReader::Points()
{
    m_valueStart = m_pos;
    if (m_pos >= m_text.size())
        throw FormatError();
    std::vector<ShapePoint> points;
    if (!PlainPoints(points))
        points = AnyPoints();
    return points;
}

bool MapTextReader::PlainPoints(std::vector<ShapePoint>& Points)
{
    const char* const text = m_text.constData();
    const char* const end = text + m_text.size();
    const char* p = text + m_pos;
    qsizetype values = 0;
    const auto put = [&](std::int32_t value) {
        if (values == qsizetype(m_values.size()))
            m_values.resize(2 * m_values.size() + 64);
        m_values[std::size_t(values++)] = value;
    };
    // As the writer leaves a piece: maybe a minus sign, one to seven digits. From Start,
    // through End.
    const auto writerPiece = [&](const char* start, const char* pieceEnd) {
        const bool negative = *start == '-';
        std::uint64_t digits = 0;
        const int count = LeadingDigits(start + int(negative), digits);
        if (count == 0 || count > 7 || start + int(negative) + count != pieceEnd)
            return false;
        const auto value = static_cast<std::int32_t>(digits);
        put(negative ? -value : value);
        return true;
    };
#if defined(__SSE2__)
    // The commas of 16 bytes at once: each piece then parses on its own rather than after
    // the one before it. Eight bytes past every piece's start may be read.
    const __m128i comma = _mm_set1_epi8(',');
    const __m128i feed = _mm_set1_epi8('\n');
    for (const char* chunk = p; end - chunk >= 25; chunk += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(chunk));
        auto commas = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, comma)));
        const auto feeds = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, feed)));
        if (feeds != 0)
            commas &= (feeds & (0u - feeds)) - 1;
        for (; commas != 0; commas &= commas - 1) {
            const char* const at = chunk + qCountTrailingZeroBits(commas);
            if (!writerPiece(p, at))
                return false;
            p = at + 1;
        }
        if (feeds != 0)
            break;
    }
#endif
    // Pieces after the values: 1 for the empty piece a trailing comma leaves, else 0.
    qsizetype after = 0;
    for (;;) {
        if (end - p >= 9) {
            const char* const at = static_cast<const char*>(std::memchr(p, ',', 9));
            if (at != nullptr && writerPiece(p, at)) {
                p = at + 1;
                continue;
            }
        }
        const char* stop = p;
        while (stop != end && IsLineBlank(*stop))
            ++stop;
        if (stop == end || *stop == '\n') {
            after = 1;
            p = stop;
            break;
        }
        std::int64_t value = 0;
        bool plain = false;
        stop = ScanInteger(stop, end, value, plain);
        if (!plain || value < std::numeric_limits<std::int32_t>::min() ||
            value > std::numeric_limits<std::int32_t>::max())
            return false;
        put(static_cast<std::int32_t>(value));
        p = stop;
        if (p == end || *p == '\n')
            break;
        if (*p != ',')
            return false;
        ++p;
    }
    if (values > 0) {
        const qsizetype u = values + after - 1;
        const std::int64_t count = RoundHalfEven(static_cast<double>(u) / 2.0 - 1.0) + 1;
        // A taken piece that holds no number is for the full rule to refuse.
        if (2 * count > values)
            return false;
        Points.resize(static_cast<std::size_t>(count));
        for (std::size_t j = 0; j < Points.size(); ++j)
            Points[j] = {m_values[2 * j], m_values[2 * j + 1]};
    }
    m_pos = p - text + 1;
    return true;
}

std::vector<ShapePoint> MapTextReader::AnyPoints()
{
    // One pass over the line scans every piece between commas (a comma byte is a comma
    // in UTF-8, so the pieces are those of the decoded text); only then is it known how
    // many are taken, and an unusual piece that is not taken must not fail the line.
    const char* const text = m_text.constData();
    const char* const end = text + m_text.size();
    const char* const lineStart = text + m_pos;
    const char* p = lineStart;
    m_pieces.clear();
    for (;;) {
        Piece& piece = m_pieces.emplace_back();
        piece.begin = p;
        p = ScanInteger(p, end, piece.value, piece.plain);
        if (p != end && *p != ',' && *p != '\n') {
            piece.plain = false;
            while (p != end && *p != ',' && *p != '\n')
                ++p;
        }
        piece.end = p;
        if (p == end || *p == '\n')
            break;
        ++p;
    }
    m_pos = p - text + 1;
    // The line without its line end; an empty one splits into no pieces at all (u = -1).
    const bool empty = p == lineStart || (p - lineStart == 1 && *lineStart == '\r');
    const qsizetype u = empty ? -1 : qsizetype(m_pieces.size()) - 1;
    const std::int64_t count = RoundHalfEven(static_cast<double>(u) / 2.0 - 1.0) + 1;
    std::vector<ShapePoint> points;
    if (count <= 0)
        return points;
    if (2 * count > std::int64_t(m_pieces.size()))
        throw FormatError();
    points.resize(static_cast<std::size_t>(count));
    const auto number = [&](const Piece& piece) {
        constexpr std::int64_t low = std::numeric_limits<std::int32_t>::min();
        constexpr std::int64_t high = std::numeric_limits<std::int32_t>::max();
        // A trailing CR left on the last piece is a blank to the full rule as well.
        return static_cast<std::int32_t>(
            piece.plain ? InRange(piece.value, low, high)
                        : ToInteger(Text(QByteArrayView(piece.begin, piece.end)), low, high));
    };
    for (std::size_t j = 0; j < points.size(); ++j)
        points[j] = {number(m_pieces[2 * j]), number(m_pieces[2 * j + 1])};
    return points;
}

int MapTextReader::LineOfLastValue() const
{
    const qsizetype start = std::min(m_valueStart, m_text.size());
    return int(QByteArrayView(m_text.constData(), start).count('\n')) + 1;
}

int MapTextReader::LineCount() const
{
    const bool open = !m_text.isEmpty() && !m_text.endsWith('\n');
    return int(QByteArrayView(m_text).count('\n')) + (open ? 1 : 0);
}

QString MapTextReader::LastValueText() const
{
    if (LastValueMissing())
        return QString();
    const qsizetype end = m_text.indexOf('\n', m_valueStart);
    QByteArrayView line(m_text.constData() + m_valueStart,
                        (end < 0 ? m_text.size() : end) - m_valueStart);
    if (line.endsWith('\r'))
        line.chop(1);
    return Text(line);
}
