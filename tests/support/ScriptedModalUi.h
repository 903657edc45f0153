#pragma once

#include "core/base/ModalUi.h"

#include <QList>
#include <QQueue>
#include <QString>
#include <QStringList>

// Records every modal interaction and answers from queues; never blocks.
// An empty queue answers as a cancel (empty path, No, nullopt).
class ScriptedModalUi : public ModalUi
{
public:
    struct Shown
    {
        QString text;
        Icon icon;
        QString detail;
    };

    QList<Shown> messages;
    QStringList questions;
    QStringList opened;
    QStringList prompts;

    // Save questions asked before closing a modified map (the map's caption).
    QStringList saveQuestions;
    QQueue<bool> answers;
    // Answers to the save question; an empty queue cancels.
    QQueue<SaveChoice> saveChoices;
    QQueue<QString> pictures;
    QQueue<QString> mapsToOpen;
    QQueue<QString> mapNamesToSave;
    QQueue<std::optional<QString>> promptAnswers;
    QStringList choices;                      // "prompt|title|item;item;..." of every Choose
    QQueue<std::optional<int>> choiceAnswers; // empty: the first row
    bool desktopOpens = true;

    void Message(const QString& Text, Icon TheIcon) override { DetailedMessage(Text, TheIcon, {}); }
    void DetailedMessage(const QString& Text, Icon TheIcon, const QString& Detail) override
    {
        messages.append({Text, TheIcon, Detail});
    }
    bool Question(const QString& Text) override
    {
        questions.append(Text);
        return Next(answers, false);
    }
    SaveChoice AskToSaveChanges(const QString& Caption) override
    {
        saveQuestions.append(Caption);
        return Next(saveChoices, SaveChoice::Cancel);
    }
    QString AskForPicture() override { return Next(pictures); }
    QString AskForMapToOpen() override { return Next(mapsToOpen); }
    QString AskForMapNameToSave() override { return Next(mapNamesToSave); }
    std::optional<QString> Prompt(const QString& PromptText, const QString& Title,
                                  const QString& Default) override
    {
        prompts.append(PromptText + QLatin1Char('|') + Title + QLatin1Char('|') + Default);
        return Next(promptAnswers);
    }
    std::optional<int> Choose(const QString& PromptText, const QString& Title,
                              const QStringList& Items) override
    {
        choices.append(PromptText + QLatin1Char('|') + Title + QLatin1Char('|') +
                       Items.join(QLatin1Char(';')));
        return Next(choiceAnswers, std::optional<int>(0));
    }
    bool OpenWithDesktop(const QString& FileOrUrl) override
    {
        opened.append(FileOrUrl);
        return desktopOpens;
    }

    QStringList messageTexts() const
    {
        QStringList texts;
        for (const Shown& m : messages)
            texts.append(m.text);
        return texts;
    }

private:
    template <typename T> static T Next(QQueue<T>& Queue, const T& WhenEmpty = T())
    {
        return Queue.isEmpty() ? WhenEmpty : Queue.dequeue();
    }
};
