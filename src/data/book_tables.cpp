#include "data/book_tables.h"

#include <QStringList>
#include <algorithm>

#include "platform/core/library_layout.h"

namespace lirovan::data {

using namespace Qt::StringLiterals;
using platform::Database;
using platform::Error;
using platform::Result;
using platform::Statement;

namespace {

struct BookTable {
    QStringView name;
    QStringView columns;  // as the statement that makes it has them
    std::initializer_list<QStringView> names;
    QStringView index;
};

const BookTable Tables[] = {
    {PictureTable,
     u"ResimID INTEGER PRIMARY KEY, KitapID INTEGER, ResimAdi TEXT, Bicim TEXT, Resim BLOB",
     {u"ResimID", u"KitapID", u"ResimAdi", u"Bicim", u"Resim"},
     u"CREATE INDEX IF NOT EXISTS ix_Resim ON tbl_Resim(KitapID)"},
    {SourceTable,
     u"KitapID INTEGER PRIMARY KEY, Kimlik TEXT, Ozet TEXT, Bicim TEXT, Dosya TEXT, Tarih TEXT",
     {u"KitapID", u"Kimlik", u"Ozet", u"Bicim", u"Dosya", u"Tarih"},
     u""},
    {CounterTable, u"Tablo TEXT PRIMARY KEY, Numara INTEGER", {u"Tablo", u"Numara"}, u""},
};

// Where the ids of a kind stand.
struct Counter {
    QStringView name;
    QStringView greatest;
};

Counter counterOf(Numbered what) {
    switch (what) {
        case Numbered::Author:
            return {u"tbl_Yazar",
                    u"max((SELECT coalesce(max(YazarID),0) FROM tbl_Yazar),"
                    u"(SELECT coalesce(max(YazarID),0) FROM tbl_Kitaplar))"};
        case Numbered::Book:
            return {u"tbl_Kitaplar",
                    u"max((SELECT coalesce(max(KitapID),0) FROM tbl_Kitaplar),"
                    u"(SELECT coalesce(max(KitapID),0) FROM tbl_KonuBaslik))"};
        case Numbered::Topic:
            return {u"tbl_Konu",
                    u"max((SELECT coalesce(max(KonuID),0) FROM tbl_Konu),"
                    u"(SELECT coalesce(max(KonuID),0) FROM tbl_KonuBaslik))"};
        case Numbered::Picture:
            return {PictureTable, u"(SELECT coalesce(max(ResimID),0) FROM tbl_Resim)"};
    }
    Q_UNREACHABLE();
}

}  // namespace

Result<bool> hasBookTables(const Database& database) {
    bool all = true;
    for (const BookTable& table : Tables) {
        const Result<bool> found = platform::hasTable(database, table.name);
        if (!found) return found;
        all = all && *found;
        if (!*found) continue;
        const Result<Statement> rows = database.prepare(u"SELECT * FROM "_s + table.name.toString());
        if (!rows) return rows.error();
        for (const QStringView name : table.names)
            if (rows->column(name) < 0)
                return Error{u"Dosyadaki %1 tablosunda %2 sütunu yok."_s.arg(table.name, name)};
    }
    return all;
}

Result<void> makeBookTables(const Database& database) {
    for (const BookTable& table : Tables) {
        const Result<void> made = database.execute(
            u"CREATE TABLE IF NOT EXISTS %1 (%2);%3"_s.arg(table.name, table.columns, table.index));
        if (!made) return made;
    }
    return {};
}

namespace {

Result<void> copyValue(const Statement& row, int column, Statement& into) {
    if (row.isNull(column)) return {};  // a parameter without a value is null
    if (row.columnName(column) == u"Resim") return into.bindBytes(column + 1, row.bytes(column));
    const QString name = row.columnName(column);
    const bool isNumber = name == u"ResimID" || name == u"KitapID" || name == u"Numara";
    return isNumber ? into.bind(column + 1, row.integer(column))
                    : into.bind(column + 1, QStringView(row.text(column)));
}

Result<void> copyRows(const BookTable& table, const Database& from, const Database& into) {
    QStringList names, places;
    for (const QStringView name : table.names) {
        names += name.toString();
        places += u"?"_s;
    }
    const QString columns = names.join(u", "_s);
    const QString insertion =
        u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(table.name, columns, places.join(u", "_s));
    return forEachRow(from, u"SELECT %1 FROM %2"_s.arg(columns, table.name),
                      [&](const Statement& row) -> Result<void> {
                          Result<Statement> insert = into.prepare(insertion);
                          if (!insert) return insert.error();
                          for (int i = 0; i < names.size(); ++i)
                              if (const Result<void> bound = copyValue(row, i, *insert); !bound) return bound;
                          const Result<platform::Step> step = insert->step();
                          return step ? Result<void>() : Result<void>(step.error());
                      });
}

}  // namespace

Result<void> copyBookTables(const Database& from, const Database& into) {
    Result<platform::Transaction> transaction = platform::Transaction::begin(into);
    if (!transaction) return transaction.error();
    if (const Result<void> made = makeBookTables(into); !made) return made;
    for (const BookTable& table : Tables)
        if (const Result<void> copied = copyRows(table, from, into); !copied) return copied;
    return transaction->commit();
}

Result<qint64> nextId(const Database& database, Numbered what) {
    const Counter counter = counterOf(what);
    const auto greatest = database.integer(
        u"SELECT max(%1, %2, coalesce((SELECT Numara FROM tbl_SonNumara WHERE Tablo='%3'),0))"_s
            .arg(LastLaidDownId)
            .arg(counter.greatest, counter.name));
    if (!greatest) return greatest.error();
    const qint64 last = greatest->value_or(LastLaidDownId);
    if (last == std::numeric_limits<qint64>::max()) return Error{u"Kitaplıkta boş numara kalmadı."_s};
    const Result<void> kept =
        execute(database, u"INSERT OR REPLACE INTO tbl_SonNumara (Tablo, Numara) VALUES (?, ?)", counter.name,
                last + 1);
    if (!kept) return kept.error();
    return last + 1;
}

}  // namespace lirovan::data
