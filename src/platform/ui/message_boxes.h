// Dialogs on the screen, with Turkish buttons.
#pragma once

#include "platform/core/dialogs.h"

class QCoreApplication;

namespace lirovan::platform {

class MessageBoxes : public Dialogs {
  public:
    Answer show(const Message& message) override;
    std::optional<QString> ask(const Question& question) override;
    QString askSavePath(const QString& title, const QString& suggestion, const QString& filter) override;
};

/// Turkish throughout: the locale of the program and the toolkit's own windows (printing, choosing files).
/// Answers whether the toolkit's translations were found.
bool installTranslations(QCoreApplication& application);

}  // namespace lirovan::platform
