// What all page views share: the engine's off-the-record profile, with everything shut that could lead out of
// the application folder. Nothing is kept on the disk, and no request reaches the network.
#pragma once

#include <QUrl>
#include <memory>

#include "platform/core/given_pages.h"
#include "platform/core/page_access.h"

class QWebEngineProfile;
class QWebEngineScript;

namespace lirovan::platform {

class WebEngine {
  public:
    /// Settles what the engine reads once at its start. Call before the QApplication is made; without it no
    /// page is shown.
    static void prepare();

    /// Make it after the QApplication; views keep it alive. `installer`: the address up to and including the
    /// path of the installer on the update server; empty: there is none.
    static std::shared_ptr<WebEngine> create(const AppFolder& folder, const QUrl& installer = {});
    ~WebEngine();
    WebEngine(const WebEngine&) = delete;
    WebEngine& operator=(const WebEngine&) = delete;

    QWebEngineProfile& profile() { return *profile_; }
    const PageAccess& access() const { return access_; }
    GivenPages& pages() { return pages_; }
    /// The file at an address, also where it is a page that a view was given. Nothing else is shown.
    std::optional<QString> fileAt(const QUrl& address) const;
    bool isInstaller(const QUrl& url) const;
    /// One of our own scripts, by its name: it runs before the page, in a world of its own.
    static QWebEngineScript pageScript(const QString& name);

  private:
    class Gate;
    class Files;
    WebEngine(const AppFolder& folder, QUrl installer);

    PageAccess access_;
    GivenPages pages_;
    QUrl installer_;
    std::unique_ptr<Gate> gate_;
    std::unique_ptr<Files> files_;
    std::unique_ptr<QWebEngineProfile> profile_;
};

}  // namespace lirovan::platform
