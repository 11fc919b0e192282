// Rows of the library as plain structures, and the forward-only cursor over them.
#pragma once

#include <QString>
#include <optional>

#include "data/ids.h"
#include "platform/core/database.h"

namespace lirovan::data {

struct Author {
    AuthorId id;   ///< column 0
    QString name;  ///< column 1
};

struct Book {
    BookId id;         ///< column 0
    QString title;     ///< column 1, as stored: may hold markup
    AuthorId author;   ///< YazarID
    double order = 0;  ///< KitapSiraID
};

struct Heading {
    TopicId topic;         ///< column 0
    BookId book;           ///< KitapID
    QString title;         ///< column 2, as stored
    double order = 0;      ///< Konu_Sira
    bool hasTopic = true;  ///< false: column 0 is null
};

struct TopicText {
    TopicId topic;          ///< column 1
    QString text;           ///< column 2, an HTML fragment
    double partNumber = 0;  ///< column 3, read as a number; 0 where it is none
};

/// A heading with the book that holds it.
struct BookHeading {
    QString title;      ///< KonuBaslik
    BookId book;        ///< KitapID
    QString bookTitle;  ///< KitapAdi
    AuthorId author;    ///< YazarID
};

/// A row of the word-variant table.
struct Variant {
    QString written;     ///< KelimeKontYazili
    QString searchForm;  ///< KelimeKontAra
};

/// Walks a query once, from the first row to the end; eachRow() (each_row.h) does it for every row.
template <class Row>
class Rows {
  public:
    explicit Rows(platform::Statement statement);

    /// True: `row` holds the next row. False: the end. An error ends the walk.
    platform::Result<bool> next(Row& row);

  private:
    platform::Statement statement_;
    int named_[4] = {-1, -1, -1, -1};  // positions of the columns that are read by name
};

}  // namespace lirovan::data
