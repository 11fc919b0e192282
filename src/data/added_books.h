// Books from files in a library: adding, listing, taking out. Each change is one transaction: on failure,
// when it is cancelled, and when the program is killed, the library is as it was.
#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "data/ids.h"
#include "platform/core/books/book_content.h"
#include "platform/core/database.h"
#include "platform/core/result.h"

namespace lirovan::data {

/// A book that came from a file.
struct AddedBook {
    BookId id;
    QString title, author;
    QString identifier, digest, format;
    QString file;   ///< its name, without a folder
    QString added;  ///< when: "2026-03-14T21:05:00"
    qint64 topics = 0;
};

/// What becomes of a book that the library has already (the same identifier or the same bytes).
enum class SameBook { Leave, Replace, Beside };

struct AddBook {
    QString author, title;  ///< empty: as the source has them
    SameBook same = SameBook::Leave;
    std::vector<bool> left;  ///< by entry of the outline: true leaves it out; may be shorter
};

struct BookAdded {
    bool added = false;                ///< false: left, `present` is in the library
    std::optional<AddedBook> present;  ///< the same book, where there was one
    BookId id;
    qint64 topics = 0, pictures = 0;
};

/// Called in the thread that writes, once a topic and now and then; answers false to cancel.
using WriteProgress = std::function<bool(qint64 done, qint64 total)>;

/// What the preview shows, before anything is changed.
QString authorOf(const platform::BookContent& book, const AddBook& request);
QString titleOf(const platform::BookContent& book, const AddBook& request);

/// Those that were added, in the order in which they were.
platform::Result<std::vector<AddedBook>> addedBooks(const platform::Database& database);
/// The added book with this identifier or digest, the latest of several.
platform::Result<std::optional<AddedBook>> sameBook(const platform::Database& database,
                                                    const platform::BookHead& head);

/// Writes the book with its topics, pictures and word variants. Its author is found by name, without regard
/// to case, or added; it stands behind the author's other books. A replaced book keeps its id, its place
/// among the books of the same author, and the ids of topics whose titles stayed.
platform::Result<BookAdded> addBook(const platform::Database& database, const platform::BookContent& book,
                                    const AddBook& request, const WriteProgress& progress = {});

/// Takes the book out, with its topics, pictures and word variants, and an added author without any book
/// left. A book that did not come from a file is taken out only where `laidDownToo` says so.
platform::Result<void> removeBook(const platform::Database& database, BookId book, bool laidDownToo = false,
                                  const WriteProgress& progress = {});

}  // namespace lirovan::data
