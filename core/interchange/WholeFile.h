#pragma once

#include <QByteArray>
#include <QFileDevice>
#include <QString>
#include <optional>

// Replaces a file's content whole or not at all: the bytes go to a temporary file that
// takes the old one's place only once every byte is written, so a failure (a full disk,
// a killed process) leaves the earlier file as it was.
class WholeFile
{
public:
    struct Result
    {
        bool ok = false;
        // The system's own words when it failed.
        QString detail;
    };

    // Mode, when given, is set on the new file before it takes the old one's place.
    static Result Replace(const QString& Path, const QByteArray& Bytes,
                          std::optional<QFileDevice::Permissions> Mode = std::nullopt);
};
