#include "core/interchange/TestPage.h"

#include "core/interchange/WholeFile.h"

#include <algorithm>

QString TestPage::Text(const QString& Code)
{
    return QLatin1String("<HTML><HEAD><TITLE>This Is A Test</TITLE></HEAD>\r\n"
                         "<BODY BGCOLOR=\"#FFFFFF\">\r\n") +
           Code + QLatin1String("\r\n</BODY></HTML>\r\n");
}

QString TestPage::Html5Text(const QString& Head, const QString& Body)
{
    return QLatin1String("<!DOCTYPE html>\r\n<html lang=\"en\">\r\n<head>\r\n"
                         "<meta charset=\"utf-8\">\r\n<title>This Is A Test</title>\r\n") +
           Head + QLatin1String("</head>\r\n<body>\r\n") + Body +
           QLatin1String("\r\n</body>\r\n</html>\r\n");
}

bool TestPage::Write(const QString& Path, const QString& Code)
{
    return WritePage(Path, Text(Code));
}

bool TestPage::WritePage(const QString& Path, const QString& Page)
{
    QByteArray bytes = Page.toUtf8();
    // The classic page names no character set; a byte-order mark makes browsers read
    // non-ASCII URLs and comments as UTF-8. Plain ASCII pages stay exactly as written.
    const bool ascii =
        std::all_of(bytes.cbegin(), bytes.cend(), [](char c) { return (c & 0x80) == 0; });
    if (!ascii)
        bytes.prepend("\xEF\xBB\xBF");
    return WholeFile::Replace(Path, bytes).ok;
}
