#include "platform/ui/web_engine.h"

#include <QBuffer>
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
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>
#include <QWebEngineUrlSchemeHandler>

namespace lirovan::platform {

using Info = QWebEngineUrlRequestInfo;
using namespace Qt::StringLiterals;

/// Asked by the engine for every request of every page and frame, sockets included.
class WebEngine::Gate : public QWebEngineUrlRequestInterceptor {
  public:
    explicit Gate(const WebEngine& engine) : engine_(engine) {}

    void interceptRequest(Info& info) override {
        if (!isPartOfPage(info.resourceType())) return info.block(true);
        // Data written into the page itself leads nowhere, except as a frame with a page of its own.
        if (info.requestUrl().scheme() == u"data" && !isFrame(info.resourceType())) return;
        if (info.requestUrl().scheme() == QLatin1StringView(PictureScheme) &&
            info.resourceType() == Info::ResourceTypeImage)
            return;
        // A picture may also be named by its file address.
        const bool byFile = info.requestUrl().scheme() == u"file" && !isFrame(info.resourceType());
        const bool known = byFile ? engine_.access().file(info.requestUrl().toString()).has_value()
                                  : engine_.fileAt(info.requestUrl()).has_value();
        if (!known) info.block(true);
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

    const WebEngine& engine_;
};

/// Hands the files of the folder to pages, and to views the pages that they were given.
class WebEngine::Files : public QWebEngineUrlSchemeHandler {
  public:
    explicit Files(const WebEngine& engine) : engine_(engine) {}

    void requestStarted(QWebEngineUrlRequestJob* job) override {
        if (const GivenPage* page = engine_.pages_.at(job->requestUrl())) {
            auto bytes = std::make_unique<QBuffer>();
            bytes->setData(page->bytes);
            return answer(job, page->contentType, std::move(bytes));
        }
        const auto path = engine_.access().fileAt(job->requestUrl());
        if (!path) return job->fail(QWebEngineUrlRequestJob::UrlNotFound);
        answer(job, engine_.access().contentType(*path),
               std::make_unique<QFile>(engine_.access().contentOf(*path)));
    }

  private:
    static void answer(QWebEngineUrlRequestJob* job, const QByteArray& type,
                       std::unique_ptr<QIODevice> content) {
        if (!content->open(QIODevice::ReadOnly)) return job->fail(QWebEngineUrlRequestJob::RequestDenied);
        QIODevice* device = content.release();
        QObject::connect(job, &QObject::destroyed, device, &QObject::deleteLater);
        job->reply(type, device);
    }

    const WebEngine& engine_;
};

namespace {

void answerWith(QWebEngineUrlRequestJob* job, const QByteArray& type, const QByteArray& bytes) {
    auto* content = new QBuffer(job);
    content->setData(bytes);
    content->open(QIODevice::ReadOnly);
    job->reply(type, content);
}

}  // namespace

class WebEngine::Pictures : public QWebEngineUrlSchemeHandler {
  public:
    explicit Pictures(const WebEngine& engine) : engine_(engine) {}

    void requestStarted(QWebEngineUrlRequestJob* job) override {
        bool isNumber = false;
        const qint64 number = job->requestUrl().path().toLongLong(&isNumber);
        const auto picture = isNumber && engine_.picture ? engine_.picture(number) : std::nullopt;
        if (!picture) return job->fail(QWebEngineUrlRequestJob::UrlNotFound);
        answerWith(job, picture->type, picture->bytes);
    }

