#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>

class MapDocument;

// The grid settings as the grid options dialog shows and stores them.
class GridOptions
{
public:
    struct Fields
    {
        int ColorNum = 1; // 1..6, the entry of the colour list
        int Style = 0;    // index in the style list
        QString Spacing;  // as typed
        bool Display = false;
        bool Snap = false;
    };

    static const std::array<std::int32_t, 6>& Colors();
    static QStringList ColorKeys();
    static QStringList ColorCaptions();
    static QStringList StyleNames();

    static Fields Read(const MapDocument& Document);
    // Stores the fields in the dialog's order. Throws IndexOutOfRangeError, leaving the
    // document unchanged, when ColorNum is outside 1..6.
    static void Write(const Fields& TheFields, MapDocument& Document);
};
