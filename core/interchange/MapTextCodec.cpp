#include "core/interchange/MapTextCodec.h"

#include <QStringDecoder>
#include <QStringEncoder>
#include <algorithm>

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
