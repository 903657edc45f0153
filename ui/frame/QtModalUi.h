#pragma once

#include "core/base/ModalUi.h"
#include "core/forms/FolderMemory.h"

class QFileDialog;
class QWidget;

// The editor's ModalUi: Qt message boxes, file dialogs, input prompt and desktop
// services, each owned by Parent.
class QtModalUi : public ModalUi
{
public:
    explicit QtModalUi(QWidget* Parent = nullptr) : m_parent(Parent) {}
    void SetParent(QWidget* Parent) { m_parent = Parent; }

    void Message(const QString& Text, Icon TheIcon) override;
    void DetailedMessage(const QString& Text, Icon TheIcon, const QString& Detail) override;
    bool Question(const QString& Text) override;
    bool CriticalQuestion(const QString& Text) override;
    SaveChoice AskToSaveChanges(const QString& Caption) override;
    QString AskForPicture() override;
    QString AskForMapToOpen() override;
    QString AskForMapNameToSave() override;
    std::optional<QString> Prompt(const QString& PromptText, const QString& Title,
                                  const QString& Default) override;
    std::optional<int> Choose(const QString& PromptText, const QString& Title,
                              const QStringList& Items) override;
    bool OpenWithDesktop(const QString& FileOrUrl) override;

    // How every file dialog is set up: its filters, Selected (the first when empty) shown
    // at first, and whether it opens or saves.
    static void Prepare(QFileDialog& Dialog, bool Save, const QStringList& Filters,
                        const QString& Selected);

private:
    QWidget* m_parent;

    // Starts in the folder last used for Which and remembers the chosen one;
    // Selected names the filter shown first (the first of Filters when empty).
    QString AskForFile(bool Save, const QString& Title, const QStringList& Filters,
                       FolderMemory::Kind Which, const QString& Selected = QString());
};
