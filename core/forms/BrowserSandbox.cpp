#include "core/forms/BrowserSandbox.h"

#include <QByteArray>
#include <QtGlobal>

void BrowserSandbox::Prepare(bool RunAsRoot)
{
    const char* const name = "QTWEBENGINE_DISABLE_SANDBOX";
    if (RunAsRoot && !qEnvironmentVariableIsSet(name))
        qputenv(name, QByteArray("1"));
}
