#include "platform/core/page_access.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>

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

/// Whether an HTML file begins with a byte order mark or names its character set.
bool tellsItsEncoding(const QString& file) {
    QFile content(file);
    if (!content.open(QIODevice::ReadOnly)) return false;
    const QByteArray start = content.read(1024);  // as far as the engine looks
    if (start.startsWith("\xef\xbb\xbf") || start.startsWith("\xff\xfe") || start.startsWith("\xfe\xff"))
        return true;
    static const QRegularExpression meta(QStringLiteral("<meta[^>]+charset"),
                                         QRegularExpression::CaseInsensitiveOption);
    return QString::fromLatin1(start).contains(meta);
}

// The page that the program writes.
constexpr QStringView PageFile = u"\\OKU\\oku.html";

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

std::optional<QString> PageAccess::fileAt(const QUrl& address) const {
    if (address.scheme() != Scheme || address.host() != Host) return std::nullopt;
    auto path = file(QStringLiteral("file://") + address.path(QUrl::FullyEncoded));
    if (path && !QFileInfo(*path).isFile()) return std::nullopt;
    return path;
}

QUrl PageAccess::address(const QString& file) const {
    QUrl url = QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath());
    url.setScheme(Scheme);
    url.setHost(Host);
    return url;
}

QByteArray PageAccess::contentType(const QString& file) const {
    // Only what pages are made of: the desktop's own table of types can differ from machine to machine.
    static const QHash<QString, QByteArray> types{
        {QStringLiteral("gif"), "image/gif"},     {QStringLiteral("png"), "image/png"},
        {QStringLiteral("jpg"), "image/jpeg"},    {QStringLiteral("jpeg"), "image/jpeg"},
        {QStringLiteral("bmp"), "image/bmp"},     {QStringLiteral("ico"), "image/x-icon"},
        {QStringLiteral("svg"), "image/svg+xml"}, {QStringLiteral("webp"), "image/webp"},
        {QStringLiteral("css"), "text/css"},      {QStringLiteral("js"), "text/javascript"},
        {QStringLiteral("txt"), "text/plain"},    {QStringLiteral("woff"), "font/woff"},
        {QStringLiteral("woff2"), "font/woff2"},  {QStringLiteral("ttf"), "font/ttf"},
        {QStringLiteral("mp3"), "audio/mpeg"},    {QStringLiteral("ogg"), "audio/ogg"},
        {QStringLiteral("wav"), "audio/wav"},     {QStringLiteral("mp4"), "video/mp4"},
        {QStringLiteral("htm"), "text/html"},     {QStringLiteral("html"), "text/html"}};
    const QByteArray type = types.value(QFileInfo(file).suffix().toLower(), "application/octet-stream");
    if (type != "text/html" || (file != folder_.path(PageFile) && tellsItsEncoding(file))) return type;
    return type + "; charset=windows-1254";
}

}  // namespace lirovan::platform
