#pragma once

#include "core/shape/ShapeGeometry.h"

#include <QString>
#include <QStringView>
#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <vector>

// Reads the values of a map file's text one line at a time. Lines end with LF or CR LF.
// Numeric and boolean lines are trimmed before conversion. Every read throws FormatError
// when the line is missing or does not convert; nothing is ever guessed.
class MapTextReader
{
public:
    class FormatError : public std::runtime_error
    {
    public:
        FormatError() : std::runtime_error("Not a map file") {}
    };

    explicit MapTextReader(QString Text);

    QString String();
    std::int16_t Int16();
    std::int32_t Int32();
    // A finite decimal number such as ".5", "1", "-2.25" or "1E+20".
    double Double();
    // True or False in any case; a number counts as true when it is not zero.
    bool Boolean();
    // The points line: x,y, for every point. Of the pieces between commas, with u the
    // highest piece index, round(u / 2 - 1) + 1 points are taken, in pairs from the
    // first piece, so the empty piece after a trailing comma is dropped.
    std::vector<ShapePoint> Points();

    // Lines not yet read (a last line without a line end counts).
    qsizetype LinesLeft() const;
    // Characters not yet read: an upper bound on the lines left, less one, that costs
    // nothing to find.
    qsizetype CharsLeft() const { return m_text.size() - std::min(m_pos, m_text.size()); }

private:
    QStringView NextLine();

    QString m_text;
    qsizetype m_pos = 0;
};
