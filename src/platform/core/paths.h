// The application folder and the files in it.
//
// Inside the program and on the pages a path is the folder's text followed by a relative text that begins
// with a backslash, "\OKU\oku.html". Only AppFolder turns such a text into a path of the machine; names are
// matched without regard to case, as "\OKU\OKU.html" and "\OKU\oku.html" are one file.
#pragma once

#include <QString>
#include <QStringView>

namespace lirovan::platform {

class AppFolder {
  public:
    AppFolder() = default;
    /// `folder`: an existing folder or any text; a trailing separator is dropped.
    explicit AppFolder(QString folder);

    /// The folder as text, as it goes onto pages and into the install-path record.
    const QString& text() const { return folder_; }
    /// The folder's text followed by `relative`, for use on pages.
    QString pageText(QStringView relative) const { return folder_ + relative.toString(); }
    /// The real path of `relative` ("\OKU\oku.html") in the folder as it is named: existing names are matched
    /// without regard to case; parts that do not exist are taken as written.
    QString path(QStringView relative) const;

  private:
    QString folder_;
};

/// The first existing path that matches `path` without regard to case, part by part; parts that do not exist
/// are taken as written. Backslashes count as separators.
QString existingPath(const QString& path);

}  // namespace lirovan::platform
