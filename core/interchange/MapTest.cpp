#include "core/interchange/MapTest.h"

#include "core/base/ModalUi.h"
#include "core/interchange/TestPage.h"

#include <QCoreApplication>
#include <QDir>

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
    // The page is there all the same; the user can open it by hand.
    if (!Ui.OpenWithDesktop(path))
        Ui.DetailedMessage(BrowserFailureMessage(), ModalUi::Icon::Critical,
                           PageWrittenDetail(QDir::toNativeSeparators(path)));
    return path;
}
