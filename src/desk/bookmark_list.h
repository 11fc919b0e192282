// The decisions of the window of bookmarks: which are listed, in which order, and what is done to them.
#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "desk/bookmarks.h"
#include "notes/note_search.h"

namespace lirovan::desk {

class BookmarkList {
  public:
    enum class Order {
        Date,  ///< the newest first
        Place  ///< as the book tree has the topics; within one from top to bottom
    };
    /// The position of a topic in the book tree; -1: it is not there any more.
    using TreePosition = std::function<qsizetype(const Bookmark&)>;

    BookmarkList(Bookmarks store, TreePosition position);

    /// Reads all. The order and what is searched for stay.
    platform::Result<void> load();
    /// Lists those that match by the rules of the library's search: own line, passage, topic, book or author.
    /// An empty text lists all.
    void search(const QString& text);
    void sort(Order order);

    std::size_t count() const { return shown_.size(); }
    std::size_t countOfAll() const { return all_.size(); }
    const Bookmark& at(std::size_t row) const { return all_[shown_[row]]; }
    /// Whether the topic is not in the book tree any more.
    bool isLost(std::size_t row) const { return positions_[shown_[row]] < 0; }

    platform::Result<void> rename(std::size_t row, const QString& line);
    /// Rows in any order. What is deleted can be brought back, step by step, as long as the list lives.
    platform::Result<void> remove(const std::vector<std::size_t>& rows);
    bool canUndo() const { return !deleted_.empty(); }
    platform::Result<void> undo();

    /// Those that are listed, in their order. Lines end in "\n".
    QString asText() const;
    QString asHtml() const;

  private:
    void makeReady();
    void show();

    Bookmarks store_;
    TreePosition position_;
    std::vector<Bookmark> all_;
    std::vector<qsizetype> positions_;          // by the places of all_
    std::vector<notes::SearchableNote> texts_;  // the same; made with the first search
    std::vector<std::size_t> shown_;            // places of all_
    std::vector<std::vector<Bookmark>> deleted_;
    QString searched_;
    Order order_ = Order::Date;
};

/// "25.11.2026 16:05"
QString dateText(const QDateTime& made);

}  // namespace lirovan::desk
