#include "ui/frame/QtModalUi.h"

#include "core/base/Module1.h"
#include "core/forms/CommonDialogStuff.h"
#include "ui/dialogs/WidePrompt.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QSettings>
#include <QUrl>

namespace {

const QString Title = QStringLiteral("Corvane");

bool Ask(QWidget* parent, const QString& text, QMessageBox::Icon icon,
         QMessageBox::StandardButton preferred = QMessageBox::Yes)
{
    QMessageBox box(icon, Title, text, QMessageBox::Yes | QMessageBox::No, parent);
    box.setDefaultButton(preferred);
    return box.exec() == QMessageBox::Yes;
}

} // namespace

void QtModalUi::Message(const QString& Text, Icon TheIcon)
{
    DetailedMessage(Text, TheIcon, QString());
}

void QtModalUi::DetailedMessage(const QString& Text, Icon TheIcon, const QString& Detail)
{
    QMessageBox box(TheIcon == Icon::Critical ? QMessageBox::Critical : QMessageBox::Information,
                    Title, Text, QMessageBox::Ok, m_parent);
    box.setInformativeText(Detail);
    box.exec();
}

bool QtModalUi::Question(const QString& Text)
{
    return Ask(m_parent, Text, QMessageBox::Information);
}

bool QtModalUi::CriticalQuestion(const QString& Text)
{
    return Ask(m_parent, Text, QMessageBox::Critical);
}

ModalUi::SaveChoice QtModalUi::AskToSaveChanges(const QString& Caption)
{
    QMessageBox box(QMessageBox::Warning, Title, SaveChangesQuestion(Caption),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, m_parent);
    box.setInformativeText(QStringLiteral("Your changes will be lost if you don't save them."));
    box.setDefaultButton(QMessageBox::Save);
    switch (box.exec()) {
    case QMessageBox::Save:
        return SaveChoice::Save;
    case QMessageBox::Discard:
        return SaveChoice::Discard;
    default:
        return SaveChoice::Cancel;
    }
}

QString QtModalUi::AskForFile(bool Save, const QString& DialogTitle, const QStringList& Filters,
                              FolderMemory::Kind Which, const QString& Selected)
{
    // Where this kind of file was last found; at first the program's folder, as the
    // dialogs always started there (an installed program's folder is no place for maps,
    // so then the home folder).
    QSettings settings;
    FolderMemory folders(settings);
    const QString folder = folders.Folder(
        Which, QFileInfo(Module1::ApplicationFolder()).isWritable() ? Module1::ApplicationFolder()
                                                                    : QDir::homePath());
    QFileDialog dialog(m_parent, DialogTitle, folder);
    Prepare(dialog, Save, Filters, Selected);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    folders.Remember(Which, dialog.selectedFiles().constFirst());
    return QDir::toNativeSeparators(dialog.selectedFiles().constFirst());
}

QString QtModalUi::AskForPicture()
{
    // Every format the program reads shows at first, PNG and WebP too.
    const QStringList filters = CommonDialogStuff::PictureFilters();
    return AskForFile(false, CommonDialogStuff::PictureTitle, filters, FolderMemory::Kind::Picture,
                      filters.constLast());
}

QString QtModalUi::AskForMapToOpen()
{
    return AskForFile(false, CommonDialogStuff::OpenMapTitle, CommonDialogStuff::MapFilters(),
                      FolderMemory::Kind::Map);
}

QString QtModalUi::AskForMapNameToSave()
{
    const QString name = AskForFile(true, CommonDialogStuff::SaveMapTitle,
                                    CommonDialogStuff::MapFilters(), FolderMemory::Kind::Map);
    if (name.isEmpty())
        return name;
    // "plan.v2" is saved as plan.v2.imp, which the dialog did not ask about.
    const QString question = CommonDialogStuff::ReplaceQuestion(name);
    if (!question.isEmpty() && !Ask(m_parent, question, QMessageBox::Warning, QMessageBox::No))
        return QString();
    return CommonDialogStuff::WithMapExtension(name);
}

std::optional<QString> QtModalUi::Prompt(const QString& PromptText, const QString& PromptTitle,
                                         const QString& Default)
{
    WidePrompt prompt(PromptText, PromptTitle, Default, m_parent);
    if (prompt.exec() != QDialog::Accepted)
        return std::nullopt;
    return prompt.textValue();
}

std::optional<int> QtModalUi::Choose(const QString& PromptText, const QString& Title,
                                     const QStringList& Items)
{
    bool ok = false;
    const QString item = QInputDialog::getItem(m_parent, Title, PromptText, Items, 0, false, &ok);
    if (!ok || !Items.contains(item))
        return std::nullopt;
    return static_cast<int>(Items.indexOf(item));
}

bool QtModalUi::OpenWithDesktop(const QString& FileOrUrl)
{
    const QUrl url = QFileInfo::exists(FileOrUrl) ? QUrl::fromLocalFile(FileOrUrl)
                                                  : QUrl::fromUserInput(FileOrUrl);
    return url.isValid() && QDesktopServices::openUrl(url);
}

void QtModalUi::Prepare(QFileDialog& Dialog, bool Save, const QStringList& Filters,
                        const QString& Selected)
{
    // Hiding the details refills the list of filters, so it comes before the choice of one.
    Dialog.setOption(QFileDialog::HideNameFilterDetails);
    Dialog.setNameFilters(Filters);
    if (!Selected.isEmpty())
        Dialog.selectNameFilter(Selected);
    Dialog.setAcceptMode(Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    Dialog.setFileMode(Save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    // A name typed without its extension is the map file it will become: the dialog asks
    // before it replaces plan.imp when the user typed plan.
    if (Save)
        Dialog.setDefaultSuffix(QStringLiteral("imp"));
}
