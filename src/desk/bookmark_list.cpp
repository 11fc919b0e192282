#include "desk/bookmark_list.h"

#include <algorithm>
#include <tuple>

namespace lirovan::desk {

using namespace Qt::StringLiterals;
using platform::Result;

BookmarkList::BookmarkList(Bookmarks store, TreePosition position)
    : store_(std::move(store)), position_(std::move(position)) {}

Result<void> BookmarkList::load() {
    Result<std::vector<Bookmark>> read = store_.all();
    if (!read) return read.error();
    all_ = std::move(*read);
    makeReady();
    return {};
}

void BookmarkList::makeReady() {
    positions_.clear();
    for (const Bookmark& bookmark : all_) positions_.push_back(position_(bookmark));
    texts_.clear();
    show();
}

void BookmarkList::search(const QString& text) {
    searched_ = text.trimmed();
    show();
}

void BookmarkList::sort(Order order) {
    order_ = order;
    show();
}

void BookmarkList::show() {
    shown_.clear();
    if (searched_.isEmpty()) {
        for (std::size_t i = 0; i < all_.size(); ++i) shown_.push_back(i);
    } else {
        if (texts_.empty())
            for (std::size_t i = 0; i < all_.size(); ++i) {
                const Bookmark& each = all_[i];
                const QString text =
                    QStringList{each.line, each.place.passage, each.heading, each.bookTitle, each.author}
                        .join(u'\n');
                texts_.push_back(notes::searchableText({static_cast<qint64>(i)}, text));
            }
        for (const notes::FoundNote& found : notes::findNotes(texts_, searched_, {}))
            shown_.push_back(static_cast<std::size_t>(found.note->id.value));
    }
    const auto byDate = [this](std::size_t a, std::size_t b) { return all_[a].id > all_[b].id; };
    const auto place = [this](std::size_t i) {
        // Lost ones stand at the end.
        const qsizetype position = positions_[i];
        return std::tuple(position < 0, position, all_[i].place.atTop ? 0 : all_[i].place.share, all_[i].id);
    };
    if (order_ == Order::Date)
        std::ranges::sort(shown_, byDate);
    else
        std::ranges::sort(shown_, {}, place);
}

Result<void> BookmarkList::rename(std::size_t row, const QString& line) {
    Bookmark& bookmark = all_[shown_[row]];
    if (auto renamed = store_.rename(bookmark.id, line); !renamed) return renamed;
    bookmark.line = line;
    makeReady();
    return {};
}

Result<void> BookmarkList::remove(const std::vector<std::size_t>& rows) {
    std::vector<qint64> ids;
    std::vector<Bookmark> gone;
    for (const std::size_t row : rows) {
        gone.push_back(at(row));
        ids.push_back(at(row).id);
    }
    if (ids.empty()) return {};
    if (auto removed = store_.remove(ids); !removed) return removed;
    deleted_.push_back(std::move(gone));
    std::ranges::sort(ids);
    std::erase_if(all_, [&](const Bookmark& each) { return std::ranges::binary_search(ids, each.id); });
    makeReady();
    return {};
}

Result<void> BookmarkList::undo() {
    if (deleted_.empty()) return {};
    if (auto restored = store_.restore(deleted_.back()); !restored) return restored;
    deleted_.pop_back();
    return load();
}

QString dateText(const QDateTime& made) {
    return made.toString(u"dd.MM.yyyy HH:mm"_s);
}

QString BookmarkList::asText() const {
    QString text;
    for (const std::size_t i : shown_) {
        const Bookmark& each = all_[i];
        if (!each.line.isEmpty()) text += each.line + u'\n';
        text += u'"' + each.place.passage + u"\"\n"_s;
        text += each.author + u", "_s + each.bookTitle + u", "_s + each.heading + u'\n';
        text += dateText(each.made) + u"\n\n"_s;
    }
    return text;
}

QString BookmarkList::asHtml() const {
    QString html =
        u"<!DOCTYPE html>\n<html lang=\"tr\">\n<head><meta charset=\"utf-8\"><title>Yer İmleri</title></head>\n<body>\n<h1>Yer İmleri</h1>\n"_s;
    for (const std::size_t i : shown_) {
        const Bookmark& each = all_[i];
        if (!each.line.isEmpty()) html += u"<h2>"_s + each.line.toHtmlEscaped() + u"</h2>\n"_s;
        html += u"<blockquote>"_s + each.place.passage.toHtmlEscaped() + u"</blockquote>\n<p>"_s +
                QStringList{each.author, each.bookTitle, each.heading}.join(u", "_s).toHtmlEscaped() +
                u"<br>"_s + dateText(each.made) + u"</p>\n"_s;
    }
    return html + u"</body>\n</html>\n"_s;
}

}  // namespace lirovan::desk
