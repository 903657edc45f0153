#pragma once

#include <QString>
#include <optional>

// A number box paired with a scroll bar: typing moves the bar while the number is in
// the bar's range, leaving the box puts an out-of-range text back to the bar's value,
// and moving the bar rewrites the text.
class SteppedNumberEntry
{
public:
    SteppedNumberEntry(int Minimum, int Maximum);

    int Minimum() const { return m_minimum; }
    int Maximum() const { return m_maximum; }
    // The bar's new value for a changed text, or nothing while the number is out of range.
    std::optional<int> ScrollValueFor(const QString& Text) const;
    // The text the box holds once the focus has left it.
    QString TextOnLeave(const QString& Text, int ScrollValue) const;
    static QString TextFor(int ScrollValue) { return QString::number(ScrollValue); }

private:
    bool InRange(double Value) const { return Value >= m_minimum && Value <= m_maximum; }

    int m_minimum;
    int m_maximum;
};
