#pragma once

#include "core/interchange/MapFormat.h"

// The format the code window shows and the test page uses, remembered between runs.
class MapFormatSetting
{
public:
    static MapFormat Load();
    static void Save(MapFormat Format);
};
