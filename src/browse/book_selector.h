// Rows of the book selector cmb_Kitaplar: everything, an author, a book of that author, ...
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "data/library.h"
#include "platform/core/result.h"

namespace lirovan::browse {

struct SelectorRow {
    QString text;
    /// Item data: 0, the author's id followed by "999", or that followed by the book's id ("7999123").
    /// Nothing where the number does not fit in 32 bits; the ids beside it say what to search all the same.
    std::optional<qint32> data;
    data::AuthorId author;  ///< none: all books
    data::BookId book;      ///< none: all books of the author
};

struct BookSelector {
    std::vector<SelectorRow> rows;
    /// Why the filling ended early; the rows read so far stand.
    std::optional<platform::Error> failure;
};

/// Row 0 is "<Lirovan>". The hidden book is left out.
BookSelector readBookSelector(const data::Library& library);

/// "Işık" as an author's row: «IŞIK».
QString authorRowText(QString name);
/// "Kuran (Kuran Sırası)" as a book's row: «.:: Kuran  ::.», with both blanks before the end.
QString bookRowText(QString title);

}  // namespace lirovan::browse
