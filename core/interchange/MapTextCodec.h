#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

// The text encoding of map files. Older maps were written in the Windows code page, newer
// ones may need UTF-8; the bytes themselves tell which.
class MapTextCodec
{
public:
    // UTF-8 when the bytes are valid UTF-8 (a leading byte-order mark is dropped),
    // otherwise Windows-1252. Nothing when the bytes hold a NUL: that is no text file.
    static std::optional<QString> Decode(const QByteArray& Bytes);
    // The same text as Decode, as UTF-8 bytes for MapTextReader.
    struct Utf8Text
    {
        QByteArray bytes;
        // Every byte is below 0x80: the usual case, where bytes are Decode's input itself,
        // neither copied nor converted.
        bool ascii = false;
    };
    static std::optional<Utf8Text> DecodeToUtf8(const QByteArray& Bytes);
    // Windows-1252 when every character fits and the bytes cannot be mistaken for UTF-8
    // when read back; otherwise UTF-8.
    static QByteArray Encode(const QString& Text);
};
