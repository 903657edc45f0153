#include "core/interchange/TestPage.h"

#include <QSaveFile>
#include <algorithm>

QString TestPage::Text(const QString& Code)
{
    return QLatin1String("<HTML><HEAD><TITLE>This Is A Test</TITLE></HEAD>\r\n"
                         "<BODY BGCOLOR=\"#FFFFFF\">\r\n") +
           Code + QLatin1String("\r\n</BODY></HTML>\r\n");
}

bool TestPage::Write(const QString& Path, const QString& Code)
{
    QByteArray bytes = Text(Code).toUtf8();
    // The page names no character set; a byte-order mark makes browsers read
    // non-ASCII URLs and comments as UTF-8. Plain ASCII pages stay exactly the four lines.
    const bool ascii =
        std::all_of(bytes.cbegin(), bytes.cend(), [](char c) { return (c & 0x80) == 0; });
    if (!ascii)
        bytes.prepend("\xEF\xBB\xBF");
    QSaveFile file(Path);
    // Unbuffered: a buffered short write (disk full) is not reported, and commit() would
    // then keep the truncated page.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    if (file.write(bytes) != bytes.size())
        return false;
    return file.commit();
}
