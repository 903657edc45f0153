#pragma once

#include "core/interchange/PackedText.h"
#include "core/shape/ShapeGeometry.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <cstdint>
#include <stdexcept>
#include <vector>

// Reads the values of a map file's text one line at a time, straight from its UTF-8 bytes
// (see MapTextCodec::DecodeToUtf8): numbers never become text first, and each text value
// is decoded on its own. Lines end with LF or CR LF. Numeric and boolean lines are trimmed
// before conversion. Every read throws FormatError when the line is missing or does not
// convert; nothing is ever guessed.
class MapTextReader
{
public:
    class FormatError : public std::runtime_error
    {
    public:
        FormatError() : std::runtime_error("Not a map file") {}
    };

    // Ascii: the bytes are all below 0x80, so that each is its own character.
    MapTextReader(QByteArray Utf8, bool Ascii);

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

    // A reader of the same text from where this one is, with its own state, so that a later
    // part can be read on another thread: the text is shared, not copied.
    MapTextReader Fork() const;
    // Passes over Count whole lines; throws FormatError when the text ends first.
    void SkipLines(qsizetype Count);
    // Where the next value begins; going on from there, as a fork left it.
    qsizetype Position() const { return m_pos; }
    void Resume(qsizetype Position) { m_pos = Position; }

    // Bytes not yet read: an upper bound on the lines left, less one, that costs nothing
    // to find.
    qsizetype BytesLeft() const { return m_pos < m_text.size() ? m_text.size() - m_pos : 0; }

    // Where the value read last began, to tell the user what is wrong with a file: its line
    // (from 1), whether the file ended before it, and its text as written.
    int LineOfLastValue() const;
    // Lines in the whole text, a last one without its line end included.
    int LineCount() const;
    bool LastValueMissing() const { return m_valueStart >= m_text.size(); }
    QString LastValueText() const;

private:
    // A piece of a points line, scanned before it is known whether it is taken.
    struct Piece
    {
        const char* begin = nullptr;
        const char* end = nullptr;
        std::int64_t value = 0;
        // Of the usual form, so that value holds it.
        bool plain = false;
    };

    MapTextReader(QByteArray Utf8, bool Ascii, qsizetype Position);
    QByteArrayView NextLine();
    // A number's line as text, for the full rule.
    QString Text(QByteArrayView Line) const;
    // A text value: packed with the others when it is ASCII.
    QString Value(QByteArrayView Line);
    std::int64_t Integer(std::int64_t Low, std::int64_t High);
    // The points of a line of plain numbers, the way the writer leaves it; false, with
    // nothing read, for any other line.
    bool PlainPoints(std::vector<ShapePoint>& Points);
    // The points of any line, by the full rule.
    std::vector<ShapePoint> AnyPoints();

    QByteArray m_text;
    bool m_ascii = false;
    qsizetype m_pos = 0;
    qsizetype m_valueStart = 0;
    // Kept from line to line: a points line costs no allocation but its result.
    std::vector<std::int32_t> m_values;
    std::vector<Piece> m_pieces;
    PackedText m_packed;
};
