#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// Everything modal that leaves the program's own windows: message boxes, the three
// file dialogs, the one-line prompt and handing a file or address to the desktop.
// The editor uses QtModalUi; tests use a scripted double.
class ModalUi
{
public:
    enum class Icon { Information, Critical };
    enum class SaveChoice { Save, Discard, Cancel };

    virtual ~ModalUi() = default;
    // A message box titled "Corvane" with an OK button.
    virtual void Message(const QString& Text, Icon TheIcon) = 0;
    // The same with the cause of a failure as informative text under the message;
    // an empty Detail shows the plain message.
    virtual void DetailedMessage(const QString& Text, Icon TheIcon, const QString& Detail)
    {
        Q_UNUSED(Detail);
        Message(Text, TheIcon);
    }
    // A Yes/No question titled "Corvane" with the information icon; true for Yes.
    virtual bool Question(const QString& Text) = 0;
    // The same with the critical icon, for a question before something is thrown away.
    virtual bool CriticalQuestion(const QString& Text) { return Question(Text); }
    // Before a modified map closes: "Do you want to save the changes ..." with Save
    // (the default), Discard and Cancel. Without a box of its own, a Yes/No question:
    // Yes discards, No cancels.
    virtual SaveChoice AskToSaveChanges(const QString& Caption)
    {
        return Question(SaveChangesQuestion(Caption)) ? SaveChoice::Discard : SaveChoice::Cancel;
    }
    static QString SaveChangesQuestion(const QString& Caption)
    {
        return QStringLiteral("Do you want to save the changes to \"%1\" before closing?")
            .arg(Caption);
    }
    // "Load Picture"; the chosen path, or empty when cancelled.
    virtual QString AskForPicture() = 0;
    // "Open Map"; the chosen path, or empty when cancelled.
    virtual QString AskForMapToOpen() = 0;
    // "Save Map"; the chosen path as the dialog gave it, or empty when cancelled.
    virtual QString AskForMapNameToSave() = 0;
    // A one-line prompt; nullopt when cancelled.
    virtual std::optional<QString> Prompt(const QString& PromptText, const QString& Title,
                                          const QString& Default) = 0;
    // A choice from a list: the chosen row, or nullopt when cancelled. Where nobody can
    // be asked, the first row.
    virtual std::optional<int> Choose(const QString& PromptText, const QString& Title,
                                      const QStringList& Items)
    {
        (void)PromptText;
        (void)Title;
        return Items.isEmpty() ? std::nullopt : std::optional<int>(0);
    }
    // Opens a local file or an address with the desktop's program; false on failure.
    virtual bool OpenWithDesktop(const QString& FileOrUrl) = 0;
};
