// What a page may load: the files of the application folder, and nothing else.
//
// The page engine asks for every request of every frame. A name is brought to the file that it means first:
// symbolic links and ".." are followed, backslashes separate, letter case does not matter. What then lies
// outside the folder is refused, and so is everything that is no file.
#pragma once

#include <QString>
#include <QUrl>
#include <optional>

#include "platform/core/paths.h"

namespace lirovan::platform {

class PageAccess {
  public:
    enum class Verdict { Allow, Redirect, Refuse };
    struct Decision {
        Verdict verdict = Verdict::Refuse;
        QUrl target;  ///< Redirect: the same file under the name that it has on the disk
    };

    explicit PageAccess(AppFolder folder);

    /// The real path that a path text means, if it lies inside the folder, whether it exists or not. Taken
    /// are
    /// "<folder>\OKU\oku.html", "file:\<folder>\OKU\oku.html" and file URLs.
    std::optional<QString> file(const QString& pathText) const;

    /// For a page, a frame or anything that a page refers to. Folders are refused.
    Decision judge(const QUrl& url) const;

    const AppFolder& folder() const { return folder_; }

  private:
    bool isInside(const QString& path) const;

    AppFolder folder_;
    QString root_;  ///< the folder itself, links followed, with a separator at its end
};

}  // namespace lirovan::platform
