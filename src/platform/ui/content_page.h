// A page of the engine under the program's rules: where it may go, whom its dialogs ask, what it is denied.
#pragma once

#include <QWebEnginePage>
#include <memory>

#include "platform/core/dialogs.h"
#include "platform/ui/web_engine.h"

namespace lirovan::platform {

class ContentPage : public QWebEnginePage {
    Q_OBJECT

  public:
    ContentPage(std::shared_ptr<WebEngine> engine, Dialogs& dialogs, QObject* parent);

    /// A dialog of the page is open: the page answers nothing meanwhile.
    bool isAsking() const { return asking_ > 0; }

  Q_SIGNALS:
    /// The page (a link or a script of it) goes to another file of the folder.
    void leaving(const QString& file);

  protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    QStringList chooseFiles(FileSelectionMode mode, const QStringList& oldFiles,
                            const QStringList& acceptedMimeTypes) override;
    void javaScriptAlert(const QUrl& origin, const QString& text) override;
    bool javaScriptConfirm(const QUrl& origin, const QString& text) override;
    bool javaScriptPrompt(const QUrl& origin, const QString& text, const QString& initial,
                          QString* result) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message, int line,
                                  const QString& source) override;

  private:
    void denyFeatures();
    bool mayAsk();
    template <class Ask>
    auto whileAsking(Ask ask);
    Answer show(const QString& text, Buttons buttons);

    std::shared_ptr<WebEngine> engine_;
    Dialogs& dialogs_;
    int asking_ = 0;
    int dialogsOfThisPage_ = 0;
};

}  // namespace lirovan::platform
