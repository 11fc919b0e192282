#include "search/runs/companion.h"

#include <memory>
#include <optional>
#include <vector>

#include "browse/page_layout.h"
#include "platform/core/json_line.h"
#include "search/matching/variant_table.h"
#include "search/pages/result_page.h"
#include "search/study/contexts.h"
#include "search/study/distribution.h"
#include "search/study/hit_list.h"
#include "search/study/study_summary.h"

namespace lirovan::search::companion {

using platform::JsonLine;
using platform::jsonString;
using platform::Result;
using namespace Qt::StringLiterals;

namespace {

QByteArray jsonList(const std::vector<QByteArray>& items) {
    QByteArray list = "[";
    for (const QByteArray& item : items) list += (list.size() > 1 ? "," : "") + item;
    return list + ']';
}

QByteArray jsonTexts(const QStringList& texts) {
    std::vector<QByteArray> items;
    for (const QString& text : texts) items.push_back(jsonString(text));
    return jsonList(items);
}

QByteArray jsonValue(const NodeValue& value) {
    if (const auto* number = std::get_if<qint64>(&value)) return QByteArray::number(*number);
    if (const auto* text = std::get_if<QString>(&value)) return jsonString(*text);
    return "null";
}

QByteArray jsonNode(const ResultNode& node) {
    return JsonLine()
        .text("anahtar", node.key)
        .raw("ust", node.parent ? jsonString(node.parent->key) : QByteArray("null"))
        .text("metin", node.text)
        .raw("simge", jsonValue(node.image))
        .raw("etiket", jsonValue(node.tag))
        .finish();
}

QByteArray jsonNodes(const ResultTree& tree) {
    std::vector<QByteArray> items;
    for (int run = 0; run < tree.runCount(); ++run)
        for (const ResultNode& node : tree.nodes(run)) items.push_back(jsonNode(node));
    return jsonList(items);
}

struct Run {
    // Without a host: a run that nobody watches.
    explicit Run(const data::Library& library, SearchRequest request,
                 std::unique_ptr<RunHost> watching = std::make_unique<RunHost>())
        : host(std::move(watching)), engine(library, tree), result(engine.run(std::move(request), *host)) {}
    std::unique_ptr<RunHost> host;
    ResultTree tree;
    SearchEngine engine;
    Result<SearchOutcome> result;
};

}  // namespace

Result<QByteArray> ara(const data::Library& library, const SearchRequest& request) {
    const Run run(library, request);
    if (!run.result) return run.result.error();
    SearchRun empty;
    if (request.options.caseSensitive) empty.KarsilastirmaKipi = text::Comparison::Exact;
    const SearchRun* const listed = run.result->run;
    const SearchRun& stored = listed ? *listed : empty;
    return JsonLine()
               .raw("kelimeler", jsonTexts(stored.AramaKelimeleri))
               .number("kip", static_cast<qint64>(stored.KarsilastirmaKipi))
               .raw("varyantlar", jsonTexts(stored.TumVaryantlar))
               .raw("dugumler", jsonNodes(run.tree))
               .text("isabetKaydi", stored.IsabetKaydi)
               .number("bulunan", run.result->listed)
               .finish() +
           '\n';
}

QByteArray vurgula(const data::Library& library, const platform::AppFolder& folder, data::TopicId topic,
                   const SearchRequest& request, bool json) {
    ResultTree tree;
    RunHost host;
    const SearchRun run = SearchEngine(library, tree).prepare(request, host).run;
    const auto page = highlightedPage(library, folder, topic, {}, run);
    if (!page) return {};
    if (!json) return browse::pageBytes(page->page);
    std::vector<QByteArray> colours;
    for (const auto& [word, colour] : page->marks.colours) colours.push_back(jsonTexts({word, colour}));
    return JsonLine().number("isabet", qint64(page->marks.hits)).raw("renkler", jsonList(colours)).finish() +
           '\n';
}

Result<QByteArray> ozet(const data::Library& library, const SearchRequest& request, int group) {
    const Run run(library, request);
    if (!run.result) return run.result.error();
    const Result<QString> page = summaryPage(
        library, run.result->run, group, [](qsizetype) {}, [] { return true; });
    if (!page) return page.error();
    return browse::pageBytes(*page);
}

Result<void> ozetBelgesi(const data::Library& library, const SearchRequest& request, int group,
                         const Output& output) {
    Run run(library, request);
    if (!run.result) return run.result.error();
    const SearchRun* const stored = run.result->run;
    if (!stored) return platform::Error{u"Aranacak kelime yok."_s};
    Result<HitList> list = hitListOf(library, run.engine.outline(), *stored);
    if (!list) return list.error();
    const RunHits hits{*stored, request.query, std::move(*list)};
    const auto print = [&](const QByteArray& piece) {
        output(piece);
        return Result<void>();
    };
    const Result<bool> made = studySummary(library, hits, group, print, [](qint64, qint64) { return true; });
    if (!made) return made.error();
    return {};
}

namespace {

// Enough at a time to be worth a call.
constexpr qsizetype OutputPiece = 1 << 16;

// Gathers lines until there is enough of them.
class Lines {
  public:
    explicit Lines(const Output& output) : output_(output) {}
    ~Lines() { output_(text); }
    Lines(const Lines&) = delete;
    Lines& operator=(const Lines&) = delete;
    void end() {
        text += '\n';
        if (text.size() < OutputPiece) return;
        output_(text);
        text.resize(0);
    }
    QByteArray text;

