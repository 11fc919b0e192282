#include "notes/notes_database.h"

#include <QDir>
#include <QFileInfo>

#include "platform/core/each_row.h"
#include "platform/core/library_layout.h"

namespace lirovan::notes {

using namespace Qt::StringLiterals;
namespace {

using platform::Database;
using platform::Error;
using platform::LayoutKind;
using platform::OpenMode;
using platform::Result;
using platform::Statement;
using platform::Step;
using platform::Transaction;

// Positions in tbl_Notlar
constexpr int NotID = 0, NotTarihi = 1, NotBaslik = 2, NotRTF = 3, RowId = 4;

Note noteOf(const Statement& row) {
    return {{row.integer(NotID)}, row.text(NotTarihi), row.text(NotBaslik), row.text(NotRTF)};
}

// A new file gets its tables. Of two programs that create it at once the second finds them there.
Result<void> ensureLayout(const Database& database) {
    const Result<std::optional<qint64>> tables = database.integer(u"SELECT count(*) FROM sqlite_master");
    if (!tables) return tables.error();
    if (**tables == 0) {
        const Result<void> created = platform::createLayout(database, LayoutKind::Notes);
        if (!created && !platform::checkLayout(database, LayoutKind::Notes)) return created;
    }
    return platform::checkLayout(database, LayoutKind::Notes);
}

}  // namespace

Result<NotesDatabase> NotesDatabase::open(const platform::AppFolder& folder, const Importer& importer) {
    const QString directory = folder.path(NotesFolder);
    if (!QDir().mkpath(directory)) return Error{u"Not klasörü oluşturulamadı: %1"_s.arg(directory)};
    const QString path = folder.path(NotesFile);
    // An empty file is what a full disk left of the first attempt; it is made anew.
    if (importer && QFileInfo(path).size() > 0)
        if (const Result<void> imported = importer(path); !imported) return imported.error();
    return openFile(path);
}

Result<NotesDatabase> NotesDatabase::openFile(const QString& path) {
    Result<Database> database = Database::open(path, OpenMode::Create);
    if (!database) return database.error();
    // A rollback journal keeps the notes in one file that can be copied and carried away at any time; EXTRA
    // also makes the end of a transaction survive a power cut.
    const Result<void> durable = database->execute(u"PRAGMA journal_mode=DELETE; PRAGMA synchronous=EXTRA");
    if (!durable) return durable.error();
    const Result<void> layout = ensureLayout(*database);
    if (!layout) return layout.error();
    return NotesDatabase(std::move(*database));
}

Result<NoteId> NotesDatabase::add(const QString& title, const QString& rtf, QDate date) const {
    Result<Transaction> transaction = Transaction::begin(database_);
    if (!transaction) return transaction.error();
    {
        Result<Statement> insert =
            database_.prepare(u"insert into tbl_Notlar (NotTarihi, NotBaslik, NotRTF) values (?, ?, ?)");
        if (!insert) return insert.error();
        const QString values[] = {date.toString(Qt::ISODate), title, rtf};
        for (int i = 0; i < 3; ++i)
            if (const Result<void> bound = insert->bind(i + 1, QStringView(values[i])); !bound)
                return bound.error();
        if (const Result<Step> done = insert->step(); !done) return done.error();
    }
    const Result<std::optional<qint64>> key = database_.integer(u"select max(NotID) as NtID from tbl_notlar");
    if (!key) return key.error();
    if (const Result<void> committed = transaction->commit(); !committed) return committed.error();
    return NoteId{key->value_or(0)};
}

Result<std::optional<Note>> NotesDatabase::find(NoteId id) const {
    Result<Statement> row = database_.prepare(u"select * from tbl_Notlar where NotID=?");
    if (!row) return row.error();
    if (const Result<void> bound = row->bind(1, id.value); !bound) return bound.error();
    const Result<Step> step = row->step();
    if (!step) return step.error();
    if (*step == Step::Done) return std::optional<Note>();
    return std::optional<Note>(noteOf(*row));
}

Result<Change> NotesDatabase::replaceRtf(NoteId id, const QString& expected, const QString& rtf) const {
    Result<Transaction> transaction = Transaction::begin(database_);
    if (!transaction) return transaction.error();
    const Result<std::optional<Note>> note = find(id);
    if (!note) return note.error();
    if (!*note) return Change::Gone;
    if ((*note)->rtf != expected) return Change::Conflict;
    {
        Result<Statement> update = database_.prepare(u"update tbl_Notlar set NotRTF=? where NotID=?");
        if (!update) return update.error();
        if (const Result<void> bound = update->bind(1, QStringView(rtf)); !bound) return bound.error();
        if (const Result<void> bound = update->bind(2, id.value); !bound) return bound.error();
        if (const Result<Step> done = update->step(); !done) return done.error();
    }
    if (const Result<void> committed = transaction->commit(); !committed) return committed.error();
    return Change::Done;
}

Result<void> NotesDatabase::remove(NoteId id) const {
    return database_.execute(u"delete from tbl_Notlar where NotID=%1"_s.arg(id.value));
}

Result<std::vector<Note>> NotesDatabase::list(int rtfCharacters) const {
    // As "select * from tbl_Notlar", but a note may be megabytes long and the list shows one line of it.
    std::vector<Note> notes;
    const Result<void> read = platform::eachRow(
        database_.prepare(u"select NotID, NotTarihi, NotBaslik, substr(NotRTF, 1, %1) from tbl_Notlar"_s.arg(
            rtfCharacters)),
        [&](const Statement& row) { notes.push_back(noteOf(row)); });
    if (!read) return read.error();
    return notes;
}

Result<std::vector<Note>> NotesDatabase::nextNotes(Row& row, qsizetype rtfUnits) const {
    // NotID is another name of the rowid; in a file that somebody else has made, keys need not be unique.
    Result<Statement> next = database_.prepare(
        u"select NotID, NotTarihi, NotBaslik, NotRTF, rowid from tbl_Notlar where rowid>? order by rowid");
    if (!next) return next.error();
    if (const Result<void> bound = next->bind(1, row); !bound) return bound.error();
    std::vector<Note> notes;
    for (qsizetype units = 0; units < rtfUnits; units += notes.back().rtf.size()) {
        const Result<Step> step = next->step();
        if (!step) return step.error();
        if (*step == Step::Done) break;
        notes.push_back(noteOf(*next));
        row = next->integer(RowId);
    }
    return notes;
}

}  // namespace lirovan::notes
