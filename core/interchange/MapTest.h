#pragma once

#include <QString>

class ModalUi;

// "Test Image Map": the map's test code wrapped in a page next to the program and
// handed to the desktop's browser.
class MapTest
{
public:
    static QString BrowserFailureMessage()
    {
        return QStringLiteral("There was an error while trying to open the default browser.");
    }
    static QString PageWrittenDetail(const QString& Page)
    {
        return QStringLiteral("The test page is \"%1\"; open it in a browser to try the map.")
            .arg(Page);
    }
    // Code is the map's test form; empty (a map without shapes, already reported)
    // does nothing. A page that cannot be written ends the test without a message.
    // Returns the page's path when the page was written.
    static QString Run(const QString& Code, ModalUi& Ui, const QString& Folder);
    // The same with a whole page already made (the modern formats).
    static QString RunPage(const QString& Page, ModalUi& Ui, const QString& Folder);
};
