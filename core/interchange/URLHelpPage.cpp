#include "core/interchange/URLHelpPage.h"

#include "core/interchange/WholeFile.h"

QString URLHelpPage::Text()
{
    const QString crlf = QStringLiteral("\r\n");
    return QStringLiteral("<HTML><HEAD><TITLE>About URL Testing</TITLE></HEAD>") + crlf +
           QStringLiteral("<BODY BGCOLOR=\"#FFFFFF\" TEXT=\"#000000\">") + crlf +
           QStringLiteral("This feature allows you to check and see if the URLs you set in the "
                          "shapes are correct (must be connected to the Internet for this "
                          "feature to work).  The Base URL is your site's location.  It's used "
                          "with any URLs that aren't complete (ones that don't give the complete "
                          "path).") +
           crlf + QStringLiteral("</BODY></HTML>") + crlf;
}

bool URLHelpPage::Write(const QString& Path)
{
    return WholeFile::Replace(Path, Text().toLatin1()).ok;
}
