// What the program asks and tells the user in modal windows. A port: the real one shows boxes, a test answers
// them.
#pragma once

#include <QPoint>
#include <QString>
#include <optional>

namespace lirovan::platform {

enum class Icon { None, Critical, Information, Question };
enum class Buttons { Ok, OkCancel, YesNo };
enum class Answer { Ok, Cancel, Yes, No };

struct Message {
    QString text;
    QString title;
    Icon icon = Icon::None;
    Buttons buttons = Buttons::Ok;
};

struct Question {
    QString prompt;
    QString title;
    QString initial;
    std::optional<QPoint> place =
        std::nullopt;  ///< top left corner on the screen; nothing: over the active window
};

class Dialogs {
  public:
    virtual ~Dialogs() = default;
    /// Shows a message box over the active window and waits. Closing the box answers Cancel, No or, with the
    /// one button, Ok.
    virtual Answer show(const Message& message) = 0;
    /// An input box with one line; nothing when it was cancelled.
    virtual std::optional<QString> ask(const Question& question) = 0;
    /// Where to save a file; empty when cancelled. `filter` as in "RTF (*.rtf)".
    virtual QString askSavePath(const QString& title, const QString& suggestion, const QString& filter) = 0;
};

inline Message errorMessage(QString text, QString title) {
    return {std::move(text), std::move(title), Icon::Critical, Buttons::Ok};
}

inline Message noticeMessage(QString text, QString title) {
    return {std::move(text), std::move(title), Icon::Information, Buttons::Ok};
}

}  // namespace lirovan::platform
