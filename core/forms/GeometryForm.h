#pragma once

#include <QList>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <cstdint>

class MapDocument;
class PatShape;

// The geometry of one shape as numbers in picture pixels, as the Shapes panel shows
// and edits them: a rectangle's left, top, width and height, a circle's centre and
// radius, a polygon's vertices. Typed values are checked before anything changes: a
// refused edit leaves the shape as it was and says why.
class GeometryForm
{
public:
    // Left, top, width, height of a rectangle; centre x, centre y, radius of a circle.
    static QList<int> Fields(const MapDocument& Document, std::int16_t Index);
    static QList<QPoint> Vertices(const MapDocument& Document, std::int16_t Index);

    // Empty when applied, else the message refusing the input.
    static QString ApplyFields(MapDocument& Document, std::int16_t Index, const QStringList& Texts);
    // Rows of (x, y) texts; a polygon keeps at least three vertices.
    static QString ApplyVertices(MapDocument& Document, std::int16_t Index,
                                 const QList<QStringList>& Rows);

    static QString NotANumberMessage(const QString& Text);
    static QString OutsideMessage(const MapDocument& Document);
    static QString TooSmallMessage();
    static QString TooFewVerticesMessage();

private:
    // Sets the shape's points to the picture points, at the map's zoom.
    static void Replace(MapDocument& Document, std::int16_t Index, const QList<QPoint>& Points);
};
