#pragma once

#include <QString>

// The short page the URL checker shows about itself.
class URLHelpPage
{
public:
    static QString FileName() { return QStringLiteral("AboutURLTesting.htm"); }
    // The four lines, each ended by CR LF.
    static QString Text();
    // Creates or overwrites Path; false when it cannot be written.
    static bool Write(const QString& Path);
};
