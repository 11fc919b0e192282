#include "search/study/hit_list.h"

#include <QHash>
#include <algorithm>
#include <cstring>
#include <numeric>
#include <string>

#include "search/study/contexts.h"
#include "text/sort_key.h"

namespace lirovan::search {

using platform::Result;
using platform::Statement;
using platform::Step;

namespace catalogue = data::catalogue;

namespace {

// So much of a context decides where its line stands.
constexpr qsizetype KeyWidth = 32;
// Topics between two calls of the progress.
constexpr qint64 ProgressStep = 64;

// The rows of a run's books one author after the other.
Result<std::vector<TopicRow>> rowsOfScope(const data::Library& library, TopicOutline& outline,
                                          const platform::BookSelection& scope, catalogue::TopicOrder order) {
    const auto authors = authorsOf(library, scope);
    if (!authors) return authors.error();
    std::vector<TopicRow> all;
    for (const data::AuthorId author : *authors) {
        const auto rows = outline.topics(topicsOfScope(scope, author, order));
        if (!rows) return rows.error();
        all.insert(all.end(), (*rows)->begin(), (*rows)->end());
    }
    return all;
}

struct Keys {
    std::string bytes;
    std::vector<size_t> begins;  // by hit
};

// The words alone: a comma beside the hit is no reason to stand elsewhere.
QStringList wordsOf(const QString& context) {
    QString words = context;
    for (QChar& unit : words)
        if (!unit.isLetterOrNumber() && !unit.isSurrogate() && !unit.isMark()) unit = u' ';
    return words.split(u' ', Qt::SkipEmptyParts);
}

// The nearest word first: what makes two contexts alike stands beside the hit.
QString nearestFirst(const QString& left) {
    QStringList words = wordsOf(left);
    std::reverse(words.begin(), words.end());
    return words.join(u' ');
}

void appendKey(Keys& keys, const Context& context, HitOrder order) {
    const auto text = [](std::string_view utf8) {
        return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    };
    if (order == HitOrder::Word)
        text::appendSortKey(keys.bytes, text(context.hit));
    else if (order == HitOrder::Left)
        text::appendSortKey(keys.bytes, nearestFirst(text(context.left)));
    else
        text::appendSortKey(keys.bytes, wordsOf(text(context.right)).join(u' '));
}

// False: `progress` ended it.
Result<bool> makeKeys(Keys& keys, const data::Library& library, const HitList& list, HitOrder order,
                      const HitProgress& progress) {
    const auto reading = platform::Transaction::beginReading(library.database());
    Result<Statement> texts = library.query(catalogue::topicText());
    if (!texts) return texts.error();
    // A hit without context, whose topic is gone, stands before all.
    keys.begins.assign(list.hits.size(), 0);
    keys.bytes.assign(1, '\0');
    const auto all = static_cast<qint64>(list.topics.size());
    for (qint64 i = 0; i < all; ++i) {
        if (i % ProgressStep == 0 && !progress(i, all)) return false;
        const auto index = static_cast<size_t>(i);
        texts->reset();
        if (const auto bound = texts->bind(1, list.topics[index].topic.value); !bound) return bound.error();
        const Result<Step> step = texts->step();
        if (!step) return step.error();
        if (*step == Step::Done) continue;
        const TopicContexts found = contextsOf(texts->utf8(0), list.hitsOf(index), KeyWidth);
        quint32 hit = list.topics[index].firstHit;
        for (const Context& context : found.contexts) {
            // Contexts are in the hits' order; those without one are left out.
            while (list.hits[hit].position != context.position) ++hit;
            keys.begins[hit++] = keys.bytes.size();
            appendKey(keys, context, order);
        }
    }
    return true;
}

}  // namespace

size_t HitList::topicOf(quint32 hit) const {
    const auto behind =
        std::upper_bound(topics.begin(), topics.end(), hit,
                         [](quint32 place, const ListedTopic& topic) { return place < topic.firstHit; });
    return static_cast<size_t>(behind - topics.begin()) - 1;
}

Result<HitList> hitListOf(const data::Library& library, TopicOutline& outline, const SearchRun& run) {
    using Order = catalogue::TopicOrder;
    const auto inBooks = rowsOfScope(library, outline, run.request.scope, Order::Book);
    if (!inBooks) return inBooks.error();
    const bool byHeading = run.request.order == ListOrder::Konu;
    const auto inRun = byHeading ? rowsOfScope(library, outline, run.request.scope, Order::Heading)
                                 : Result(std::vector<TopicRow>());
    if (!inRun) return inRun.error();

    QHash<qint64, quint32> places;  // by heading row
    for (const TopicRow& row : *inBooks) places.insert(row.headingRow, static_cast<quint32>(places.size()));
    // Headings of a topic in the order in which the run met them.
    QHash<qint64, std::vector<const TopicRow*>> headings;
    for (const TopicRow& row : byHeading ? *inRun : *inBooks) headings[row.topic.value].push_back(&row);

    HitList list;
    QHash<qint64, size_t> met;
    RecordedHits record(run);
    HitTopic topic;
    while (record.next(topic)) {
        if (topic.hits.empty()) continue;
        ListedTopic listed{
            topic.topic, {}, 0, static_cast<quint32>(places.size()), static_cast<quint32>(list.hits.size())};
        const auto found = headings.constFind(topic.topic.value);
        if (found != headings.cend()) {
            const size_t heading = std::min(met[topic.topic.value]++, found->size() - 1);
            const TopicRow& row = *found->at(heading);
            listed = {topic.topic, row.book, row.headingRow, places.value(row.headingRow), listed.firstHit};
        }
        list.topics.push_back(listed);
        list.hits.insert(list.hits.end(), topic.hits.begin(), topic.hits.end());
    }
    return list;
}

std::vector<ListedBook> booksOf(const HitList& list) {
    std::vector<size_t> topics(list.topics.size());
    std::iota(topics.begin(), topics.end(), size_t(0));
    std::sort(topics.begin(), topics.end(),
              [&](size_t a, size_t b) { return list.topics[a].place < list.topics[b].place; });
    std::vector<ListedBook> books;
    QHash<qint64, size_t> known;
    for (const size_t topic : topics) {
        const data::BookId book = list.topics[topic].book;
        if (!known.contains(book.value)) {
            known.insert(book.value, books.size());
            books.push_back({book, 0});
        }
        books[known.value(book.value)].hits += list.hitsEnd(topic) - list.topics[topic].firstHit;
    }
    return books;
}

Result<std::optional<std::vector<quint32>>> orderedHits(const data::Library& library, const HitList& list,
                                                        HitOrder order, const HitProgress& progress) {
    std::vector<quint32> hits(list.hits.size());
    std::iota(hits.begin(), hits.end(), quint32(0));
    if (order == HitOrder::Found) return std::optional(std::move(hits));

    std::vector<quint32> places(list.hits.size());
    for (size_t topic = 0; topic < list.topics.size(); ++topic)
        std::fill(places.begin() + list.topics[topic].firstHit, places.begin() + list.hitsEnd(topic),
                  list.topics[topic].place);
    std::sort(hits.begin(), hits.end(), [&](quint32 a, quint32 b) {
        if (places[a] != places[b]) return places[a] < places[b];
        const qint64 left = list.hits[a].position, right = list.hits[b].position;
        return left != right ? left < right : a < b;
    });
    if (order == HitOrder::Source) return std::optional(std::move(hits));

    Keys keys;
    const Result<bool> made = makeKeys(keys, library, list, order, progress);
    if (!made) return made.error();
    if (!*made) return std::optional<std::vector<quint32>>();
    const char* const bytes = keys.bytes.data();
    std::stable_sort(hits.begin(), hits.end(), [&](quint32 a, quint32 b) {
        return std::strcmp(bytes + keys.begins[a], bytes + keys.begins[b]) < 0;
    });
    return std::optional(std::move(hits));
}

std::vector<quint32> hitsInBook(const HitList& list, const std::vector<quint32>& order, data::BookId book) {
    if (book.value == 0) return order;
    std::vector<quint32> hits;
    std::copy_if(order.begin(), order.end(), std::back_inserter(hits),
                 [&](quint32 hit) { return list.topics[list.topicOf(hit)].book == book; });
    return hits;
}

}  // namespace lirovan::search
