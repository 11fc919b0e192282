// The rows of one book: what is taken out of the tables together.
#pragma once

#include <vector>

#include "data/book_variants.h"
#include "data/ids.h"
#include "platform/core/database.h"
#include "platform/core/result.h"

namespace lirovan::data {

struct BookTopicRow {
    TopicId topic;
    QString title;
};

/// Headings of the book in their order.
platform::Result<std::vector<BookTopicRow>> topicsOf(const platform::Database& database, BookId book);

/// Takes out the rows of a book, in the transaction that the caller holds. A text that another book has a
/// heading for stays. The forms of the texts that go are remembered for the variant table, which the caller
/// settles.
platform::Result<void> removeRows(const platform::Database& database, BookId book, VariantRemover& variants);

/// Takes out an added author who has no book.
platform::Result<void> removeIdleAuthor(const platform::Database& database, AuthorId author);

}  // namespace lirovan::data
