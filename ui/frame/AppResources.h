#pragma once

// The icons and pictures compiled into the program. They live in a static library, so
// whoever shows them first registers them.
class AppResources
{
public:
    static void Load();
};
