#pragma once

#include <QByteArrayView>
#include <QString>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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

    // Ascii must hold bytes below 0x80 only: each is its own character. Readable is how
    // many bytes from its start may be read, its own and any after it: with 16 past its
    // end the copy runs in whole steps of 16. Inline: a map file's reader calls it for
    // every text value.
    QString Ascii(QByteArrayView Ascii, qsizetype Readable = 0)
    {
        const qsizetype size = Ascii.size();
        if (size == 0 || size > BlockSize / 4)
            return QString::fromLatin1(Ascii);
        // Every value keeps the NUL after its last character that a QString's own data
        // has; the block keeps room for a whole last step.
        if (m_left < size + Step)
            NewBlock();
        if (Readable >= size + Step)
            WidenOver(Ascii.data(), size, m_free);
        else
            Widen(Ascii.data(), size, m_free);
        m_free[size] = u'\0';
        // The block's data pointer narrowed to the value, with one of the references
        // taken ahead.
        --m_spareRefs;
        QString::DataPointer value(m_block.data_ptr().d_ptr(), m_free, size);
        m_free += size + 1;
        m_left -= size + 1;
        return QString(std::move(value));
    }

private:
    // Characters per block; a value longer than a quarter block gets its own.
    static constexpr qsizetype BlockSize = 16384;
    static constexpr qsizetype Step = 16;

    void NewBlock();
    void Retire();

    // Each byte to its UTF-16 code unit, in steps of 16 that may pass the end of both.
    static void WidenOver(const char* from, qsizetype size, char16_t* to)
    {
#if defined(__SSE2__)
        const __m128i zero = _mm_setzero_si128();
        for (qsizetype i = 0; i < size; i += Step) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + i));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i), _mm_unpacklo_epi8(bytes, zero));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i + 8),
                             _mm_unpackhi_epi8(bytes, zero));
        }
#else
        Widen(from, size, to);
#endif
    }

    // Each byte to its UTF-16 code unit, 16 or 8 at a time where the processor can.
    static void Widen(const char* from, qsizetype size, char16_t* to)
    {
        qsizetype i = 0;
#if defined(__SSE2__)
        const __m128i zero = _mm_setzero_si128();
        for (; size - i >= 16; i += 16) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + i));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i), _mm_unpacklo_epi8(bytes, zero));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i + 8),
                             _mm_unpackhi_epi8(bytes, zero));
        }
        if (size - i >= 8) {
            const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from + i));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i), _mm_unpacklo_epi8(bytes, zero));
            i += 8;
        }
#endif
        for (; i < size; ++i)
            to[i] = static_cast<char16_t>(static_cast<unsigned char>(from[i]));
    }

    QString m_block;
    char16_t* m_free = nullptr;
    qsizetype m_left = 0;
    // References to the block taken ahead for values not yet handed out: one atomic
    // operation per block rather than one per value, which cost more than the copying.
    int m_spareRefs = 0;
};
