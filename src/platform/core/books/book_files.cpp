#include "platform/core/books/book_files.h"

#include <QDir>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>
#include <algorithm>

#include "text/comparison.h"

namespace lirovan::platform {

namespace {
constexpr QStringView Endings[] = {u"epub", u"html", u"htm", u"xhtml", u"md", u"markdown",
                                   u"txt",  u"docx", u"odt", u"fb2",   u"rtf"};

bool isIndex(const QString& name) {
    for (const QStringView index : {u"index.html", u"index.htm", u"index.xhtml"})
        if (name.compare(index, Qt::CaseInsensitive) == 0) return true;
    return false;
}
}  // namespace

bool isBookFile(const QString& path) {
    const QString ending = QFileInfo(path).suffix();
    return std::any_of(std::begin(Endings), std::end(Endings),
                       [&](QStringView known) { return ending.compare(known, Qt::CaseInsensitive) == 0; });
}

QStringList bookFiles(const QStringList& paths) {
    QStringList files;
    for (const QString& path : paths) {
        if (!QFileInfo(path).isDir()) {
            files += path;
            continue;
        }
        QStringList names = QDir(path).entryList(QDir::Files);
        std::sort(names.begin(), names.end(),
                  [](const QString& a, const QString& b) { return text::order(a, b) < 0; });
        if (std::any_of(names.begin(), names.end(), isIndex)) {
            files += path;
            continue;
        }
        for (const QString& name : names)
            if (isBookFile(name)) files += QDir(path).filePath(name);
    }
    return files;
}

QStringList draggedFiles(const QMimeData& dragged) {
    QStringList files;
    for (const QUrl& url : dragged.urls())
        if (url.isLocalFile()) files << url.toLocalFile();
    return files;
}

}  // namespace lirovan::platform
