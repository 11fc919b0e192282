// Bookmarks: places in topics, each with its passage and a line of the reader's own. One row each in the
// reader's file; every change is durable when it has answered.
#pragma once

#include <QDateTime>
#include <QString>
#include <optional>
#include <vector>

#include "data/library.h"
#include "platform/core/database.h"
#include "platform/core/page_place.h"
#include "platform/core/result.h"

namespace lirovan::desk {

struct Bookmark {
    qint64 id = 0;  ///< 0: not kept yet
    QDateTime made;
    data::TopicId topic;
    data::BookId book;
    QString author, bookTitle, heading;  ///< as they were called when it was made
    platform::PagePlace place;
    QString line;  ///< the reader's own; may be empty

    /// "Konu – Kitap"
    QString where() const;
};

class Bookmarks {
  public:
    /// `path`: of the reader's file, which is made with the first bookmark.
    explicit Bookmarks(QString path) : path_(std::move(path)) {}
    const QString& path() const { return path_; }

    /// All, in the order in which they were made. None where there is no file yet.
    platform::Result<std::vector<Bookmark>> all() const;
    /// Answers the new id.
    platform::Result<qint64> add(const Bookmark& bookmark) const;
    /// Those that were deleted come back under the ids that they had.
    platform::Result<void> restore(const std::vector<Bookmark>& bookmarks) const;
    platform::Result<void> rename(qint64 id, const QString& line) const;
    platform::Result<void> remove(const std::vector<qint64>& ids) const;

  private:
    QString path_;
};

/// Names the topic of a new bookmark. A place at the top of the page begins with the topic's text: what is
/// seen there first is its frame. Nothing where the topic is gone.
std::optional<Bookmark> bookmarkOf(const data::Library& library, data::TopicId topic, data::BookId book,
                                   platform::PagePlace place);

/// Where a bookmark leads in the library as it is now.
struct Target {
    enum class Kind {
        Place,  ///< the text holds the passage
        Topic,  ///< the topic is there, its text holds the passage no longer
        None    ///< neither
    };
    Kind kind = Kind::None;
    data::TopicId topic;
    data::BookId book;
};

/// The topic by its id, then the one with its heading in the book of its title, then any of that book that
/// holds the passage: ids are others in a library that was made anew.
Target targetOf(const data::Library& library, const Bookmark& bookmark);

}  // namespace lirovan::desk
