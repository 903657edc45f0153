#pragma once

#include <QString>

// Where a page written for testing finds the map's picture.
class PictureAddress
{
public:
    // The classic test form: a Windows folder keeps the drive form browsers of the time
    // understood (C| for C:); a POSIX folder gives the ordinary file URL.
    static QString ClassicTestSource(const QString& Folder, const QString& Name);
    // A valid, percent-encoded file URL for the modern formats.
    static QString FileUrl(const QString& Folder, const QString& Name);
};
