#include "data/library_check.h"

#include <QRegularExpression>

#include "data/book_check.h"
#include "platform/core/each_row.h"
#include "platform/core/library_layout.h"

namespace lirovan::data {

using namespace Qt::StringLiterals;
using platform::Database;
using platform::Result;
using platform::Statement;

namespace {

// A query whose rows are faults: column 0 goes into the message.
struct Rule {
    QStringView sql;
    QStringView message;
};

const Rule Rules[] = {
    {u"SELECT YazarID FROM tbl_Yazar GROUP BY YazarID HAVING count(*)>1",
     u"Yazar %1: numara birden çok kez verilmiş."},
    {u"SELECT KitapID FROM tbl_Kitaplar GROUP BY KitapID HAVING count(*)>1",
     u"Kitap %1: numara birden çok kez verilmiş."},
    {u"SELECT KonuID FROM tbl_KonuBaslik GROUP BY KonuID HAVING count(*)>1",
     u"Konu %1: numara birden çok başlığa verilmiş."},
    {u"SELECT KonuID FROM tbl_Konu GROUP BY KonuID HAVING count(*)>1", u"Konu %1: birden çok metni var."},
    {u"SELECT KitapID FROM tbl_Kitaplar WHERE YazarID IS NULL OR YazarID NOT IN (SELECT YazarID FROM "
     u"tbl_Yazar WHERE "
     "YazarID IS NOT NULL)",
     u"Kitap %1: yazarı yok."},
    {u"SELECT KonuID FROM tbl_KonuBaslik WHERE KitapID IS NULL OR KitapID NOT IN (SELECT KitapID FROM "
     u"tbl_Kitaplar "
     "WHERE KitapID IS NOT NULL)",
     u"Konu %1: kitabı yok."},
    {u"SELECT KonuID FROM tbl_KonuBaslik WHERE KonuID IS NULL OR KonuID NOT IN (SELECT KonuID FROM tbl_Konu "
     u"WHERE "
     "KonuID IS NOT NULL)",
     u"Konu %1: metni yok."},
    {u"SELECT KonuID FROM tbl_Konu WHERE KonuID IS NULL OR KonuID NOT IN (SELECT KonuID FROM tbl_KonuBaslik "
     u"WHERE "
     "KonuID IS NOT NULL)",
     u"Konu %1: başlığı yok."},
    {u"SELECT YazarID FROM tbl_Yazar WHERE trim(coalesce(Yazar,''))=''", u"Yazar %1: adı boş."},
    {u"SELECT KitapID FROM tbl_Kitaplar WHERE trim(coalesce(KitapAdi,''))=''", u"Kitap %1: adı boş."},
    {u"SELECT KonuID FROM tbl_KonuBaslik WHERE trim(coalesce(KonuBaslik,''))=''", u"Konu %1: başlığı boş."},
};

QString shownId(const Statement& row) {
    return row.isNull(0) ? u"(numarasız)"_s : row.text(0);
}

QStringList missingTablesAndColumns(const Database& database) {
    QStringList faults;
    for (const platform::TableLayout& table : platform::tablesOf(platform::LayoutKind::Library)) {
        const Result<bool> found = platform::hasTable(database, table.name);
        const Result<Statement> rows = database.prepare(u"SELECT * FROM "_s + table.name.toString());
        if (!found || !*found || !rows) {
            faults += u"%1 tablosu yok ya da okunamıyor."_s.arg(table.name);
            continue;
        }
        int position = 0;
        for (const platform::ColumnLayout& column : table.columns) {
            if (rows->columnCount() <= position ||
                rows->columnName(position).compare(column.name, Qt::CaseInsensitive) != 0)
                faults += u"%1 tablosunun %2. sütunu %3 değil."_s.arg(table.name)
                              .arg(position + 1)
                              .arg(column.name);
            ++position;
        }
    }
    return faults;
}

// One line for each page that the engine complains about.
void addDamage(QStringList& faults, const QString& report) {
    static const QRegularExpression page(u"\\bpage (\\d+)"_s, QRegularExpression::CaseInsensitiveOption);
    for (const QString& line : report.split(u'\n', Qt::SkipEmptyParts)) {
        if (line == u"ok" || line.startsWith(u"***")) continue;
        const QRegularExpressionMatch found = page.match(line);
        const QString fault =
            found.hasMatch() ? u"Dosya bozuk (%1. sayfa)."_s.arg(found.captured(1)) : u"Dosya bozuk."_s;
        if (!faults.contains(fault)) faults += fault;
    }
}

Result<QStringList> damage(const Database& database) {
    QStringList faults;
    const Result<void> checked =
        platform::eachRow(database.prepare(u"PRAGMA quick_check(5)"),
                          [&](const Statement& row) { addDamage(faults, row.text(0)); });
    // The engine stops at damage that it has just told.
    if (!checked && faults.isEmpty()) return checked.error();
    return faults;
}

}  // namespace

Result<QStringList> checkLibrary(const Database& database) {
    Result<QStringList> faults = damage(database);
    if (!faults) return faults;
    if (const Result<void> version = platform::checkVersion(database); !version)
        *faults += version.error().message;
    *faults += missingTablesAndColumns(database);
    if (!faults->isEmpty()) return faults;

    for (const Rule& rule : Rules) {
        const Result<void> done = platform::eachRow(database.prepare(rule.sql), [&](const Statement& row) {
            *faults += rule.message.toString().arg(shownId(row));
        });
        if (!done) return done.error();
    }
    BookCheck books(database);
    const Result<void> texts =
        platform::eachRow(database.prepare(u"SELECT KonuID, Konu FROM tbl_Konu"), [&](const Statement& row) {
            const QString text = row.text(1);
            books.look(shownId(row), text);
            if (text.trimmed().isEmpty())
                *faults += u"Konu %1: metin boş."_s.arg(shownId(row));
            else if (text.contains(QChar::Null) || text.contains(QChar::ReplacementCharacter))
                *faults += u"Konu %1: metinde bozuk karakter var."_s.arg(shownId(row));
            else if (const std::optional<QString> fault = markupFault(text))
                *faults += u"Konu %1: %2."_s.arg(shownId(row), *fault);
        });
    if (!texts) return texts.error();
    const Result<QStringList> ofBooks = books.faults();
    if (!ofBooks) return ofBooks;
    return *faults + *ofBooks;
}

}  // namespace lirovan::data