  private:
    const Output& output_;
};

void appendContext(QByteArray& line, data::TopicId topic, const Context& context) {
    line += "{\"konu\":" + QByteArray::number(topic.value) +
            ",\"konum\":" + QByteArray::number(context.position) + ",\"sol\":";
    platform::appendJsonString(line, context.left);
    line += ",\"isabet\":";
    platform::appendJsonString(line, context.hit);
    line += ",\"sag\":";
    platform::appendJsonString(line, context.right);
    line += '}';
}

// Makes the contexts of a topic while its text is at hand: reading it once more would take as long.
class ContextHost : public RunHost {
  public:
    ContextHost(qsizetype width, OnTopic onTopic) : width_(width), onTopic_(std::move(onTopic)) {}
    void topicCounted(const SearchRun& run, const TopicRow& row, std::string_view text) override {
        if (!record_) record_.emplace(run);
        HitTopic topic;
        if (record_->next(topic)) onTopic_(row.topic, contextsOf(text, topic.hits, width_).contexts);
    }

  private:
    qsizetype width_;
    OnTopic onTopic_;
    std::optional<RecordedHits> record_;
};

class LengthHost : public RunHost {
  public:
    explicit LengthHost(TextLengths& lengths) : lengths_(lengths) {}
    void topicCounted(const SearchRun&, const TopicRow& topic, std::string_view text) override {
        lengths_.insert(topic.row, unitsOf(text));
    }

  private:
    TextLengths& lengths_;
};

void appendBook(QByteArray& line, const BookHits& book) {
    line += "{\"kitap\":" + QByteArray::number(book.book.value) +
            ",\"uzunluk\":" + QByteArray::number(book.length) + ",\"isabetler\":[";
    for (size_t i = 0; i < book.hits.size(); ++i) {
        line += i > 0 ? ",[" : "[";
        line += QByteArray::number(book.hits[i].word) + ',' + QByteArray::number(book.hits[i].position) + ']';
    }
    line += "]}";
}

}  // namespace

Result<void> baglam(const data::Library& library, const SearchRequest& request, qsizetype width,
                    const Output& output) {
    Lines lines(output);
    const auto print = [&](data::TopicId topic, const std::vector<Context>& contexts) {
        for (const Context& context : contexts) {
            appendContext(lines.text, topic, context);
            lines.end();
        }
        return true;
    };
    const Run run(library, request, std::make_unique<ContextHost>(width, print));
    if (!run.result) return run.result.error();
    // By ratio the order is known only at the end.
    if (!run.result->run || request.order != ListOrder::Oran) return {};
    return contextsOfRun(library, *run.result->run, width, print);
}

Result<void> dagilim(const data::Library& library, const SearchRequest& request, const Output& output) {
    TextLengths lengths;
    Run run(library, request, std::make_unique<LengthHost>(lengths));
    if (!run.result) return run.result.error();
    if (!run.result->run) return {};
    Lines lines(output);
    return booksOfRun(
        library, run.engine.outline(), *run.result->run, request.scope,
        [&](const BookHits& book) {
            appendBook(lines.text, book);
            lines.end();
            return true;
        },
        WantedBooks::WithHits, lengths);
}

Result<QByteArray> kelimeler(const data::Library& library) {
    const Result<qint64> rows = rebuildVariantTable(library, [] { return true; });
    if (!rows) return rows.error();
    return QByteArray::number(*rows) + '\n';
}

}  // namespace lirovan::search::companion
