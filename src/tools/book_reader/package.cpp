#include "tools/book_reader/package.h"

#include <QHash>
#include <QSet>

#include "tools/book_reader/limits.h"
#include "tools/book_reader/markup.h"

namespace lirovan::book_reader {

using namespace Qt::StringLiterals;
namespace {

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

Result<Markup> parseFile(Files& files, const QString& name) {
    const Result<QByteArray> bytes = files.read(name, MaximalDocumentBytes);
    return bytes ? Markup::parse(*bytes) : Result<Markup>(bytes.error());
}

// Algorithms that only cover fonts.
bool isFontCover(std::string_view algorithm) {
    return algorithm == "http://www.idpf.org/2008/embedding" || algorithm == "http://ns.adobe.com/pdf/enc#RC";
}

Result<void> checkEncryption(Files& files) {
    const QString name = u"META-INF/encryption.xml"_s;
    if (!files.has(name)) return {};
    const Result<Markup> markup = parseFile(files, name);
    if (!markup) return markup.error();
    for (quint32 i = 0; i < markup->size(); ++i)
        if (markup->isStart(i, "EncryptionMethod") && !isFontCover(markup->attribute(i, "Algorithm")))
            return Error{u"Kitap şifreli (kopya korumalı); yalnız şifresiz kitaplar eklenebilir."_s};
    return {};
}

Result<QString> packageName(Files& files) {
    const QString container = u"META-INF/container.xml"_s;
    if (!files.has(container))
        return Error{u"Bu bir EPUB kitabı değil: içinde META-INF/container.xml yok."_s};
    const Result<Markup> markup = parseFile(files, container);
    if (!markup) return markup.error();
    for (quint32 i = 0; i < markup->size(); ++i) {
        if (!markup->isStart(i, "rootfile")) continue;
        const QString name = resolvedName(QString(), text(markup->attribute(i, "full-path")));
        if (files.has(name)) return name;
        return Error{u"Kitabın paket dosyası (“%1”) dosyada yok."_s.arg(name.left(100))};
    }
    return Error{u"META-INF/container.xml bir paket dosyası göstermiyor."_s};
}

struct Item {
    QString name, type, fallback;
    bool navigation = false;
};

bool isDocument(const QString& type) {
    return type == u"application/xhtml+xml" || type == u"text/html" || type == u"image/svg+xml" ||
           type == u"text/x-oeb1-document" || type == u"application/xml";
}

class PackageReader {
  public:
    PackageReader(Files& files, const Markup& markup, QString name)
        : files_(files), markup_(markup), name_(std::move(name)) {}

    Result<Package> read() {
        for (quint32 i = 0; i < markup_.size(); ++i)
            if (markup_.isStart(i)) element(i);
        if (version_.startsWith(u'2') || version_.startsWith(u'1')) package_.format = u"EPUB 2"_s;
        metadata();
        if (const Result<void> ordered = readingOrder(); !ordered) return ordered.error();
        if (const Result<void> listed = contents(); !listed) return listed.error();
        return std::move(package_);
    }

  private:
    std::string_view attribute(quint32 i, std::string_view name) const {
        const std::string_view plain = markup_.attribute(i, name);
        return plain.empty() ? markup_.attribute(i, "opf:" + std::string(name)) : plain;
    }

    void element(quint32 i) {
        const std::string_view name = markup_.name(i);
        if (name == "package") {
            version_ = text(markup_.attribute(i, "version"));
            identifierId_ = text(markup_.attribute(i, "unique-identifier"));
            package_.format = u"EPUB 3"_s;
            package_.needsContents = true;
        } else if (name == "title") {
            titles_.push_back({text(markup_.attribute(i, "id")), markup_.simplifiedText(i)});
        } else if (name == "creator") {
            creators_.push_back(
                {text(markup_.attribute(i, "id")), {markup_.simplifiedText(i), text(attribute(i, "role"))}});
        } else if (name == "language" && package_.language.isEmpty()) {
            package_.language = markup_.simplifiedText(i);
        } else if (name == "identifier") {
            if (package_.identifier.isEmpty() || text(markup_.attribute(i, "id")) == identifierId_)
                package_.identifier = markup_.simplifiedText(i);
        } else if (name == "meta") {
            meta(i);
        } else if (name == "item") {
            item(i);
        } else if (name == "spine") {
            ncx_ = text(markup_.attribute(i, "toc"));
        } else if (name == "itemref") {
            spine_ += text(markup_.attribute(i, "idref"));
        } else if (name == "reference" && markup_.attribute(i, "type") == "cover") {
            package_.covers += fileOf(text(markup_.attribute(i, "href")));
        }
    }

    bool saysFixedLayout(quint32 i, std::string_view property) const {
        if (property == "rendition:layout") return markup_.simplifiedText(i) == u"pre-paginated";
        return markup_.attribute(i, "name") == "fixed-layout" && markup_.attribute(i, "content") == "true";
    }

