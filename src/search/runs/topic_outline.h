// The outline of the library as a search walks it: which topics a scope holds, in which order, under which
// headings.
#pragma once

#include <QHash>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "data/library.h"
#include "platform/core/main_frame.h"
#include "platform/core/result.h"
#include "search/matching/library_changes.h"

namespace lirovan::search {

/// The statement over an author's topics in a scope of the book selector; see TopicOutline::topics().
QString topicsOfScope(const platform::BookSelection& scope, data::AuthorId author,
                      data::catalogue::TopicOrder order);

/// The authors of a scope in library order.
platform::Result<std::vector<data::AuthorId>> authorsOf(const data::Library& library,
                                                        const platform::BookSelection& scope);

/// A topic without its text.
struct TopicRow {
    qint64 row;         ///< id of its row in tbl_Konu
    qint64 headingRow;  ///< and in tbl_KonuBaslik
    data::TopicId topic;
    data::BookId book;
};

/// Reads outlines and keeps them as long as the file does not change: a search is often followed by another
/// one over the same books.
class TopicOutline {
  public:
    /// `library` outlives this object.
    explicit TopicOutline(const data::Library& library) : library_(library), changes_(library) {}

    /// Forgets what a change of the file since the last call may have made untrue. Rows that were given out
    /// stay as they are.
    void refresh();

    using Rows = std::shared_ptr<const std::vector<TopicRow>>;
    /// The topics of a statement of catalogue::topicsOfAuthor() or topicsOfBook(), in its order. `meanwhile`
    /// is called every few milliseconds while they are read; events may run in it.
    platform::Result<Rows> topics(const QString& statement, const std::function<void()>& meanwhile = {});
    /// Row ids that include those of all topics, with few others among them; empty where that would be too
    /// many.
    std::vector<qint64> allRows() const;
    /// The heading as stored; nothing where the row is gone.
    platform::Result<std::optional<QString>> heading(const TopicRow& topic);
    /// The book's title as stored; nothing where there is no such book.
    platform::Result<std::optional<QString>> bookTitle(data::BookId book);

  private:
    const data::Library& library_;
    LibraryChanges changes_;
    QHash<QString, Rows> topics_;
    QHash<qint64, std::optional<QString>> bookTitles_;
    std::optional<platform::Statement> headings_;
};

}  // namespace lirovan::search
