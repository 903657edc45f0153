#include "ui/frame/AppResources.h"

#include <QtGlobal>

// Q_INIT_RESOURCE must be used outside any namespace.
static void RegisterVantrelResources()
{
    Q_INIT_RESOURCE(vantrel);
}

void AppResources::Load()
{
    static const bool loaded = [] {
        RegisterVantrelResources();
        return true;
    }();
    Q_UNUSED(loaded);
}
