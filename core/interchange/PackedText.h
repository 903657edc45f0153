#pragma once

#include <QByteArrayView>
#include <QString>

// Text values packed side by side into a few shared blocks instead of one allocation
// each: a map of 32,767 shapes holds well over a hundred thousand short values, and
// allocating (and later freeing) them one by one costs more than reading the whole file.
// Every value is an ordinary QString that shares its block the way copies of one QString
// share their data: it copies itself out on its first change, and a block is freed with
// the last value in it.
class PackedText
{
public:
    PackedText() = default;
    PackedText(const PackedText&) = delete;
    PackedText& operator=(const PackedText&) = delete;
    ~PackedText();

    // Ascii must hold bytes below 0x80 only: each is its own character.
    QString Ascii(QByteArrayView Ascii);

private:
    // Characters per block; a value longer than a quarter block gets its own.
    static constexpr qsizetype BlockSize = 16384;

    void Retire();

    QString m_block;
    char16_t* m_free = nullptr;
    qsizetype m_left = 0;
    // References to the block taken ahead for values not yet handed out: one atomic
    // operation per block rather than one per value, which cost more than the copying.
    int m_spareRefs = 0;
};
