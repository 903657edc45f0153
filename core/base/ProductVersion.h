#pragma once

#include <QString>

// The version both programs report, from the build's project version.
class ProductVersion
{
public:
    static QString Text(); // "1.0.1"
};
