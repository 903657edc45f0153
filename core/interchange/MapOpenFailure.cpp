#include "core/interchange/MapOpenFailure.h"

#include <QDir>

QString MapOpenFailure::Detail(const QString& MapPath, const QString& Cause)
{
    const QString named =
        QStringLiteral("The map file is \"%1\".").arg(QDir::toNativeSeparators(MapPath));
    return Cause.isEmpty() ? named : Cause + QStringLiteral("\n\n") + named;
}