  private:
    const WebEngine& engine_;
};

namespace {

void shut(QWebEngineSettings& settings) {
    using S = QWebEngineSettings;
    for (const auto attribute :
         {S::JavascriptCanAccessClipboard, S::JavascriptCanPaste, S::LocalStorageEnabled,
          S::LocalContentCanAccessRemoteUrls,

          S::HyperlinkAuditingEnabled, S::ErrorPageEnabled, S::PluginsEnabled, S::PdfViewerEnabled,
          S::FullScreenSupportEnabled, S::ScreenCaptureEnabled, S::WebGLEnabled, S::AutoLoadIconsForPage,
          S::FocusOnNavigationEnabled, S::AllowRunningInsecureContent, S::AllowGeolocationOnInsecureOrigins,
          S::AllowWindowActivationFromJavaScript, S::DnsPrefetchEnabled, S::NavigateOnDropEnabled,
          S::ScrollAnimatorEnabled})
        settings.setAttribute(attribute, false);
    // Without it the engine would refuse a page its own pictures. The gate says which files.
    settings.setAttribute(S::LocalContentCanAccessFileUrls, true);
    settings.setAttribute(S::WebRTCPublicInterfacesOnly, true);
    settings.setAttribute(S::PrintElementBackgrounds, true);
    settings.setUnknownUrlSchemePolicy(S::DisallowUnknownUrlSchemes);
    settings.setDefaultTextEncoding(u"windows-1254"_s);
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
    QWebEngineUrlScheme scheme(PageAccess::Scheme.latin1());
    scheme.setSyntax(QWebEngineUrlScheme::Syntax::Host);  // so that relative names resolve
    // A page's script may go to a file by its path ("file:///home/..."); ContentPage turns that into an
    // address.
    scheme.setFlags(QWebEngineUrlScheme::LocalScheme);
    QWebEngineUrlScheme::registerScheme(scheme);
    QWebEngineUrlScheme pictures(PictureScheme);
    pictures.setSyntax(QWebEngineUrlScheme::Syntax::Path);
    // Pages are local, and local pages reach nothing else.
    pictures.setFlags(QWebEngineUrlScheme::LocalScheme);
    QWebEngineUrlScheme::registerScheme(pictures);

    // Behind the gate there is no network at all: every connection, also one that is no request (WebRTC, the
    // engine's own housekeeping), has to take a proxy whose name is not looked up, as no name is.
    QByteArray flags = qgetenv("QTWEBENGINE_CHROMIUM_FLAGS");
    flags +=
        " --proxy-server=http://lirovan.invalid:1 --proxy-bypass-list=<-loopback>"
        " --host-resolver-rules=\"MAP * ~NOTFOUND\" --dns-prefetch-disable --disable-quic"
        " --force-webrtc-ip-handling-policy=disable_non_proxied_udp --disable-background-networking "
        "--no-pings";
    // Marks that are not in the page (page_find.js).
    flags += " --enable-blink-features=HighlightAPI";
    // The engine's own log says at an end that a process is gone, and nothing that helps a reader: a page
    // that fails is told in its window. A level that the environment asks for is kept.
    if (!flags.contains("--log-level")) flags += " --log-level=3";
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", flags.trimmed());
}

std::shared_ptr<WebEngine> WebEngine::create(const AppFolder& folder, const QUrl& installer) {
    tellColourScheme();
    return std::shared_ptr<WebEngine>(new WebEngine(folder, installer));
}

WebEngine::WebEngine(const AppFolder& folder, QUrl installer)
    : access_(folder),
      installer_(std::move(installer)),
      gate_(std::make_unique<Gate>(*this)),
      files_(std::make_unique<Files>(*this)),
      pictures_(std::make_unique<Pictures>(*this)),
      profile_(std::make_unique<QWebEngineProfile>()) {
    Q_ASSERT(profile_->isOffTheRecord());
    profile_->setUrlRequestInterceptor(gate_.get());
    profile_->installUrlSchemeHandler(PageAccess::Scheme.latin1(), files_.get());
    profile_->installUrlSchemeHandler(PictureScheme, pictures_.get());
    profile_->setHttpCacheType(QWebEngineProfile::NoCache);
    profile_->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
    profile_->setSpellCheckEnabled(false);
    profile_->cookieStore()->setCookieFilter([](const auto&) { return false; });
    shut(*profile_->settings());
    for (const QStringView tools : {u"page_tools", u"page_places", u"page_find"})
        profile_->scripts()->insert(pageScript(tools.toString()));
    style_ = std::make_unique<PageStyle>(*profile_);
    QObject::connect(profile_.get(), &QWebEngineProfile::downloadRequested, profile_.get(),
                     [](QWebEngineDownloadRequest* download) { download->cancel(); });
}

QWebEngineScript WebEngine::pageScript(const QString& name) {
    QFile source(u":/lirovan/platform/%1.js"_s.arg(name));
    const bool opened = source.open(QIODevice::ReadOnly);
    Q_ASSERT_X(opened, "page script", "not built in");
    QWebEngineScript script;
    script.setName(name);
    script.setSourceCode(opened ? QString::fromUtf8(source.readAll()) : QString());
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::ApplicationWorld);
    script.setRunsOnSubFrames(false);
    return script;
}

WebEngine::~WebEngine() = default;

std::optional<QString> WebEngine::fileAt(const QUrl& address) const {
    const GivenPage* page = pages_.at(address);
    return page ? std::optional(page->file) : access_.fileAt(address);
}

bool WebEngine::isInstaller(const QUrl& url) const {
    return !installer_.isEmpty() && (url.scheme() == u"http" || url.scheme() == u"https") &&
           url == installer_;
}

}  // namespace lirovan::platform
