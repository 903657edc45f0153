#include "interchange/MapTextWriter.h"

#include <cmath>

namespace {

const QLatin1String LineEnd("\r\n");

QString Signed(const QString& digits)
{
    return digits.startsWith(QLatin1Char('-')) ? digits + QLatin1Char(' ')
                                               : QLatin1Char(' ') + digits + QLatin1Char(' ');
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
    const qsizetype start = m_text.size();
    m_text += Value;
    for (qsizetype i = start; i < m_text.size(); ++i) {
        const QChar c = m_text.at(i);
        if (c == QLatin1Char('\r') || c == QLatin1Char('\n') || c.unicode() == 0)
            m_text[i] = QLatin1Char(' ');
    }
    EndLine();
}

QString MapTextWriter::IntegerText(std::int64_t Value)
{
    return Signed(QString::number(Value));
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
    m_text += IntegerText(Value);
    EndLine();
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
    for (const ShapePoint& p : Points) {
        m_text += QString::number(p.x);
        m_text += QLatin1Char(',');
        m_text += QString::number(p.y);
        m_text += QLatin1Char(',');
    }
    EndLine();
}
