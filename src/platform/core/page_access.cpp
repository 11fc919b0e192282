#include "platform/core/page_access.h"

#include <QDir>
#include <QFileInfo>

namespace lirovan::platform {

namespace {

/// `path` with its links followed. Of what does not exist the existing beginning is resolved.
QString resolved(const QString& path) {
    const QFileInfo info(path);
    if (const QString canonical = info.canonicalFilePath(); !canonical.isEmpty()) return canonical;
    const QString parent = info.path();
    if (parent == path || parent.isEmpty()) return path;
    return resolved(parent) + u'/' + info.fileName();
}

QString withSlashes(QString path) {
    return path.replace(u'\\', u'/');
}

/// The path part of "file:\C:\x", "file:\/home/x" and the like.
QString withoutScheme(const QString& text) {
    if (!text.startsWith(u"file:", Qt::CaseInsensitive)) return text;
    const QString slashed = withSlashes(text);
    if (slashed.startsWith(u"file://")) return QUrl(slashed).toLocalFile();
    QString path = slashed.mid(5);
    while (path.startsWith(u"//")) path.remove(0, 1);
    const bool drive = path.size() > 2 && path.at(0) == u'/' && path.at(2) == u':';
    return drive ? path.mid(1) : path;
}

}  // namespace

PageAccess::PageAccess(AppFolder folder)
    : folder_(std::move(folder)), root_(resolved(folder_.text()) + u'/') {}

bool PageAccess::isInside(const QString& path) const {
    return resolved(path).startsWith(root_);
}

std::optional<QString> PageAccess::file(const QString& pathText) const {
    if (pathText.isEmpty() || pathText.contains(QChar(u'\0'))) return std::nullopt;
    const QString path = existingPath(QDir::cleanPath(withSlashes(withoutScheme(pathText))));
    if (!isInside(path)) return std::nullopt;
    return path;
}

PageAccess::Decision PageAccess::judge(const QUrl& url) const {
    if (url.scheme() != u"file" || !url.host().isEmpty()) return {};
    const QString written = url.toLocalFile();
    const auto path = file(written);
    if (!path || !QFileInfo(*path).isFile()) return {};
    if (QDir::cleanPath(written) == *path) return {Verdict::Allow, {}};
    QUrl target = QUrl::fromLocalFile(*path);
    if (url.hasFragment()) target.setFragment(url.fragment(QUrl::FullyEncoded));
    return {Verdict::Redirect, target};
}

}  // namespace lirovan::platform
