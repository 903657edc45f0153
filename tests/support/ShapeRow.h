#pragma once

#include "core/document/MapDocument.h"

#include <QStringList>

// Adds a shape written as its map-file lines with '|' between them:
// "type|x,y,x,y,...|url|comment|target|status|alert switch|alert text". Returns its index.
inline std::int16_t AddShapeRow(MapDocument& Document, const QString& Row, double Zoom = 1.0)
{
    const QStringList f = Row.split(QLatin1Char('|'));
    const QStringList xy = f[1].split(QLatin1Char(','), Qt::SkipEmptyParts);
    const std::int16_t index = Document.AddShape();
    PatShape& s = Document.Shape(index);
    s.ResetInfo(static_cast<std::int16_t>(f[0].trimmed().toInt()), true, Document.NonFocusColor,
                f[2], f[3], f[4], f[5], static_cast<std::int16_t>(f[6].trimmed().toInt()), f[7]);
    s.ResetPoints(static_cast<std::int16_t>(xy.size() / 2 - 1));
    for (int p = 0; p < xy.size() / 2; ++p)
        s.SetPoint(static_cast<std::int16_t>(p), xy[2 * p].toInt(), xy[2 * p + 1].toInt());
    s.SetOpenGeneralInfo(nullptr, Zoom);
    return index;
}
