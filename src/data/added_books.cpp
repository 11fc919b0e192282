#include "data/added_books.h"

#include "data/book_tables.h"
#include "data/book_text.h"

namespace lirovan::data {

using namespace Qt::StringLiterals;
using platform::Database;
using platform::Result;
using platform::Statement;

namespace {

constexpr QStringView Columns =
    u"SELECT k.KitapID, coalesce(b.KitapAdi,''), coalesce((SELECT Yazar FROM tbl_Yazar y WHERE "
    u"y.YazarID=b.YazarID),''), k.Kimlik, k.Ozet, k.Bicim, k.Dosya, k.Tarih, (SELECT count(*) FROM "
    u"tbl_KonuBaslik h WHERE h.KitapID=k.KitapID) FROM tbl_Kaynak k JOIN tbl_Kitaplar b ON "
    u"b.KitapID=k.KitapID ";

Result<std::vector<AddedBook>> select(const Database& database, const QString& ending,
                                      const QString& identifier, const QString& digest) {
    std::vector<AddedBook> books;
    const Result<bool> tables = hasBookTables(database);
    if (!tables) return tables.error();
    if (!*tables) return books;
    const auto add = [&](const Statement& row) {
        books.push_back({BookId{row.integer(0)}, row.text(1), row.text(2), row.text(3), row.text(4),
                         row.text(5), row.text(6), row.text(7), row.integer(8)});
    };
    const Result<void> read = forEachRow(database, Columns.toString() + ending, add, identifier, digest);
    if (!read) return read.error();
    return books;
}

}  // namespace

QString authorOf(const platform::BookContent& book, const AddBook& request) {
    const QString name = storedTitle(request.author);
    return name.isEmpty() ? storedTitle(book.authorName()) : name;
}

QString titleOf(const platform::BookContent& book, const AddBook& request) {
    const QString title = storedTitle(request.title);
    return title.isEmpty() ? storedTitle(book.title()) : title;
}

Result<std::vector<AddedBook>> addedBooks(const Database& database) {
    return select(database, u"WHERE ?1=?2 ORDER BY k.Tarih, k.KitapID"_s, {}, {});
}

Result<std::optional<AddedBook>> sameBook(const Database& database, const platform::BookHead& head) {
    const auto found = select(
        database, u"WHERE (?1<>'' AND k.Kimlik=?1) OR k.Ozet=?2 ORDER BY k.Ozet=?2, k.Tarih, k.KitapID"_s,
        head.identifier, head.digest);
    if (!found) return found.error();
    return found->empty() ? std::nullopt : std::optional(found->back());
}

}  // namespace lirovan::data
