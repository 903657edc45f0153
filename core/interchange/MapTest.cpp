#include "core/interchange/MapTest.h"

#include "core/base/ModalUi.h"
#include "core/interchange/TestPage.h"

#include <QCoreApplication>

QString MapTest::Run(const QString& Code, ModalUi& Ui, const QString& Folder)
{
    if (Code.isEmpty())
        return QString();
    return RunPage(TestPage::Text(Code), Ui, Folder);
}

QString MapTest::RunPage(const QString& Page, ModalUi& Ui, const QString& Folder)
{
    const QString path = Folder + TestPage::FileName();
    if (!TestPage::WritePage(path, Page))
        return QString();
    QCoreApplication::processEvents();
    if (!Ui.OpenWithDesktop(path))
        Ui.Message(BrowserFailureMessage(), ModalUi::Icon::Critical);
    return path;
}
