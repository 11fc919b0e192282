// What the window "Kitap Ekle" shows and does, without its widgets: the files that were read, what is wanted
// of each, and the texts about them.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "data/added_books.h"
#include "platform/core/books/book_content.h"

namespace lirovan::browse {

/// A file that was chosen, once the book reader has been at it.
struct BookCandidate {
    QString file;
    std::optional<platform::BookContent> book;  ///< nothing: it could not be read
    QString failure;                            ///< why not
    std::optional<data::AddedBook> present;     ///< the same book in the library
    data::AddBook request;                      ///< with author and title filled in
    bool wanted = true;
    QString outcome = {};  ///< what became of it, once it was added or left

    bool canBeAdded() const { return book && wanted && outcome.isEmpty(); }
};

/// Reads nothing: puts together what was read.
BookCandidate candidate(const QString& file, platform::Result<platform::BookContent> read,
                        std::optional<data::AddedBook> present);

/// Its line in the list: "Kıyıdaki Kâğıtlar – Selin Ada", or the file's name and why it cannot be read.
QString candidateLine(const BookCandidate& candidate);

/// What is taken of the outline, and the pictures that it shows.
struct OutlineCount {
    qint64 topics = 0, words = 0, pictures = 0;
    friend bool operator==(const OutlineCount&, const OutlineCount&) = default;
};
OutlineCount countOutline(const platform::BookContent& book, const std::vector<bool>& left);
/// "12 konu, 34.567 sözcük, 3 resim"
QString countText(const OutlineCount& count);

/// What the reader should know of the file besides: an outline made from headings, what was left out and why;
/// a line each.
/// What the source says of the book beside author and title, one line each.
QStringList about(const platform::BookHead& head);
QStringList remarks(const platform::BookContent& book);

/// "Bu kitap kitaplıkta var: …" above the choice what to do.
QString presentText(const data::AddedBook& present);

/// What became of all of them: "2 kitap eklendi, 1 dosya okunamadı."
QString report(const std::vector<BookCandidate>& candidates, int added);

/// A line of the list of added books: "Kıyıdaki Kâğıtlar – Selin Ada (12 konu)"
QString addedBookLine(const data::AddedBook& book);
/// Asked before it is taken out.
QString removalQuestion(const data::AddedBook& book);

}  // namespace lirovan::browse
