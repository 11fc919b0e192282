#include "search/companion.h"

#include "browse/page_layout.h"
#include "search/result_page.h"
#include "search/variant_table.h"
#include "text/blanks.h"

namespace lirovan::search::companion {

using namespace Qt::StringLiterals;
using platform::Result;

namespace {

QString jsonText(QStringView text) {
    QString json = u"\""_s;
    for (const QChar unit : text) {
        if (unit == u'"' || unit == u'\\') {
            json += u'\\';
            json += unit;
        } else if (unit == u'\n') {
            json += u"\\n"_s;
        } else if (unit < u' ') {
            json += u"\\u"_s + QString::number(unit.unicode(), 16).rightJustified(4, u'0');
        } else {
            json += unit;
        }
    }
    return json += u'"';
}

QString jsonTexts(const QStringList& texts) {
    QStringList items;
    for (const QString& text : texts) items += jsonText(text);
    return u'[' + items.join(u',') + u']';
}

QString jsonValue(const NodeValue& value) {
    if (const auto* number = std::get_if<qint64>(&value)) return QString::number(*number);
    if (const auto* text = std::get_if<QString>(&value)) return jsonText(*text);
    return u"null"_s;
}

QString jsonNode(const ResultNode& node) {
    return u"{\"anahtar\":"_s + jsonText(node.key) + u",\"ust\":"_s +
           (node.parent ? jsonText(node.parent->key) : u"null"_s) + u",\"metin\":"_s + jsonText(node.text) +
           u",\"simge\":"_s + jsonValue(node.image) + u",\"etiket\":"_s + jsonValue(node.tag) + u'}';
}

QString jsonNodes(const ResultTree& tree) {
    QStringList items;
    for (int run = 0; run < tree.runCount(); ++run)
        for (const ResultNode& node : tree.nodes(run)) items += jsonNode(node);
    return u'[' + items.join(u',') + u']';
}

// A run that nobody watches.
struct Run {
    explicit Run(const data::Library& library, Request& request)
        : engine(library, tree),
          result(engine.listele(request.query, request.order, request.query, request.options, request.scope,
                                host)) {}
    RunHost host;
    ResultTree tree;
    SearchEngine engine;
    Result<RunResult> result;
    const SearchRun* stored() const { return engine.stores().find(1); }
};

}  // namespace

Result<QByteArray> ara(const data::Library& library, Request request) {
    const Run run(library, request);
    if (!run.result) return run.result.error();
    SearchRun empty;
    if (request.options.caseSensitive) empty.KarsilastirmaKipi = text::Comparison::Exact;
    const SearchRun& stored = run.stored() ? *run.stored() : empty;
    const QString json = u"{\"kelimeler\":"_s + jsonTexts(stored.AramaKelimeleri) + u",\"kip\":"_s +
                         QString::number(static_cast<int>(stored.KarsilastirmaKipi)) + u",\"varyantlar\":"_s +
                         jsonTexts(stored.TumVaryantlar) + u",\"dugumler\":"_s + jsonNodes(run.tree) +
                         u",\"isabetKaydi\":"_s + jsonText(stored.IsabetKaydi) + u",\"bulunan\":"_s +
                         QString::number(run.result->listed) + u"}\n"_s;
    return json.toUtf8();
}

QByteArray vurgula(const data::Library& library, const platform::AppFolder& folder, data::TopicId topic,
                   Request request, bool json) {
    ResultTree tree;
    RunHost host;
    RunResult::End end;
    const SearchRun run =
        SearchEngine(library, tree).prepare(request.query, request.options, host, end).value_or(SearchRun());
    const auto page =
        highlightedPage(library, folder, topic, run, request.options.allWords, request.options.wholeWord);
    if (!page) return {};
    if (!json) return browse::pageBytes(page->page);
    QStringList colours;
    for (const auto& [word, colour] : page->marks.colours) colours += jsonTexts({word, colour});
    return (u"{\"isabet\":"_s + QString::number(page->marks.hits) + u",\"renkler\":["_s + colours.join(u',') +
            u"]}\n"_s)
        .toUtf8();
}

Result<QByteArray> ozet(const data::Library& library, Request request, int group) {
    const QString typed = request.query;
    const Run run(library, request);
    if (!run.result) return run.result.error();
    const auto phraseLength =
        request.options.together ? std::optional(text::trimBlanks(typed).size()) : std::nullopt;
    const Result<QString> page = summaryPage(
        library, run.stored(), group, phraseLength, [](qsizetype) {}, [] { return true; });
    if (!page) return page.error();
    return browse::pageBytes(*page);
}

Result<QByteArray> kelimeler(const data::Library& library) {
    const Result<qint64> rows = rebuildVariantTable(library, [] { return true; });
    if (!rows) return rows.error();
    return QByteArray::number(*rows) + '\n';
}

}  // namespace lirovan::search::companion