    void meta(quint32 i) {
        const std::string_view property = markup_.attribute(i, "property");
        const QString refined = text(markup_.attribute(i, "refines")).mid(1);
        const std::string_view name = markup_.attribute(i, "name");
        if (saysFixedLayout(i, property))
            package_.fixedLayout = true;
        else if (property == "belongs-to-collection")
            collections_.push_back({text(markup_.attribute(i, "id")), markup_.simplifiedText(i)});
        else if (!refined.isEmpty())
            refinements_.insert({refined, text(property)}, markup_.simplifiedText(i));
        // What book managers write for EPUB 2, each under its own prefix.
        else if (name.ends_with(":series"))
            series_ = text(markup_.attribute(i, "content")).simplified();
        else if (name.ends_with(":series_index"))
            seriesPlace_ = text(markup_.attribute(i, "content")).simplified();
    }

    QString refinement(const QString& id, const char* property) const {
        return refinements_.value({id, QString::fromLatin1(property)});
    }

    QString fileOf(const QString& href) const {
        return resolvedName(name_, QStringView(href).split(u'#').first());
    }

    void item(quint32 i) {
        const QString href = text(markup_.attribute(i, "href"));
        Item made{fileOf(href), text(markup_.attribute(i, "media-type")),
                  text(markup_.attribute(i, "fallback")), markup_.hasWord(i, "properties", "nav")};
        // Some writers forget to write blanks and the like as percent signs ask.
        if (!files_.has(made.name))
            if (const QString raw = resolvedName(name_, QString(href).replace(u"%"_s, u"%25"_s));
                files_.has(raw))
                made.name = raw;
        items_.insert(text(markup_.attribute(i, "id")), made);
    }

    void metadata() {
        for (const auto& [id, title] : titles_)
            if (package_.title.isEmpty() || refinement(id, "title-type") == u"main") package_.title = title;
        for (const auto& [id, title] : titles_)
            if (refinement(id, "title-type") == u"subtitle" && title != package_.title)
                package_.subtitle = title;
        for (auto& [id, creator] : creators_) {
            if (creator.role.isEmpty()) creator.role = refinement(id, "role");
            if (!creator.name.isEmpty()) package_.creators.push_back(creator);
        }
        for (const auto& [id, name] : collections_)
            if (series_.isEmpty() && refinement(id, "collection-type") != u"set") {
                series_ = name;
                seriesPlace_ = refinement(id, "group-position");
            }
        if (seriesPlace_.endsWith(u".0")) seriesPlace_.chop(2);
        package_.series =
            series_.isEmpty() || seriesPlace_.isEmpty() ? series_ : series_ + u", "_s + seriesPlace_;
    }

    Result<void> readingOrder() {
        for (const QString& id : spine_) {
            const auto found = items_.constFind(id);
            if (found == items_.cend() || !files_.has(found->name))
                return Error{u"Kitap eksik: okuma sırasındaki “%1” dosyada yok."_s.arg(
                    (found == items_.cend() || found->name.isEmpty() ? id : found->name).left(100))};
            Item item = *found;
            for (int step = 0; !isDocument(item.type) && !item.fallback.isEmpty() && step < 8; ++step)
                item = items_.value(item.fallback);
            if (item.navigation) {
                package_.skipped.push_back({item.name, u"içindekiler sayfası"_s});
            } else if (!isDocument(item.type) || !files_.has(item.name)) {
                package_.skipped.push_back({found->name, u"metin değil (%1)"_s.arg(found->type.left(60))});
            } else if (!seen_.contains(item.name)) {
                seen_.insert(item.name);
                package_.documents += item.name;
            }
        }
        if (package_.documents.isEmpty())
            return Error{u"Kitabın okuma sırası boş; okunacak bir bölüm yok."_s};
        return {};
    }

    Result<void> contents() {
        for (const Item& item : std::as_const(items_))
            if (item.navigation && files_.has(item.name)) {
                auto entries = readNavigation(files_, item.name, package_.covers);
                if (!entries) return entries.error();
                package_.contents = std::move(*entries);
            }
        if (!package_.contents.empty()) return {};
        Item ncx = items_.value(ncx_);
        for (const Item& item : std::as_const(items_))
            if (ncx.name.isEmpty() && item.type == u"application/x-dtbncx+xml") ncx = item;
        if (!files_.has(ncx.name)) return {};
        auto entries = readNcx(files_, ncx.name);
        if (!entries) return entries.error();
        package_.contents = std::move(*entries);
        return {};
    }

    Files& files_;
    const Markup& markup_;
    QString name_, version_, identifierId_, ncx_;
    Package package_;
    std::vector<std::pair<QString, QString>> titles_;
    std::vector<std::pair<QString, Creator>> creators_;
    std::vector<std::pair<QString, QString>> collections_;
    QHash<std::pair<QString, QString>, QString> refinements_;  // by id and property
    QString series_, seriesPlace_;
    QHash<QString, Item> items_;
    QStringList spine_;
    QSet<QString> seen_;
};

}  // namespace

Result<Package> readPackage(Files& files) {
    if (const Result<void> open = checkEncryption(files); !open) return open.error();
    const Result<QString> name = packageName(files);
    if (!name) return name.error();
    const Result<Markup> markup = parseFile(files, *name);
    if (!markup) return markup.error();
    return PackageReader(files, *markup, *name).read();
}

}  // namespace lirovan::book_reader
