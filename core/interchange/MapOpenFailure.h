#pragma once

#include <QString>

// What goes beside "Error, map cannot be loaded.": the cause, then which map file it was,
// since several maps may be opened at once (a drop, the command line).
class MapOpenFailure
{
public:
    static QString Detail(const QString& MapPath, const QString& Cause);
};
