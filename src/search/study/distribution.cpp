#include "search/study/distribution.h"

#include <algorithm>
#include <optional>

#include "search/matching/stored_text.h"
#include "search/runs/recorded_hits.h"

namespace lirovan::search {

using platform::Result;
using platform::Statement;
using platform::Step;

namespace catalogue = data::catalogue;

namespace {

using HitsByTopic = QHash<qint64, std::vector<RecordedHit>>;

HitsByTopic hitsByTopic(const SearchRun& run) {
    HitsByTopic hits;
    RecordedHits record(run);
    HitTopic topic;
    // Under a second heading the same hits are recorded again.
    while (record.next(topic))
        if (!hits.contains(topic.topic.value)) hits.insert(topic.topic.value, topic.hits);
    return hits;
}

struct BookTopics {
    data::BookId book;
    std::vector<const TopicRow*> topics;
    bool hasHits = false;
};

// Books that share a place in the order have their topics mixed.
std::vector<BookTopics> byBook(const std::vector<TopicRow>& rows, const HitsByTopic& hits) {
    std::vector<BookTopics> books;
    QHash<qint64, size_t> places;
    for (const TopicRow& row : rows) {
        const auto known = places.constFind(row.book.value);
        const size_t place = known != places.cend() ? *known : books.size();
        if (place == books.size()) {
            places.insert(row.book.value, place);
            books.push_back({row.book, {}});
        }
        books[place].topics.push_back(&row);
        books[place].hasHits = books[place].hasHits || hits.contains(row.topic.value);
    }
    return books;
}

// Nothing where the topic is gone.
Result<std::optional<qint64>> lengthOf(const TopicRow& topic, Statement& texts, const TextLengths& known) {
    if (const auto length = known.constFind(topic.row); length != known.cend())
        return std::optional<qint64>(*length);
    texts.reset();
    if (const Result<void> bound = texts.bind(1, topic.row); !bound) return bound.error();
    const Result<Step> step = texts.step();
    if (!step) return step.error();
    if (*step == Step::Done || texts.integer(1) != topic.row) return std::optional<qint64>();
    return std::optional<qint64>(unitsOf(texts.utf8(0)));
}

// Appends a topic to the book that is being measured.
void addTopic(BookHits& book, const TopicRow& topic, qint64 units, const HitsByTopic& hits) {
    if (const auto found = hits.constFind(topic.topic.value); found != hits.cend())
        for (const RecordedHit& hit : *found)
            if (hit.position <= units) book.hits.push_back({hit.word, book.length + hit.position});
    book.topics.push_back({topic.topic, topic.headingRow, book.length});
    book.length += units;
}

}  // namespace

qint64 unitsOf(std::string_view text) {
    const QByteArray proper = properUtf8(text);
    if (!proper.isNull()) text = {proper.constData(), static_cast<size_t>(proper.size())};
    return UnitCounter(text).position(text.size()) - 1;
}

Result<void> booksOfRun(const data::Library& library, TopicOutline& outline, const SearchRun& run,
                        const platform::BookSelection& scope,
                        const std::function<bool(const BookHits&)>& onBook, WantedBooks wanted,
                        const TextLengths& known) {
    const HitsByTopic hits = hitsByTopic(run);
    const auto authors = authorsOf(library, scope);
    if (!authors) return authors.error();
    // Held to the end: taking the lock anew for every topic would cost more than reading it.
    const auto reading = platform::Transaction::beginReading(library.database());
    Result<Statement> texts = library.query(catalogue::topicTextsFromRow());
    if (!texts) return texts.error();
    for (const data::AuthorId author : *authors) {
        const auto rows = outline.topics(topicsOfScope(scope, author, catalogue::TopicOrder::Book));
        if (!rows) return rows.error();
        for (const BookTopics& topics : byBook(**rows, hits)) {
            if (!topics.hasHits && wanted == WantedBooks::WithHits) continue;
            BookHits book{topics.book, author, 0, {}, {}};
            for (const TopicRow* topic : topics.topics) {
                const auto length = lengthOf(*topic, *texts, known);
                if (!length) return length.error();
                if (*length) addTopic(book, *topic, **length, hits);
            }
            std::sort(book.hits.begin(), book.hits.end(),
                      [](const BookHit& a, const BookHit& b) { return a.position < b.position; });
            if (book.hits.empty() && wanted == WantedBooks::WithHits) continue;
            if (!onBook(book)) return {};
        }
    }
    return {};
}

}  // namespace lirovan::search
