#include "platform/core/page_access.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

namespace lirovan::platform {

using namespace Qt::StringLiterals;

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
    if (text.startsWith(u"file://", Qt::CaseInsensitive)) return QUrl(text).toLocalFile();
    const QString path = text.mid(5);
    qsizetype separators = 0;
    while (separators < path.size() && (path[separators] == u'/' || path[separators] == u'\\')) ++separators;
    const bool drive = separators + 1 < path.size() && path[separators + 1] == u':';
    return drive ? path.mid(separators) : u'/' + path.mid(separators);
}

/// Whether an HTML file begins with a byte order mark or names its character set.
bool tellsItsEncoding(const QString& file) {
    QFile content(file);
    if (!content.open(QIODevice::ReadOnly)) return false;
    const QByteArray start = content.read(1024);  // as far as the engine looks
    if (start.startsWith("\xef\xbb\xbf") || start.startsWith("\xff\xfe") || start.startsWith("\xfe\xff"))
        return true;
    static const QRegularExpression meta(u"<meta[^>]+charset"_s, QRegularExpression::CaseInsensitiveOption);
    return QString::fromLatin1(start).contains(meta);
}

// What pages are made of. The desktop's own table of types differs from machine to machine.
struct Type {
    QLatin1StringView suffix;
    const char* type;
};
constexpr Type Types[] = {
    {QLatin1StringView("html"), "text/html"},    {QLatin1StringView("htm"), "text/html"},
    {QLatin1StringView("gif"), "image/gif"},     {QLatin1StringView("png"), "image/png"},
    {QLatin1StringView("jpg"), "image/jpeg"},    {QLatin1StringView("jpeg"), "image/jpeg"},
    {QLatin1StringView("bmp"), "image/bmp"},     {QLatin1StringView("ico"), "image/x-icon"},
    {QLatin1StringView("svg"), "image/svg+xml"}, {QLatin1StringView("webp"), "image/webp"},
    {QLatin1StringView("css"), "text/css"},      {QLatin1StringView("js"), "text/javascript"},
    {QLatin1StringView("txt"), "text/plain"},    {QLatin1StringView("woff"), "font/woff"},
    {QLatin1StringView("woff2"), "font/woff2"},  {QLatin1StringView("ttf"), "font/ttf"},
    {QLatin1StringView("mp3"), "audio/mpeg"},    {QLatin1StringView("ogg"), "audio/ogg"},
    {QLatin1StringView("wav"), "audio/wav"},     {QLatin1StringView("mp4"), "video/mp4"},
};

// The page that the program writes.
constexpr QStringView PageFile = u"\\OKU\\oku.html";

}  // namespace

PageAccess::PageAccess(AppFolder folder)
    : folder_(std::move(folder)), root_(resolved(folder_.text()) + u'/') {}

bool PageAccess::isInside(const QString& path) const {
    return resolved(path).startsWith(root_);
}

// The folder's own name may hold a backslash that separates nothing.
QString PageAccess::realPath(const QString& path) const {
    for (const QString& start : {folder_.text() + u'\\', folder_.text() + u'/', root_}) {
        if (!path.startsWith(start)) continue;
        const QString below = QDir::cleanPath(u"./"_s + withSlashes(path.mid(start.size())));
        if (!below.startsWith(u"..")) return folder_.path(u'/' + below);
    }
    return existingPath(QDir::cleanPath(withSlashes(path)));
}

std::optional<QString> PageAccess::file(const QString& pathText) const {
    if (pathText.isEmpty() || pathText.contains(QChar(u'\0'))) return std::nullopt;
    const QString path = realPath(withoutScheme(pathText));
    if (!isInside(path)) return std::nullopt;
    return path;
}

std::optional<QString> PageAccess::fileAt(const QUrl& address) const {
    if (address.scheme() != Scheme || address.host() != Host) return std::nullopt;
    auto path = file(u"file://"_s + address.path(QUrl::FullyEncoded));
    if (path && contentOf(*path).isEmpty()) return std::nullopt;
    return path;
}

QString PageAccess::contentOf(const QString& file) const {
    return QFileInfo(file).isFile() ? file : ownContent(folder_, file, first_);
}

QUrl PageAccess::address(const QString& file) const {
    QUrl url = QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath());
    url.setScheme(Scheme);
    url.setHost(Host);
    return url;
}

bool PageAccess::isPageFile(const QString& file) const {
    return file == folder_.path(PageFile);
}

QByteArray PageAccess::contentType(const QString& file) const {
    const QString suffix = QFileInfo(file).suffix();
    const auto* found = std::find_if(std::begin(Types), std::end(Types), [&](const Type& type) {
        return suffix.compare(type.suffix, Qt::CaseInsensitive) == 0;
    });
    if (found == std::end(Types)) return "application/octet-stream";
    const QByteArray type = found->type;
    if (type != "text/html" || (!isPageFile(file) && tellsItsEncoding(contentOf(file)))) return type;
    return type + "; charset=windows-1254";
}

}  // namespace lirovan::platform
