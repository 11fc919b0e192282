// Where in the books a run's hits lie.
#pragma once

#include <QHash>
#include <functional>
#include <string_view>
#include <vector>

#include "data/library.h"
#include "platform/core/main_frame.h"
#include "platform/core/result.h"
#include "search/runs/search_run.h"
#include "search/runs/topic_outline.h"

namespace lirovan::search {

struct BookHit {
    qint32 word;      ///< the entry that it counts for; entries as in WordTally
    qint64 position;  ///< 1-based, within the texts of the book one after the other
};

/// Where a topic's text begins among the book's.
struct TopicStart {
    data::TopicId topic;
    qint64 headingRow;  ///< in tbl_KonuBaslik
    qint64 start;       ///< units before it
};

struct BookHits {
    data::BookId book;
    data::AuthorId author;
    qint64 length = 0;          ///< UTF-16 units of the book's texts as stored
    std::vector<BookHit> hits;  ///< by position
    std::vector<TopicStart> topics;
};

/// Which books are wanted; those without hits come with their lengths.
enum class WantedBooks { WithHits, All };

/// UTF-16 units of topics' stored texts, by their row in tbl_Konu.
using TextLengths = QHash<qint64, qint64>;
qint64 unitsOf(std::string_view text);

/// The books of `scope` in library order. Only their texts are read, but those of `known` length, and
/// none is converted. Topics that are gone are passed over. `onBook` may end it with false.
platform::Result<void> booksOfRun(const data::Library& library, TopicOutline& outline, const SearchRun& run,
                                  const platform::BookSelection& scope,
                                  const std::function<bool(const BookHits&)>& onBook,
                                  WantedBooks wanted = WantedBooks::WithHits, const TextLengths& known = {});

}  // namespace lirovan::search
