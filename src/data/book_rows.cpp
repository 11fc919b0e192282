#include "data/book_rows.h"

#include "data/book_tables.h"

namespace lirovan::data {

using platform::Database;
using platform::Result;
using platform::Statement;
using namespace Qt::StringLiterals;

namespace {

constexpr QStringView OwnTexts =
    u"FROM tbl_Konu WHERE KonuID IN (SELECT KonuID FROM tbl_KonuBaslik WHERE KitapID=?1) AND KonuID NOT IN "
    u"(SELECT KonuID FROM tbl_KonuBaslik WHERE KitapID<>?1 AND KonuID IN (SELECT KonuID FROM tbl_KonuBaslik "
    u"WHERE KitapID=?1))";

}  // namespace

Result<std::vector<BookTopicRow>> topicsOf(const Database& database, BookId book) {
    std::vector<BookTopicRow> topics;
    const Result<void> read = forEachRow(
        database, u"SELECT KonuID, KonuBaslik FROM tbl_KonuBaslik WHERE KitapID=? ORDER BY Konu_Sira",
        [&](const Statement& row) {
            topics.push_back({TopicId{row.integer(0)}, row.text(1)});
        },
        book.value);
    if (!read) return read.error();
    return topics;
}

Result<void> removeRows(const Database& database, BookId book, VariantRemover& variants) {
    const Result<void> remembered = forEachRow(
        database, u"SELECT Konu "_s + OwnTexts.toString(),
        [&](const Statement& row) { variants.remember(row.text(0)); }, book.value);
    if (!remembered) return remembered;
    const QString texts = u"DELETE "_s + OwnTexts.toString();
    for (const QStringView sql :
         {QStringView(texts), QStringView(u"DELETE FROM tbl_KonuBaslik WHERE KitapID=?"),
          QStringView(u"DELETE FROM tbl_Kitaplar WHERE KitapID=?"),
          QStringView(u"DELETE FROM tbl_Resim WHERE KitapID=?"),
          QStringView(u"DELETE FROM tbl_Kaynak WHERE KitapID=?")})
        if (const Result<void> removed = execute(database, sql, book.value); !removed) return removed;
    return {};
}

Result<void> removeIdleAuthor(const Database& database, AuthorId author) {
    if (author.value <= LastLaidDownId) return {};
    return execute(database,
                   u"DELETE FROM tbl_Yazar WHERE YazarID=?1 AND NOT EXISTS (SELECT 1 FROM tbl_Kitaplar WHERE "
                   u"YazarID=?1)",
                   author.value);
}

}  // namespace lirovan::data
