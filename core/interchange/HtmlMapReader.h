#pragma once

#include <QString>
#include <vector>

// The <map> elements of a page and their <area> elements with the attribute values as a
// browser sees them: entities decoded, any quoting, any letter case of the markup.
class HtmlMapReader
{
public:
    struct Area
    {
        QString shape;
        QString coords;
        bool hasHref = false;
        bool noHref = false;
        QString href;
        QString alt;
        QString target;
        QString title;
        QString onfocus;
        QString onclick;
    };
    struct Map
    {
        QString name; // the name attribute, else the id
        std::vector<Area> areas;
    };

    // Every map in document order; areas of a map nested in another count for the inner.
    // Refusal says why the text was not read (nested too deeply); then nothing is read.
    static std::vector<Map> ReadMaps(const QString& Text, QString& Refusal);
    static QString TooDeepMessage();
};
