#include "tools/book_reader/open_source.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include "tools/book_reader/limits.h"
#include "tools/book_reader/markup.h"
#include "tools/book_reader/scan.h"
#include "tools/book_reader/text_form.h"

namespace lirovan::book_reader {

using namespace Qt::StringLiterals;
namespace {

constexpr qsizetype MostNuls = 1000;  // a text has no more than one in so many bytes

Error unknown() {
    return {
        u"Bu dosya türü tanınmıyor; EPUB, HTML, Markdown, düz metin, DOCX, ODT, FB2 ve RTF eklenebilir."_s};
}

QString indexOf(const QString& folder) {
    for (const char* name : {"index.html", "index.htm", "index.xhtml"})
        if (QFileInfo(folder + u'/' + QString::fromLatin1(name)).isFile()) return QString::fromLatin1(name);
    return {};
}

bool endsWith(const QString& name, std::initializer_list<const char*> endings) {
    return std::any_of(endings.begin(), endings.end(), [&](const char* ending) {
        return name.endsWith(QString::fromLatin1(ending), Qt::CaseInsensitive);
    });
}

Result<QByteArray> readWhole(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return Error{u"Dosya açılamıyor: %1"_s.arg(file.errorString())};
    QByteArray bytes = file.read(MaximalDocumentBytes + 1);
    if (bytes.size() > MaximalDocumentBytes) return Error{u"Metin çok büyük (en çok 24 MB)."_s};
    return bytes;
}

Result<Source> openEpub(const QString& path) {
    auto files = openZip(path);
    if (!files) return files.error();
    auto package = readPackage(**files);
    if (!package) return package.error();
    return Source{std::move(*package), std::move(*files)};
}

// Pages of the folder that the index links to follow it, in the order of the links.
Result<Source> openHtml(const QString& folder, const QString& name, bool withLinks) {
    Source source;
    source.files = openFolder(folder);
    source.package.format = u"HTML"_s;
    source.package.documents = {name};
    const Result<QByteArray> bytes = source.files->read(name, MaximalDocumentBytes);
    if (!bytes) return bytes.error();
    const Result<Markup> markup = Markup::parse(*bytes);
    if (!markup) return markup.error();
    std::vector<Link> links;
    const DocumentScan scan = scanDocument(*markup, 0, name, links);
    source.package.title = scan.title;
    source.package.language = scan.language;
    if (!scan.author.isEmpty()) source.package.creators.push_back({scan.author, u"aut"_s});
    QSet<QString> seen{name};
    for (const Link& link : links) {
        if (!withLinks || seen.contains(link.target) || source.package.documents.size() >= MaximalEntries)
            continue;
        seen.insert(link.target);
        if (endsWith(link.target, {".html", ".htm", ".xhtml"}) && source.files->has(link.target))
            source.package.documents += link.target;
    }
    return source;
}

Result<Source> openPlain(const QString& path, PlainBook (*read)(const QByteArray&), const char* format) {
    const Result<QByteArray> bytes = readWhole(path);
    if (!bytes) return bytes.error();
    const bool isWide = bytes->startsWith("\xFF\xFE") || bytes->startsWith("\xFE\xFF");
    if (!isWide && bytes->count('\0') > bytes->size() / MostNuls)
        return Error{u"Dosyadaki baytlar metin değil."_s};
    PlainBook book = read(*bytes);
    Source source = singleDocument(u"metin.html"_s, std::move(book.html), openFolder(QFileInfo(path).path()));
    source.package.title = book.title;
    source.package.language = book.language;
    source.package.format = QString::fromLatin1(format);
    if (!book.author.isEmpty()) source.package.creators.push_back({book.author, u"aut"_s});
    return source;
}

// Pictures of a DOCX lie in its folder "word".
class WordFiles : public Files {
  public:
    explicit WordFiles(std::unique_ptr<Files> zip) : zip_(std::move(zip)) {}
    bool has(const QString& name) const override { return zip_->has(inside(name)); }
    Result<QByteArray> read(const QString& name, qint64 limit) override {
        return zip_->read(inside(name), limit);
    }

