#include "core/interchange/URLHelpPage.h"

#include <QSaveFile>

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
    QSaveFile file(Path);
    // Unbuffered: a buffered short write (disk full) is not reported, and commit() would
    // then keep the truncated page.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    const QByteArray bytes = Text().toLatin1();
    if (file.write(bytes) != bytes.size())
        return false;
    return file.commit();
}
