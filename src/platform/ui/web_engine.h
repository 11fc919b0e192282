// What all page views share: the engine's off-the-record profile, with everything shut that could lead out of
// the application folder. Nothing is kept on the disk, and no request reaches the network.
#pragma once

#include <QUrl>
#include <functional>
#include <memory>

#include "platform/core/given_pages.h"
#include "platform/core/page_access.h"
#include "platform/ui/page_style.h"

class QWebEngineProfile;
class QWebEngineScript;

namespace lirovan::platform {

/// A picture that stands in the library and not in a file of its own.
struct LibraryPicture {
    QByteArray type;  ///< "image/png"
    QByteArray bytes;
};

class WebEngine {
  public:
    /// Pages name the library's pictures by number, "resim:12", and link to its topics by id,
    /// "konu:1203#yer". A click on such a link goes to "lirovan://konu/1203#yer".
    static constexpr const char* PictureScheme = "resim";
    static constexpr QLatin1StringView TopicHost{"konu"};
    /// The heading of a passage is one to "lirovan://ozet/3": the fourth of its summary.
    static constexpr QLatin1StringView SummaryHost{"ozet"};

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
    /// Which of the program's own first pages stands in for a folder's; pages shown already stay.
    void setFirstPage(FirstPage first) { access_.setFirstPage(first); }
    GivenPages& pages() { return pages_; }
    /// How pages look; views follow it.
    PageStyle& style() { return *style_; }
    /// Answers for the pictures of pages; nothing: there is none of that number.
    std::function<std::optional<LibraryPicture>(qint64 number)> picture;
    /// The file at an address, also where it is a page that a view was given. Nothing else is shown.
    std::optional<QString> fileAt(const QUrl& address) const;
    bool isInstaller(const QUrl& url) const;
    /// One of our own scripts, by its name: it runs before the page, in a world of its own.
    static QWebEngineScript pageScript(const QString& name);

  private:
    class Gate;
    class Files;
    class Pictures;
    WebEngine(const AppFolder& folder, QUrl installer);

    PageAccess access_;
    GivenPages pages_;
    QUrl installer_;
    std::unique_ptr<Gate> gate_;
    std::unique_ptr<Files> files_;
    std::unique_ptr<Pictures> pictures_;
    std::unique_ptr<QWebEngineProfile> profile_;
    std::unique_ptr<PageStyle> style_;
};

}  // namespace lirovan::platform
