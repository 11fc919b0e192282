#include "platform/ui/web_engine.h"

#include <QFile>
#include <QGuiApplication>
#include <QPalette>
#include <QWebEngineCookieStore>
#include <QWebEngineDownloadRequest>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>
#include <QWebEngineUrlRequestInterceptor>

namespace lirovan::platform {

using Info = QWebEngineUrlRequestInfo;

/// Asked by the engine for every request of every page and frame, sockets included.
class WebEngine::Gate : public QWebEngineUrlRequestInterceptor {
  public:
    explicit Gate(const PageAccess& access) : access_(access) {}

    void interceptRequest(Info& info) override {
        if (!isPartOfPage(info.resourceType())) return info.block(true);
        // Data written into the page itself leads nowhere, except as a frame with a page of its own.
        if (info.requestUrl().scheme() == u"data" && !isFrame(info.resourceType())) return;
        const PageAccess::Decision decision = access_.judge(info.requestUrl());
        if (decision.verdict == PageAccess::Verdict::Refuse) info.block(true);
        if (decision.verdict == PageAccess::Verdict::Redirect) info.redirect(decision.target);
    }

  private:
    static bool isFrame(Info::ResourceType type) {
        return type == Info::ResourceTypeMainFrame || type == Info::ResourceTypeSubFrame;
    }

    /// Not among them: requests by script, workers, sockets, prefetching, pings and plug-ins.
    static bool isPartOfPage(Info::ResourceType type) {
        switch (type) {
            case Info::ResourceTypeMainFrame:
            case Info::ResourceTypeSubFrame:
            case Info::ResourceTypeStylesheet:
            case Info::ResourceTypeScript:
            case Info::ResourceTypeImage:
            case Info::ResourceTypeFontResource:
            case Info::ResourceTypeMedia:
                return true;
            default:
                return false;
        }
    }

    const PageAccess& access_;
};

namespace {

void shut(QWebEngineSettings& settings) {
    using S = QWebEngineSettings;
    for (const auto attribute :
         {S::JavascriptCanAccessClipboard, S::JavascriptCanPaste, S::LocalStorageEnabled,
          S::LocalContentCanAccessRemoteUrls, S::HyperlinkAuditingEnabled, S::ErrorPageEnabled,
          S::PluginsEnabled, S::PdfViewerEnabled, S::FullScreenSupportEnabled, S::ScreenCaptureEnabled,
          S::WebGLEnabled, S::AutoLoadIconsForPage, S::FocusOnNavigationEnabled,
          S::AllowRunningInsecureContent, S::AllowGeolocationOnInsecureOrigins,
          S::AllowWindowActivationFromJavaScript, S::DnsPrefetchEnabled, S::NavigateOnDropEnabled,
          S::ScrollAnimatorEnabled})
        settings.setAttribute(attribute, false);
    // Without it the engine would refuse a page its own pictures. The gate says which files.
    settings.setAttribute(S::LocalContentCanAccessFileUrls, true);
    settings.setAttribute(S::WebRTCPublicInterfacesOnly, true);
    settings.setAttribute(S::PrintElementBackgrounds, true);
    settings.setUnknownUrlSchemePolicy(S::DisallowUnknownUrlSchemes);
    // The pages declare no character set.
    settings.setDefaultTextEncoding(QStringLiteral("windows-1254"));
}

QWebEngineScript script(const QString& file, QWebEngineScript::ScriptWorldId world, bool inFrames) {
    QFile source(QStringLiteral(":/lirovan/platform/") + file);
    const bool opened = source.open(QIODevice::ReadOnly);
    Q_ASSERT_X(opened, "page script", "not built in");
    QWebEngineScript result;
    result.setName(file);
    result.setSourceCode(opened ? QString::fromUtf8(source.readAll()) : QString());
    result.setInjectionPoint(QWebEngineScript::DocumentCreation);
    result.setWorldId(world);
    result.setRunsOnSubFrames(inFrames);
    return result;
}

// Pages that have a dark form, as the start page, take it from the desktop's palette. The engine asks for it
// when it starts, and not the palette.
void tellColourScheme() {
    if (QGuiApplication::palette().color(QPalette::Window).lightness() >= 128) return;
    QByteArray flags = qgetenv("QTWEBENGINE_CHROMIUM_FLAGS");
    const QByteArray dark = "--blink-settings=preferredColorScheme=0";
    if (flags.contains(dark)) return;
    if (!flags.isEmpty()) flags += ' ';
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", flags + dark);
}

}  // namespace

void WebEngine::prepare() {
    // The gate stops requests; these stop what is no request: name look-ups, WebRTC, the engine's own
    // housekeeping.
    QByteArray flags = qgetenv("QTWEBENGINE_CHROMIUM_FLAGS");
    if (!flags.isEmpty()) flags += ' ';
    flags +=
        "--disable-background-networking --dns-prefetch-disable --no-pings --disable-quic "
        "--force-webrtc-ip-handling-policy=disable_non_proxied_udp";
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", flags);
}

std::shared_ptr<WebEngine> WebEngine::create(const AppFolder& folder, const QUrl& installer) {
    tellColourScheme();
    return std::shared_ptr<WebEngine>(new WebEngine(folder, installer));
}

WebEngine::WebEngine(const AppFolder& folder, QUrl installer)
    : access_(folder),
      installer_(std::move(installer)),
      gate_(std::make_unique<Gate>(access_)),
      profile_(std::make_unique<QWebEngineProfile>()) {
    Q_ASSERT(profile_->isOffTheRecord());
    profile_->setUrlRequestInterceptor(gate_.get());
    profile_->setHttpCacheType(QWebEngineProfile::NoCache);
    profile_->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
    profile_->setSpellCheckEnabled(false);
    profile_->cookieStore()->setCookieFilter([](const auto&) { return false; });
    shut(*profile_->settings());
    profile_->scripts()->insert(script(QStringLiteral("page_shut.js"), QWebEngineScript::MainWorld, true));
    profile_->scripts()->insert(
        script(QStringLiteral("page_tools.js"), QWebEngineScript::ApplicationWorld, false));
    QObject::connect(profile_.get(), &QWebEngineProfile::downloadRequested, profile_.get(),
                     [](QWebEngineDownloadRequest* download) { download->cancel(); });
}

WebEngine::~WebEngine() = default;

bool WebEngine::isInstaller(const QUrl& url) const {
    return !installer_.isEmpty() && (url.scheme() == u"http" || url.scheme() == u"https") &&
           url == installer_;
}

}  // namespace lirovan::platform
