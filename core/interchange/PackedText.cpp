#include "core/interchange/PackedText.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

// Each byte to its UTF-16 code unit, 16 or 8 at a time where the processor can.
void Widen(const char* from, qsizetype size, char16_t* to)
{
    qsizetype i = 0;
#if defined(__SSE2__)
    const __m128i zero = _mm_setzero_si128();
    for (; size - i >= 16; i += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + i));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i), _mm_unpacklo_epi8(bytes, zero));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i + 8), _mm_unpackhi_epi8(bytes, zero));
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

} // namespace

PackedText::~PackedText()
{
    Retire();
}

void PackedText::Retire()
{
    // The block's own reference is still held here, so this never frees it.
    if (m_spareRefs != 0)
        m_block.data_ptr().d_ptr()->ref_.fetchAndAddOrdered(-m_spareRefs);
    m_spareRefs = 0;
    m_block = QString();
}

QString PackedText::Ascii(QByteArrayView Ascii)
{
    const qsizetype size = Ascii.size();
    if (size == 0 || size > BlockSize / 4)
        return QString::fromLatin1(Ascii);
    // Every value keeps the NUL after its last character that a QString's own data has.
    if (m_left < size + 1) {
        Retire();
        m_block.reserve(BlockSize);
        // Written through this pointer only, past every value handed out: the values
        // never change their part of the block in place while it is shared.
        m_free = m_block.data_ptr().data();
        m_left = m_block.capacity();
        // Every value takes at least two characters, its NUL included.
        m_spareRefs = int(m_left / 2);
        m_block.data_ptr().d_ptr()->ref_.fetchAndAddRelaxed(m_spareRefs);
    }
    Widen(Ascii.data(), size, m_free);
    m_free[size] = u'\0';
    // The block's data pointer narrowed to the value, with one of the references taken
    // ahead.
    --m_spareRefs;
    QString::DataPointer value(m_block.data_ptr().d_ptr(), m_free, size);
    m_free += size + 1;
    m_left -= size + 1;
    return QString(std::move(value));
}
