#pragma once

#include <QByteArray>
#include <QFile>

inline QByteArray ReadBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline bool WriteBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// A picture of 30000 x 30000 pixels, all black, as a 69-byte PNG file: far more than
// the program loads.
inline QByteArray HugePng()
{
    return QByteArray(
        "\x89\x50\x4e\x47\x0d\x0a\x1a\x0a\x00\x00\x00\x0d\x49\x48\x44\x52\x00\x00\x75\x30"
        "\x00\x00\x75\x30\x08\x02\x00\x00\x00\xe9\x45\x6f\xed\x00\x00\x00\x0c\x49\x44\x41"
        "\x54\x78\x9c\x63\x60\xa0\x3d\x00\x00\x00\x64\x00\x01\x86\x64\x3c\x35\x00\x00\x00"
        "\x00\x49\x45\x4e\x44\xae\x42\x60\x82",
        69);
}
