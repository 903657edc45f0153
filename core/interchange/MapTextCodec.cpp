#include "core/interchange/MapTextCodec.h"

#include <QStringDecoder>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif
#include <QStringEncoder>
#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

const char* const WindowsCodePage = "windows-1252";

bool IsAscii(const QByteArray& bytes)
{
    return std::all_of(bytes.cbegin(), bytes.cend(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::optional<QString> DecodeUtf8(const QByteArray& bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString text = utf8(bytes);
    if (utf8.hasError())
        return std::nullopt;
    return text;
}

// Neither NUL nor a byte above 0x7F: the text is these bytes in either encoding. This
// runs over every byte of a map before it is parsed, so 16 or 8 bytes at a time.
bool IsPlainAscii(const QByteArray& bytes)
{
    const char* p = bytes.constData();
    const char* const end = p + bytes.size();
#if defined(__SSE2__)
    __m128i any = _mm_setzero_si128();
    __m128i least = _mm_set1_epi8(1);
    for (; end - p >= 16; p += 16) {
        const __m128i chunk = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        any = _mm_or_si128(any, chunk);
        least = _mm_min_epu8(least, chunk);
    }
    // High bits anywhere, or a zero byte (the least byte seen is then 0, not 1).
    if (_mm_movemask_epi8(any) != 0 ||
        _mm_movemask_epi8(_mm_cmpeq_epi8(least, _mm_setzero_si128())) != 0)
        return false;
#endif
    constexpr std::uint64_t ones = 0x0101010101010101u;
    constexpr std::uint64_t highs = 0x8080808080808080u;
    std::uint64_t seen = 0;
    for (; end - p >= 8; p += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, p, sizeof word);
        // High bits of the bytes above 0x7F, and of the zero bytes.
        seen |= word | ((word - ones) & ~word);
    }
    for (; p != end; ++p)
        seen |= static_cast<unsigned char>(*p) | (*p == 0 ? 0x80u : 0u);
    return (seen & highs) == 0;
}

} // namespace

std::optional<QString> MapTextCodec::Decode(const QByteArray& Bytes)
{
    if (Bytes.contains('\0'))
        return std::nullopt;
    if (std::optional<QString> text = DecodeUtf8(Bytes))
        return text;
    QStringDecoder codePage(WindowsCodePage);
    if (!codePage.isValid())
        return QString::fromLatin1(Bytes);
    QString text = codePage(Bytes);
    if (codePage.hasError())
        return std::nullopt;
    return text;
}

std::optional<MapTextCodec::Utf8Text> MapTextCodec::DecodeToUtf8(const QByteArray& Bytes)
{
    if (IsPlainAscii(Bytes))
        return Utf8Text{Bytes, true};
    const std::optional<QString> text = Decode(Bytes);
    if (!text)
        return std::nullopt;
    return Utf8Text{text->toUtf8(), false};
}

QByteArray MapTextCodec::Encode(const QString& Text)
{
    // Most maps are plain ASCII, the same bytes in either encoding.
    if (std::all_of(Text.cbegin(), Text.cend(), [](QChar c) { return c.unicode() < 0x80; }))
        return Text.toLatin1();
    QStringEncoder codePage(WindowsCodePage);
    if (codePage.isValid()) {
        QByteArray bytes = codePage(Text);
        // Bytes such as C3 A9 ("Ã©") are valid UTF-8 and would come back as "é".
        if (!codePage.hasError() && (IsAscii(bytes) || !DecodeUtf8(bytes)))
            return bytes;
    }
    return Text.toUtf8();
}