  private:
    // "../" names what lies beside the folder.
    static QString inside(const QString& name) {
        return name.startsWith(u"../") ? name.mid(3) : u"word/"_s + name;
    }
    std::unique_ptr<Files> zip_;
};

// Pictures of an FB2 stand in it as text.
std::unique_ptr<Files> picturesOfFb2(const QString& path) {
    const Result<QByteArray> bytes = readWhole(path);
    const Result<Markup> markup = bytes ? Markup::parse(*bytes) : Result<Markup>(bytes.error());
    std::unique_ptr<Files> files;
    int count = 0;
    for (quint32 i = 0; markup && i < markup->size() && count < 1000; ++i) {
        if (!markup->isStart(i, "binary")) continue;
        const std::string_view id = markup->attribute(i, "id");
        ++count;
        QByteArray encoded;
        for (quint32 j = i + 1; j < (*markup)[i].partner; ++j)
            if ((*markup)[j].kind == Markup::Kind::Text)
                encoded +=
                    QByteArrayView(markup->text(j).data(), static_cast<qsizetype>(markup->text(j).size()));
        files = overlay(QString::fromUtf8(id.data(), static_cast<qsizetype>(id.size())),
                        QByteArray::fromBase64(encoded), std::move(files));
    }
    return files;
}

// Title, author and language as DOCX and ODT keep them beside the text.
void takeProperties(Files& files, Package& package) {
    for (const char* name : {"meta.xml", "../docProps/core.xml"}) {
        const Result<QByteArray> bytes = files.read(QString::fromLatin1(name), MaximalDocumentBytes);
        const Result<Markup> markup = bytes ? Markup::parse(*bytes) : Result<Markup>(bytes.error());
        for (quint32 i = 0; markup && i < markup->size(); ++i) {
            if (!markup->isStart(i)) continue;
            const std::string_view kind = markup->name(i);
            const QString value = markup->simplifiedText(i);
            if (value.isEmpty()) continue;
            if (kind == "title" && package.title.isEmpty()) package.title = value;
            if (kind == "language" && package.language.isEmpty()) package.language = value;
            if ((kind == "creator" || kind == "initial-creator") && package.creators.empty())
                package.creators.push_back({value, u"aut"_s});
        }
    }
}

Result<Source> openForeign(const QString& path, const char* format, const char* shown) {
    std::unique_ptr<Files> files;
    const bool isWord = qstrcmp(format, "docx") == 0;
    if (isWord || qstrcmp(format, "odt") == 0) {
        auto zip = openZip(path);
        if (!zip) return zip.error();
        files = std::move(*zip);
        if (isWord) files = std::make_unique<WordFiles>(std::move(files));
    }
    const bool hasProperties = files != nullptr;
    if (qstrcmp(format, "fb2") == 0) files = picturesOfFb2(path);
    Result<QByteArray> html = throughPandoc(path, QString::fromLatin1(format));
    if (!html) return html.error();
    const Result<Markup> markup = Markup::parse(*html);
    if (!markup) return markup.error();
    std::vector<Link> links;
    const DocumentScan scan = scanDocument(*markup, 0, QString(), links);
    Source source = singleDocument(u"metin.html"_s, std::move(*html), std::move(files));
    source.package.format = QString::fromLatin1(shown);
    // Where a document has no title, pandoc writes the file's name.
    source.package.title = scan.title == QFileInfo(path).completeBaseName() ? QString() : scan.title;
    source.package.language = scan.language;
    if (!scan.author.isEmpty()) source.package.creators.push_back({scan.author, u"aut"_s});
    if (hasProperties) takeProperties(*source.files, source.package);
    return source;
}

Result<Source> openFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return Error{u"Dosya açılamıyor: %1"_s.arg(file.errorString())};
    if (file.size() == 0) return Error{u"Dosya boş."_s};
    if (file.size() > MaximalSourceBytes) return Error{u"Dosya çok büyük (en çok 2 GB)."_s};
    const QByteArray head = file.read(512);
    const QFileInfo info(path);
    const QString name = info.fileName();
    if (endsWith(name, {".docx"})) return openForeign(path, "docx", "DOCX");
    if (endsWith(name, {".odt"})) return openForeign(path, "odt", "ODT");
    if (head.startsWith("PK") || endsWith(name, {".epub"})) return openEpub(path);
    if (endsWith(name, {".fb2"})) return openForeign(path, "fb2", "FB2");
    if (head.contains("{\\rtf")) return openForeign(path, "rtf", "RTF");
    if (endsWith(name, {".rtf"})) return Error{u"Bu bir RTF belgesi değil."_s};
    if (endsWith(name, {".html", ".htm", ".xhtml"})) return openHtml(info.path(), name, false);
    if (endsWith(name, {".md", ".markdown"})) return openPlain(path, fromMarkdown, "Markdown");
    if (endsWith(name, {".txt", ".text"})) return openPlain(path, fromPlainText, "Metin");
    return unknown();
}

}  // namespace

Source singleDocument(const QString& name, QByteArray html, std::unique_ptr<Files> base) {
    Source source;
    source.package.documents = {name};
    source.files = overlay(name, std::move(html), std::move(base));
    return source;
}

Result<Source> openSource(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists()) return Error{u"Dosya yok."_s};
    Result<Source> source = unknown();
    if (info.isDir()) {
        const QString index = indexOf(path);
        if (index.isEmpty()) return Error{u"Klasörde index.html yok."_s};
        source = openHtml(path, index, true);
    } else if (info.isFile()) {
        source = openFile(path);
    }
    if (!source) return source;
    if (source->package.title.simplified().isEmpty()) {
        const QString own = QFileInfo(info.absoluteFilePath()).completeBaseName();
        source->package.title = own.isEmpty() ? u"(adsız)"_s : own;
    }
    return source;
}

Result<QByteArray> sourceHash(const QString& path) {
    QFile file(QFileInfo(path).isDir() ? path + u'/' + indexOf(path) : path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return Error{u"Dosya okunamıyor: %1"_s.arg(file.errorString())};
    return hash.result().toHex();
}

}  // namespace lirovan::book_reader
