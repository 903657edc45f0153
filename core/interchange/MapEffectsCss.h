#pragma once

#include <QString>

class MapDocument;

// The map's hover, press and border effects as CSS filters on its picture, scoped to
// the map's class so that two maps on one page keep their own.
class MapEffectsCss
{
public:
    // The rules, one per line (CR LF), for a wrapper of class ClassName holding the
    // <img>; empty when the map has no effect.
    static QString Rules(const MapDocument& Document, const QString& ClassName);
};
