// What a page may load: the files of the application folder, and nothing else.
//
// Inside the page engine a file has an address of the program's own scheme, "lirovan://kitaplik/<real path>".
// So there is one place that hands files to pages, it can tell their encoding, and no page stands in the
// world of file addresses. A name is brought to the file that it means first: symbolic links and ".." are
// followed, backslashes separate, letter case does not matter. What then lies outside the folder has no
// address.
#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <optional>

#include "platform/core/own_pages.h"
#include "platform/core/paths.h"

namespace lirovan::platform {

class PageAccess {
  public:
    static constexpr QLatin1StringView Scheme{"lirovan"};
    static constexpr QLatin1StringView Host{"kitaplik"};

    explicit PageAccess(AppFolder folder);

    /// The real path that a path text means, if it lies inside the folder, whether it exists or not. Taken
    /// are
    /// "<folder>\OKU\oku.html", "file:\<folder>\OKU\oku.html" and file URLs.
    std::optional<QString> file(const QString& pathText) const;
    /// The file at an address, if it lies inside the folder and has content. Folders have none.
    std::optional<QString> fileAt(const QUrl& address) const;
    /// Where the content of a file stands: the file itself, or, where it does not exist, what the program has
    /// in its place. Empty: there is none.
    QString contentOf(const QString& file) const;
    void setFirstPage(FirstPage first) { first_ = first; }
    /// The address of a file by its real path.
    QUrl address(const QString& file) const;

    /// The type of a file by its name, for pages with their encoding where they do not tell it themselves:
    /// "text/html; charset=windows-1254". The page file always has that one, whatever a topic's text says.
    QByteArray contentType(const QString& file) const;

    /// The page that the program writes.
    bool isPageFile(const QString& file) const;

    const AppFolder& folder() const { return folder_; }

  private:
    bool isInside(const QString& path) const;
    QString realPath(const QString& path) const;

    AppFolder folder_;
    FirstPage first_ = FirstPage::Ordinary;
    QString root_;  ///< the folder itself, links followed, with a separator at its end
};

}  // namespace lirovan::platform
