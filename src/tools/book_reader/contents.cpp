// The two forms of a contents list: the navigation document of EPUB 3 and the NCX of EPUB 2.
#include "tools/book_reader/limits.h"
#include "tools/book_reader/markup.h"
#include "tools/book_reader/package.h"

namespace lirovan::book_reader {

using namespace Qt::StringLiterals;
namespace {

constexpr size_t MaximalContents = 45'000;
constexpr int DeepestEntry = 30;

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

void setTarget(ContentsEntry& entry, const QString& base, std::string_view href) {
    const QString address = text(href).trimmed();
    if (address.isEmpty() || address.contains(u"://")) return;
    const qsizetype hash = address.indexOf(u'#');
    const QString file = hash < 0 ? address : address.left(hash);
    entry.document = file.isEmpty() ? base : resolvedName(base, file);
    entry.fragment = hash < 0 ? QString() : address.mid(hash + 1);
}

Result<Markup> parseFile(Files& files, const QString& name) {
    const Result<QByteArray> bytes = files.read(name, MaximalDocumentBytes);
    return bytes ? Markup::parse(*bytes) : Result<Markup>(bytes.error());
}

Error tooMany() {
    return {u"Kitabın içindekiler listesi ölçüsüz uzun."_s};
}

bool isContents(const Markup& markup, quint32 i) {
    return markup.hasWord(i, "epub:type", "toc") || markup.hasWord(i, "role", "doc-toc");
}

// The list inside one <nav>.
Result<std::vector<ContentsEntry>> readList(const Markup& markup, quint32 nav, const QString& base) {
    std::vector<ContentsEntry> entries;
    std::vector<size_t> open;  // the entries of the open <li>
    for (quint32 i = nav + 1; i < markup[nav].partner; ++i) {
        const Markup::Token& token = markup[i];
        if (token.tag == Tag::Li && token.kind == Markup::Kind::Start) {
            if (entries.size() >= MaximalContents) return tooMany();
            open.push_back(entries.size());
            entries.push_back({{}, std::min(static_cast<int>(open.size()) - 1, DeepestEntry), {}, {}});
        } else if (token.tag == Tag::Li) {
            if (!open.empty()) open.pop_back();
        } else if (token.kind == Markup::Kind::Start && !open.empty() && token.tag != Tag::Ol &&
                   token.tag != Tag::Ul) {
            ContentsEntry& entry = entries[open.back()];
            if (token.tag == Tag::A && entry.document.isEmpty())
                setTarget(entry, base, markup.attribute(i, "href"));
            if (token.tag != Tag::A && token.tag != Tag::Span) continue;
            if (entry.title.isEmpty()) entry.title = markup.simplifiedText(i);
            if (token.tag == Tag::A) i = token.partner;
        } else if (token.kind == Markup::Kind::Text && !open.empty() &&
                   entries[open.back()].title.isEmpty()) {
            entries[open.back()].title = text(markup.text(i)).simplified();
        }
    }
    return entries;
}

}  // namespace

Result<std::vector<ContentsEntry>> readNavigation(Files& files, const QString& name, QStringList& covers) {
    const Result<Markup> markup = parseFile(files, name);
    if (!markup) return markup.error();
    quint32 chosen = 0;
    bool found = false, named = false;
    for (quint32 i = 0; i < markup->size(); ++i) {
        if (!markup->isStart(i)) continue;
        if (markup->hasWord(i, "epub:type", "cover") && !markup->attribute(i, "href").empty()) {
            ContentsEntry cover;
            setTarget(cover, name, markup->attribute(i, "href"));
            covers += cover.document;
        }
        if ((*markup)[i].tag != Tag::Nav || named) continue;
        named = isContents(*markup, i);
        if (named || !found) chosen = i;
        found = true;
    }
    return found ? readList(*markup, chosen, name)
                 : Result<std::vector<ContentsEntry>>(std::vector<ContentsEntry>());
}

Result<std::vector<ContentsEntry>> readNcx(Files& files, const QString& name) {
    const Result<Markup> markup = parseFile(files, name);
    if (!markup) return markup.error();
    std::vector<ContentsEntry> entries;
    std::vector<size_t> open;
    for (quint32 i = 0; i < markup->size(); ++i) {
        if ((*markup)[i].kind == Markup::Kind::End) {
            if (markup->isStart((*markup)[i].partner, "navPoint") && !open.empty()) open.pop_back();
            continue;
        }
        if (markup->isStart(i, "navPoint")) {
            if (entries.size() >= MaximalContents) return tooMany();
            open.push_back(entries.size());
            entries.push_back({{}, std::min(static_cast<int>(open.size()) - 1, DeepestEntry), {}, {}});
        } else if (!open.empty() && markup->isStart(i, "navLabel") && entries[open.back()].title.isEmpty()) {
            entries[open.back()].title = markup->simplifiedText(i);
        } else if (!open.empty() && markup->isStart(i, "content")) {
            setTarget(entries[open.back()], name, markup->attribute(i, "src"));
        }
    }
    return entries;
}

}  // namespace lirovan::book_reader
