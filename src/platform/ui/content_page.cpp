#include "platform/ui/content_page.h"

#include <QAuthenticator>
#include <QLoggingCategory>
#include <QPointer>
#include <QTimer>
#include <QWebEngineCertificateError>
#include <QWebEngineFileSystemAccessRequest>
#include <QWebEngineNewWindowRequest>
#include <QWebEngineProfile>
#include <QWebEngineRegisterProtocolHandlerRequest>

namespace lirovan::platform {

namespace {

Q_LOGGING_CATEGORY(logPage, "lirovan.page", QtWarningMsg)

// A page that asks on and on is no longer listened to.
constexpr int MostDialogs = 20;

}  // namespace

ContentPage::ContentPage(std::shared_ptr<WebEngine> engine, Dialogs& dialogs, QObject* parent)
    : QWebEnginePage(&engine->profile(), parent), engine_(std::move(engine)), dialogs_(dialogs) {
    denyFeatures();
    connect(this, &QWebEnginePage::loadStarted, this, [this] { dialogsOfThisPage_ = 0; });
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

bool ContentPage::acceptNavigationRequest(const QUrl& url, NavigationType, bool isMainFrame) {
    const PageAccess& access = engine_->access();
    if (const auto file = access.fileAt(url)) {
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
    return ++dialogsOfThisPage_ <= MostDialogs;
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
    return whileAsking([&] { return dialogs_.show({text, QStringLiteral("Lirovan"), icon, buttons}); });
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
    const auto answer = whileAsking([&] { return dialogs_.ask({text, QStringLiteral("Lirovan"), initial}); });
    if (answer) *result = *answer;
    return answer.has_value();
}

void ContentPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString& message, int line,
                                           const QString& source) {
    qCDebug(logPage).noquote() << source << line << message;
}

}  // namespace lirovan::platform
