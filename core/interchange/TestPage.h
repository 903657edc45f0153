#pragma once

#include <QString>

// The page that shows a map's test code in a browser.
class TestPage
{
public:
    static QString FileName() { return QStringLiteral("Image_Map_Test.htm"); }
    // The four lines, each ended by CR LF.
    static QString Text(const QString& Code);
    // Creates or overwrites Path; false when it cannot be written.
    static bool Write(const QString& Path, const QString& Code);
    // An HTML5 page titled like the classic one: Head (a style block) in its head.
    static QString Html5Text(const QString& Head, const QString& Body);
    // Writes a whole page as UTF-8; false when it cannot be written.
    static bool WritePage(const QString& Path, const QString& Page);
};
