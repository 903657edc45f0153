#pragma once

#include <QString>

// One thing the map check found.
struct MapFinding
{
    enum class Severity { Warning, Error };
    // Where: a shape's array index, or one of these.
    static constexpr int WholeMap = -1;
    static constexpr int DefaultArea = -2;

    int Index = WholeMap;
    Severity severity = Severity::Warning;
    QString Text;

    // "Shape #n" as the properties dialog names shapes (the first is #1), "Map" or
    // "Default area".
    QString Place() const;
    QString SeverityName() const;
    // "Shape #3: warning: text"
    QString Line() const;
};
