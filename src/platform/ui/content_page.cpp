#include "platform/ui/content_page.h"

#include <QApplication>
#include <QAuthenticator>
#include <QLoggingCategory>
#include <QPointer>
#include <QTimer>
#include <QWebEngineCertificateError>
#include <QWebEngineFileSystemAccessRequest>
#include <QWebEngineHistory>
#include <QWebEngineNewWindowRequest>
#include <QWebEngineProfile>
#include <QWebEngineRegisterProtocolHandlerRequest>

namespace lirovan::platform {

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(logPage, "lirovan.page", QtWarningMsg)

// A page that asks on and on is no longer listened to.
constexpr int MostDialogs = 20;

// After so many requests in a row to be printed the user is asked about the page.
constexpr int PrintsInARow = 3;

}  // namespace

ContentPage::ContentPage(std::shared_ptr<WebEngine> engine, Dialogs& dialogs, int view, QObject* parent)
    : QWebEnginePage(&engine->profile(), parent), engine_(std::move(engine)), dialogs_(dialogs), view_(view) {
    denyFeatures();
    connect(this, &QWebEnginePage::printRequested, this, &ContentPage::wantsToBePrinted);
    connect(this, &QWebEnginePage::newWindowRequested, this, [this](QWebEngineNewWindowRequest& request) {
        // There is one view: a link that wants a window of its own is followed in it, a script's is not.
        if (request.isUserInitiated() && engine_->access().fileAt(request.requestedUrl()))
            setUrl(request.requestedUrl());
    });
}

void ContentPage::denyFeatures() {
    connect(this, &QWebEnginePage::featurePermissionRequested, this,
            [this](const QUrl& origin, Feature feature) {
                setFeaturePermission(origin, feature, PermissionDeniedByUser);
            });
    connect(this, &QWebEnginePage::registerProtocolHandlerRequested, this,
            [](QWebEngineRegisterProtocolHandlerRequest request) { request.reject(); });
    connect(this, &QWebEnginePage::fileSystemAccessRequested, this,
            [](QWebEngineFileSystemAccessRequest request) { request.reject(); });
    connect(this, &QWebEnginePage::certificateError, this, [](const QWebEngineCertificateError& error) {
        QWebEngineCertificateError(error).rejectCertificate();
    });
    const auto noPassword = [](QAuthenticator* authenticator) { *authenticator = {}; };
    connect(this, &QWebEnginePage::authenticationRequired, this,
            [noPassword](const QUrl&, QAuthenticator* authenticator) { noPassword(authenticator); });
    connect(this, &QWebEnginePage::proxyAuthenticationRequired, this,
            [noPassword](const QUrl&, QAuthenticator* authenticator, const QString&) {
                noPassword(authenticator);
            });
}

// A page that goes to its file by name means itself, not what the file holds by now.
bool ContentPage::isOwnPageElsewhere(const QUrl& url) const {
    const GivenPage* given = engine_->pages().of(view_);
    return given && engine_->fileAt(url) == given->file && engine_->pages().at(url) != given;
}

bool ContentPage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) {
    if (url.scheme() == PageAccess::Scheme && url.host() == WebEngine::TopicHost) {
        bool isNumber = false;
        const qint64 topic = url.path().mid(1).toLongLong(&isNumber);
        if (isMainFrame && isNumber && type == NavigationTypeLinkClicked)
            QTimer::singleShot(0, this, [this, topic, place = url.fragment(QUrl::FullyDecoded)] {
                Q_EMIT topicWanted(topic, place);
            });
        return false;
    }
    if (url.scheme() == PageAccess::Scheme && url.host() == WebEngine::SummaryHost) {
        bool isNumber = false;
        const int passage = url.path().mid(1).toInt(&isNumber);
        if (isMainFrame && isNumber && type == NavigationTypeLinkClicked)
            QTimer::singleShot(0, this, [this, passage] { Q_EMIT passageWanted(passage); });
        return false;
    }
    const PageAccess& access = engine_->access();
    if (isMainFrame && isOwnPageElsewhere(url)) {
        const QUrl own = GivenPages::addressOf(view_, access.address(engine_->pages().of(view_)->file));
        QTimer::singleShot(0, this, [this, own] { setUrl(own); });
        return false;
    }
    if (const auto file = engine_->fileAt(url)) {
        if (isMainFrame) Q_EMIT leaving(*file);
        return true;
    }
    // A script that goes to a file by its path. Where paths begin with a drive, that looks like a scheme.
    const bool isPath = url.scheme() == u"file" || url.scheme().size() == 1;
    if (const auto file = isMainFrame && isPath ? access.file(url.toString()) : std::nullopt)
        QTimer::singleShot(0, this, [this, address = access.address(*file)] { setUrl(address); });
    return false;
}

QStringList ContentPage::chooseFiles(FileSelectionMode, const QStringList&, const QStringList&) {
    return {};
}

bool ContentPage::mayAsk() {
    meetNext();
    return ++dialogsInARow_ <= MostDialogs;
}

template <class Ask>
auto ContentPage::whileAsking(Ask ask) {
    const QPointer self(this);  // the window can be closed under the open dialog
    ++asking_;
    auto answer = ask();
    if (self) --asking_;
    return answer;
}

Answer ContentPage::show(const QString& text, Buttons buttons) {
    const Icon icon = buttons == Buttons::Ok ? Icon::Information : Icon::Question;
    return whileAsking([&] { return dialogs_.show({text, u"Lirovan"_s, icon, buttons}); });
}

QDateTime ContentPage::lastArrival() const {
    return history()->currentItem().lastVisited();
}

void ContentPage::expectNext() {
    expectsNext_ = true;
    before_ = lastArrival();
}

bool ContentPage::hasArrived() const {
    return lastArrival() != before_;
}

// What was said about a page holds until the next one of the program's choice is here.
void ContentPage::meetNext() {
    if (!expectsNext_ || !hasArrived()) return;
    expectsNext_ = false;
    userActed();
    hearsPrints_.reset();
}

void ContentPage::userActed() {
    dialogsInARow_ = printsInARow_ = 0;
}

// A page can ask again while the print dialog is open, and as soon as it is closed.
void ContentPage::wantsToBePrinted() {
    meetNext();
    if (isAsking() || QApplication::activeModalWidget() || hearsPrints_ == false) return;
    if (++printsInARow_ > PrintsInARow && !hearsPrints_) {
        const QPointer self(this);
        const Answer answer = show(
            u"Bu sayfa art arda yazdırılmak istiyor. Sayfanın yazdırma "
            "istekleri bundan sonra da dikkate alınsın mı?"_s,
            Buttons::YesNo);
        if (!self) return;
        hearsPrints_ = answer == Answer::Yes;
        if (!*hearsPrints_) return;
    }
    whileAsking([this] {
        Q_EMIT printWanted();
        return true;
    });
}

void ContentPage::javaScriptAlert(const QUrl&, const QString& text) {
    if (mayAsk()) show(text, Buttons::Ok);
}

bool ContentPage::javaScriptConfirm(const QUrl&, const QString& text) {
    return mayAsk() && show(text, Buttons::OkCancel) == Answer::Ok;
}

bool ContentPage::javaScriptPrompt(const QUrl&, const QString& text, const QString& initial,
                                   QString* result) {
    if (!mayAsk()) return false;
    const auto answer = whileAsking([&] { return dialogs_.ask({text, u"Lirovan"_s, initial}); });
    if (answer) *result = *answer;
    return answer.has_value();
}

void ContentPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString& message, int line,
                                           const QString& source) {
    qCDebug(logPage).noquote() << source << line << message;
}

}  // namespace lirovan::platform
