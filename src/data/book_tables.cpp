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

struct Column {
    QStringView name, type;
};

struct BookTable {
    QStringView name;
    std::initializer_list<Column> columns;
    QStringView index;
};

constexpr QStringView Number = u"INTEGER", Key = u"INTEGER PRIMARY KEY", Bytes = u"BLOB", Text = u"TEXT";

const BookTable Tables[] = {
    {PictureTable,
     {{u"ResimID", Key}, {u"KitapID", Number}, {u"ResimAdi", Text}, {u"Bicim", Text}, {u"Resim", Bytes}},
     u"CREATE INDEX IF NOT EXISTS ix_Resim ON tbl_Resim(KitapID)"},
    {SourceTable,
     {{u"KitapID", Key},
      {u"Kimlik", Text},
      {u"Ozet", Text},
      {u"Bicim", Text},
      {u"Dosya", Text},
      {u"Tarih", Text}},
     u""},
    {CounterTable, {{u"Tablo", u"TEXT PRIMARY KEY"}, {u"Numara", Number}}, u""},
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
        for (const Column& column : table.columns)
            if (rows->column(column.name) < 0)
                return Error{u"Dosyadaki %1 tablosunda %2 sütunu yok."_s.arg(table.name, column.name)};
    }
    return all;
}

Result<void> makeBookTables(const Database& database) {
    for (const BookTable& table : Tables) {
        QStringList columns;
        for (const Column& column : table.columns) columns += u"%1 %2"_s.arg(column.name, column.type);
        const Result<void> made = database.execute(
            u"CREATE TABLE IF NOT EXISTS %1 (%2);%3"_s.arg(table.name, columns.join(u", "_s), table.index));
        if (!made) return made;
    }
    return {};
}

namespace {

Result<void> copyValue(const Statement& row, int column, QStringView type, Statement& into) {
    if (row.isNull(column)) return {};  // a parameter without a value is null
    if (type == Bytes) return into.bindBytes(column + 1, row.bytes(column));
    if (type == Number || type == Key) return into.bind(column + 1, row.integer(column));
    return into.bind(column + 1, QStringView(row.text(column)));
}

Result<void> copyRows(const BookTable& table, const Database& from, const Database& into) {
    QStringList names, places;
    for (const Column& column : table.columns) {
        names += column.name.toString();
        places += u"?"_s;
    }
    const QString columns = names.join(u", "_s);
    const QString insertion =
        u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(table.name, columns, places.join(u", "_s));
    return forEachRow(
        from, u"SELECT %1 FROM %2"_s.arg(columns, table.name), [&](const Statement& row) -> Result<void> {
            Result<Statement> insert = into.prepare(insertion);
            if (!insert) return insert.error();
            int i = 0;
            for (const Column& column : table.columns)
                if (const Result<void> bound = copyValue(row, i++, column.type, *insert); !bound)
                    return bound;
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
