#pragma once

#include "platform/Host.h"

#include <QTest>

#include <deque>
#include <functional>
#include <variant>

/// Answers the program's prompts from a queue. An entry states the prompt's whole text (a message's text, a file
/// dialog's proposal, the filter of one for several files, a folder chooser's title) and gives the answer; a prompt
/// that was not expected fails the test, and so does an entry left over.
class PromptQueue
{
public:
    struct Entry {
        QString Text;
        std::variant<PromptAnswer, std::optional<QString>, std::optional<QColor>, std::optional<QFont>, QStringList>
            Answer;
    };

    ~PromptQueue()
    {
        for (const Entry &entry : entries)
            QTest::qFail(qPrintable(QStringLiteral("prompt never came: ") + entry.Text), __FILE__, __LINE__);
    }

    void Expect(const QString &text, PromptAnswer answer) { entries.push_back({text, answer}); }
    /// A file or folder dialog; an empty answer is Cancel.
    void ExpectPath(const QString &text, const std::optional<QString> &answer) { entries.push_back({text, answer}); }
    /// A dialog for several files; an empty answer is Cancel.
    void ExpectPaths(const QString &text, const QStringList &answer) { entries.push_back({text, answer}); }
    /// A colour or font dialog; the text is the name of the colour or the family that it starts with.
    template <typename Choice>
    void ExpectChoice(const QString &text, const std::optional<Choice> &answer)
    {
        entries.push_back({text, answer});
    }
    bool IsEmpty() const { return entries.empty(); }

    /// The details of the last message.
    QString LastDetails;
    /// What happens while a prompt stands open.
    std::function<void()> Meanwhile = [] {};

    void Install(Prompts &prompts)
    {
        prompts.Message = [this](const MessagePrompt &prompt) {
            LastDetails = prompt.Details;
            return Take<PromptAnswer>(prompt.Text, PromptAnswer::Cancel);
        };
        prompts.OpenFile = prompts.SaveFile = [this](const FilePrompt &prompt) {
            return Take<std::optional<QString>>(prompt.Proposal, {});
        };
        prompts.OpenFiles = [this](const FilePrompt &prompt) { return Take<QStringList>(prompt.Filter, {}); };
        prompts.Folder = [this](const FolderPrompt &prompt) { return Take<std::optional<QString>>(prompt.Title, {}); };
        prompts.Colour = [this](const QColor &colour) { return Take<std::optional<QColor>>(colour.name(), {}); };
        prompts.Font = [this](const QFont &font) { return Take<std::optional<QFont>>(font.family(), {}); };
        prompts.Line = [this](const LinePrompt &prompt) { return Take<std::optional<QString>>(prompt.Text, {}); };
    }

private:
    template <typename Answer>
    Answer Take(const QString &text, const Answer &cancel)
    {
        if (entries.empty() || entries.front().Text != text ||
            !std::holds_alternative<Answer>(entries.front().Answer)) {
            QTest::qFail(qPrintable(QStringLiteral("unexpected prompt: ") + text), __FILE__, __LINE__);
            return cancel;
        }
        Meanwhile();
        const Answer answer = std::get<Answer>(entries.front().Answer);
        entries.pop_front();
        return answer;
    }

    std::deque<Entry> entries;
};
