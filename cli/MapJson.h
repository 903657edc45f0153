#pragma once

#include <QByteArray>

class MapDocument;

// The map document as JSON, UTF-8, keys in the order of the document's fields and named
// as they are; numbers as numbers.
class MapJson
{
public:
    static QByteArray Dump(const MapDocument& Document);
};
