// A page of the engine under the program's rules: where it may go, whom its dialogs ask, what it is denied.
#pragma once

#include <QDateTime>
#include <QWebEnginePage>
#include <memory>
#include <optional>

#include "platform/core/dialogs.h"
#include "platform/ui/web_engine.h"

namespace lirovan::platform {

class ContentPage : public QWebEnginePage {
    Q_OBJECT

  public:
    /// `view`: its number among the engine's given pages.
    ContentPage(std::shared_ptr<WebEngine> engine, Dialogs& dialogs, int view, QObject* parent);

    /// A dialog of the page is open: the page answers nothing meanwhile.
    bool isAsking() const { return asking_ > 0; }
    /// The program goes to another page, which is here once the engine has let go of the one before.
    void expectNext();
    bool hasArrived() const;
    /// Whether a page has ever arrived.
    bool hasShown() const { return lastArrival().isValid(); }
    /// What the page asks for from now on may be the user's wish.
    void userActed();

  Q_SIGNALS:
    /// The page (a link or a script of it) goes to another file of the folder.
    void leaving(const QString& file);
    /// A link to a topic of the library, at a place of its page where `place` is not empty.
    void topicWanted(qint64 topic, const QString& place);
    /// The heading of a summary's passage was clicked; `passage` counts from 0.
    void passageWanted(int passage);
    /// The page wants to be printed, and is to be heard.
    void printWanted();

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
    /// Each arrival counts, whatever the address.
    QDateTime lastArrival() const;
    void meetNext();
    bool mayAsk();
    void wantsToBePrinted();
    bool isOwnPageElsewhere(const QUrl& url) const;
    template <class Ask>
    auto whileAsking(Ask ask);
    Answer show(const QString& text, Buttons buttons);

    std::shared_ptr<WebEngine> engine_;
    Dialogs& dialogs_;
    const int view_;
    bool expectsNext_ = false;
    QDateTime before_;  ///< when the page before the expected one arrived
    int asking_ = 0;
    int dialogsInARow_ = 0;            ///< since the user did something on the page
    int printsInARow_ = 0;             ///< likewise
    std::optional<bool> hearsPrints_;  ///< what the user said about the page's requests
};

}  // namespace lirovan::platform
