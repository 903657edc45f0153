#pragma once

#include "core/shape/ShapeGeometry.h"

#include <QString>
#include <cstdint>
#include <vector>

// Builds the text of a map file one value per line, each line ended by CR LF, in the
// number forms older readers of the format expect.
class MapTextWriter
{
public:
    // Reserve: expected length of the text, to avoid regrowing it.
    explicit MapTextWriter(qsizetype Reserve = 0);

    // Written as it is; a line break inside would split the record, so it becomes a blank.
    void String(const QString& Value);
    // One leading blank (or the minus sign) and one trailing blank: " 3 ", "-3 ".
    void Integer(std::int64_t Value);
    // Like Integer, in the shortest general form with at most 15 significant digits and
    // no zero before the point: " .5 ", " 1 ", " 1.5 ", "-.25 ".
    void Double(double Value);
    // True or False, nothing around it.
    void Boolean(bool Value);
    // x,y, for every point: "10,20,30,20,".
    void Points(const std::vector<ShapePoint>& Points);

    const QString& Text() const { return m_text; }

    // The bare number forms, without the line end.
    static QString IntegerText(std::int64_t Value);
    static QString DoubleText(double Value);

private:
    void EndLine();

    QString m_text;
};
