#include "core/base/ProductVersion.h"

// Defined for this file alone by the build, so a new version recompiles one file.
#ifndef VANTREL_VERSION
#error "VANTREL_VERSION must be defined by the build"
#endif

QString ProductVersion::Text()
{
    return QStringLiteral(VANTREL_VERSION);
}
