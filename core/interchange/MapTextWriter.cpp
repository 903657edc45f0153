#include "core/interchange/MapTextWriter.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace {

const QLatin1String LineEnd("\r\n");

// Room for any 64-bit integer and its sign.
constexpr std::size_t DigitsRoom = 24;

bool IsBreak(QChar c)
{
    return c == QLatin1Char('\r') || c == QLatin1Char('\n') || c.unicode() == 0;
}

QString Signed(const QString& digits)
{
    return digits.startsWith(QLatin1Char('-')) ? digits + QLatin1Char(' ')
                                               : QLatin1Char(' ') + digits + QLatin1Char(' ');
}

// Appends Value's decimal digits to the buffer at End; returns the new end.
char* AppendDigits(char* End, std::int64_t Value)
{
    return std::to_chars(End, End + DigitsRoom, Value).ptr;
}

} // namespace

MapTextWriter::MapTextWriter(qsizetype Reserve)
{
    m_text.reserve(Reserve);
}

void MapTextWriter::EndLine()
{
    m_text += LineEnd;
}

void MapTextWriter::String(const QString& Value)
{
    if (std::none_of(Value.cbegin(), Value.cend(), IsBreak)) {
        m_text += Value;
    } else {
        QString clean = Value;
        std::replace_if(clean.begin(), clean.end(), IsBreak, QLatin1Char(' '));
        m_text += clean;
    }
    EndLine();
}

QString MapTextWriter::IntegerText(std::int64_t Value)
{
    char digits[DigitsRoom + 2];
    char* end = digits;
    if (Value >= 0)
        *end++ = ' ';
    end = AppendDigits(end, Value);
    *end++ = ' ';
    return QString::fromLatin1(digits, end - digits);
}

QString MapTextWriter::DoubleText(double Value)
{
    if (Value == 0.0 || !std::isfinite(Value))
        Value = 0.0; // no "-0", and nothing a reader could not convert back
    QString digits = QString::number(Value, 'g', 15).toUpper();
    if (digits.startsWith(QLatin1String("0.")))
        digits.remove(0, 1);
    else if (digits.startsWith(QLatin1String("-0.")))
        digits.remove(1, 1);
    return Signed(digits);
}

void MapTextWriter::Integer(std::int64_t Value)
{
    char digits[DigitsRoom + 4];
    char* end = digits;
    if (Value >= 0)
        *end++ = ' ';
    end = AppendDigits(end, Value);
    *end++ = ' ';
    *end++ = '\r';
    *end++ = '\n';
    m_text += QLatin1String(digits, end - digits);
}

void MapTextWriter::Double(double Value)
{
    m_text += DoubleText(Value);
    EndLine();
}

void MapTextWriter::Boolean(bool Value)
{
    m_text += Value ? QLatin1String("True") : QLatin1String("False");
    EndLine();
}

void MapTextWriter::Points(const std::vector<ShapePoint>& Points)
{
    std::string line;
    line.resize(Points.size() * (2 * DigitsRoom + 2) + 2);
    char* end = line.data();
    for (const ShapePoint& p : Points) {
        end = AppendDigits(end, p.x);
        *end++ = ',';
        end = AppendDigits(end, p.y);
        *end++ = ',';
    }
    *end++ = '\r';
    *end++ = '\n';
    m_text += QLatin1String(line.data(), end - line.data());
}
