#include "search/runs/topic_outline.h"

#include <chrono>
#include <future>
#include <numeric>

#include "platform/core/each_row.h"

namespace lirovan::search {

using platform::Result;
using platform::Statement;
using platform::Step;

namespace catalogue = data::catalogue;

namespace {

Result<std::vector<TopicRow>> readTopics(const data::Library& library, const QString& statement) {
    std::vector<TopicRow> topics;
    const Result<void> read = platform::eachRow(library.query(statement), [&](const Statement& row) {
        topics.push_back({row.integer(0), row.integer(3), {row.integer(1)}, {row.integer(2)}});
    });
    if (!read) return read.error();
    return topics;
}

// On a thread with a connection of its own: putting many titles in order is one step without a pause.
Result<std::vector<TopicRow>> readBeside(const data::Library& library, const QString& statement,
                                         const std::function<void()>& meanwhile) {
    constexpr std::chrono::milliseconds pause(2);
    auto read = std::async(std::launch::async, [&]() -> Result<std::vector<TopicRow>> {
        const Result<data::Library> own = library.reopened();
        if (!own) return own.error();
        return readTopics(*own, statement);
    });
    while (read.wait_for(pause) != std::future_status::ready) meanwhile();
    return read.get();
}

}  // namespace

QString topicsOfScope(const platform::BookSelection& scope, data::AuthorId author,
                      catalogue::TopicOrder order) {
    if (scope.bookId != 0) return catalogue::topicsOfBook({scope.bookId}, order);
    return catalogue::topicsOfAuthor(author, order);
}

Result<std::vector<data::AuthorId>> authorsOf(const data::Library& library,
                                              const platform::BookSelection& scope) {
    std::vector<data::AuthorId> authors;
    const data::AuthorId one{scope.authorId};
    const Result<void> read = platform::eachRow(
        library.query(one.value == 0 ? catalogue::authors() : catalogue::authorInOrder(one)),
        [&](const Statement& row) { authors.push_back({row.integer(0)}); });
    if (!read) return read.error();
    return authors;
}

void TopicOutline::refresh() {
    if (!changes_.any()) return;
    topics_.clear();
    bookTitles_.clear();
    headings_.reset();  // of the file that was there, where another has taken its place
}

Result<TopicOutline::Rows> TopicOutline::topics(const QString& statement,
                                                const std::function<void()>& meanwhile) {
    if (const auto known = topics_.constFind(statement); known != topics_.cend()) return *known;
    Result<std::vector<TopicRow>> read = meanwhile && !library_.path().isEmpty()
                                             ? readBeside(library_, statement, meanwhile)
                                             : readTopics(library_, statement);
    if (!read) return read.error();
    auto topics = std::make_shared<const std::vector<TopicRow>>(std::move(*read));
    topics_.insert(statement, topics);
    return Rows(std::move(topics));
}

std::vector<qint64> TopicOutline::allRows() const {
    // Rows lie without gaps in a file of ours. In one that somebody else has worked on, they need not.
    constexpr qint64 most = 4'000'000;
    Result<Statement> span = library_.query(catalogue::topicRowSpan());
    if (!span) return {};
    const Result<Step> step = span->step();
    if (!step || *step == Step::Done || span->isNull(0)) return {};
    const qint64 first = span->integer(0), last = span->integer(1);
    if (first < 0 || last > most) return {};
    std::vector<qint64> rows(static_cast<size_t>(last - first + 1));
    std::iota(rows.begin(), rows.end(), first);
    return rows;
}

Result<std::optional<QString>> TopicOutline::heading(const TopicRow& topic) {
    if (!headings_) {
        Result<Statement> statement = library_.query(catalogue::headingByRow());
        if (!statement) return statement.error();
        headings_ = std::move(*statement);
    }
    if (const Result<void> bound = headings_->bind(1, topic.headingRow); !bound) return bound.error();
    const Result<Step> step = headings_->step();
    std::optional<QString> heading;
    if (step && *step == Step::Row) heading = headings_->text(0);
    // Left open, it would keep the file locked.
    headings_->reset();
    if (!step) return step.error();
    return heading;
}

Result<std::optional<QString>> TopicOutline::bookTitle(data::BookId book) {
    if (const auto known = bookTitles_.constFind(book.value); known != bookTitles_.cend()) return *known;
    const auto row = library_.bookById(book);
    if (!row) return row.error();
    const auto title = *row ? std::optional((*row)->title) : std::nullopt;
    bookTitles_.insert(book.value, title);
    return title;
}

}  // namespace lirovan::search
