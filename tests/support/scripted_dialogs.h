// Dialogs that a test answers in advance. Whatever is shown is recorded; an answer that was not scripted is
// the one that closing the box gives, so that a forgotten answer shows as a wrong outcome and never as a
// hang.
#pragma once

#include <QString>
#include <deque>
#include <functional>
#include <optional>
#include <vector>

#include "platform/core/dialogs.h"

namespace lirovan::test {

struct ScriptedDialogs : platform::Dialogs {
    struct SavePathQuestion {
        QString title, suggestion, filter;
    };

    std::vector<platform::Message> messages;
    std::vector<platform::Question> questions;
    std::vector<SavePathQuestion> savePathQuestions;
    /// Runs while a message "is open": what the user might see or do meanwhile.
    std::function<void(const platform::Message&)> whileShown;

    /// The answer to the next message box that has none yet; likewise below.
    ScriptedDialogs& answer(platform::Answer answer) { return answers_.push_back(answer), *this; }
    /// No text: the input box is cancelled.
    ScriptedDialogs& answerText(std::optional<QString> text) { return texts_.push_back(text), *this; }
    ScriptedDialogs& answerSavePath(const QString& path) { return paths_.push_back(path), *this; }

    platform::Answer show(const platform::Message& message) override {
        using platform::Answer, platform::Buttons;
        messages.push_back(message);
        if (whileShown) whileShown(message);
        return take(answers_, message.buttons == Buttons::OkCancel ? Answer::Cancel
                              : message.buttons == Buttons::YesNo  ? Answer::No
                                                                   : Answer::Ok);
    }
    std::optional<QString> ask(const platform::Question& question) override {
        questions.push_back(question);
        return take(texts_, std::optional<QString>());
    }
    QString askSavePath(const QString& title, const QString& suggestion, const QString& filter) override {
        savePathQuestions.push_back({title, suggestion, filter});
        return take(paths_, QString());
    }

  private:
    template <class T>
    static T take(std::deque<T>& queue, T otherwise) {
        if (queue.empty()) return otherwise;
        T front = std::move(queue.front());
        queue.pop_front();
        return front;
    }

    std::deque<platform::Answer> answers_;
    std::deque<std::optional<QString>> texts_;
    std::deque<QString> paths_;
};

}  // namespace lirovan::test
