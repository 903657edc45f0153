#include "core/interchange/MapFinding.h"

QString MapFinding::Place() const
{
    if (Index == WholeMap)
        return QStringLiteral("Map");
    if (Index == DefaultArea)
        return QStringLiteral("Default area");
    return QStringLiteral("Shape #%1").arg(Index + 1);
}

QString MapFinding::SeverityName() const
{
    return severity == Severity::Error ? QStringLiteral("error") : QStringLiteral("warning");
}

QString MapFinding::Line() const
{
    return Place() + QLatin1String(": ") + SeverityName() + QLatin1String(": ") + Text;
}
