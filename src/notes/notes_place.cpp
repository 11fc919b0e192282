#include "notes/notes_place.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>

#include "platform/core/file_writer.h"
#include "platform/core/library_layout.h"
#include "platform/core/user_places.h"

namespace lirovan::notes {

using namespace Qt::StringLiterals;
using platform::AppFolder;
using platform::Database;
using platform::Error;
using platform::OpenMode;
using platform::Result;
using platform::Statement;
using platform::Step;
using platform::Transaction;

namespace {

bool mustStandAside(const AppFolder& library) {
    const QFileInfo notes(library.path(NotesFolder));
    if (notes.isDir())
        return platform::isWriteProtected(notes.filePath()) ||
               platform::isWriteProtected(library.path(NotesFile));
    return !notes.exists() && QFileInfo(library.text()).isDir() && platform::isWriteProtected(library.text());
}

Result<void> copyFile(const QString& from, const QString& to) {
    if (QFileInfo::exists(to)) return {};
    const Error failure{u"\"%1\" dosyası \"%2\" olarak kopyalanamadı."_s.arg(from, to)};
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly)) return failure;
    platform::FileWriter target(to);
    Result<void> done = target.open();
    while (done && !source.atEnd()) {
        const QByteArray bytes = source.read(1 << 20);
        if (bytes.isEmpty()) return failure;
        done = target.write(bytes);
    }
    if (done) done = target.commit();
    if (!done) return Error{failure.message + u'\n' + done.error().message};
    return {};
}

// The notes file comes last: where it is, the place is complete.
Result<void> copyNotes(const NotesPlace& place) {
    const QString target = place.home.path(NotesFolder) + u'/';
    const QDir source(place.library.path(NotesFolder));
    for (const QString& name :
         source.entryList({u"notlar*.draft"_s, u"notlar*.draft.*"_s}, QDir::Files | QDir::Readable))
        if (!name.endsWith(u".lock"))
            if (auto copied = copyFile(source.filePath(name), target + name); !copied) return copied;
    const QString file = place.library.path(NotesFile);
    // What this reader may not read was never seen; it follows once it can be.
    if (QFileInfo(file).size() == 0 || !QFileInfo(file).isReadable()) return {};
    for (const QStringView side : platform::SideFiles) {
        if (side == u"-shm" || !QFileInfo::exists(file + side.toString())) continue;
        if (auto copied = copyFile(file + side.toString(), target + u"notlar.vq"_s + side.toString());
            !copied)
            return copied;
    }
    return copyFile(file, target + u"notlar.vq"_s);
}

// Which rows of the library's notes were taken already, by what they hold: what was changed or deleted here
// does not come back.
constexpr QStringView TakenTable = u"tbl_Alinanlar";
constexpr QStringView TakeRow = u"INSERT OR IGNORE INTO tbl_Alinanlar (Ozet) VALUES (?)";

QString digest(const Statement& row) {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (int column = 0; column < 3; ++column) {
        const QByteArray text = row.text(column).toUtf8();
        hash.addData(QByteArray::number(text.size()) + ':' + text);
    }
    return QString::fromLatin1(hash.result().toHex());
}

Result<void> run(Statement& statement, std::initializer_list<QString> values) {
    statement.reset();
    int parameter = 0;
    for (const QString& value : values)
        if (auto bound = statement.bind(++parameter, QStringView(value)); !bound) return bound;
    if (const Result<Step> done = statement.step(); !done) return done.error();
    statement.reset();
    return {};
}

/// Takes the rows of `from` that were not taken before; adds them to the notes where `from` is another file.
Result<void> takeRows(const Database& from, const Database& notes) {
    Result<Statement> rows =
        from.prepare(u"SELECT NotTarihi, NotBaslik, NotRTF FROM tbl_Notlar ORDER BY NotID");
    if (!rows) return rows.error();
    Result<Statement> take = notes.prepare(TakeRow);
    if (!take) return take.error();
    Result<Statement> add =
        notes.prepare(u"INSERT INTO tbl_Notlar (NotTarihi, NotBaslik, NotRTF) VALUES (?, ?, ?)");
    if (!add) return add.error();
    const bool isOther = from.path() != notes.path();
    for (;;) {
        const Result<Step> step = rows->step();
        if (!step) return step.error();
        if (*step == Step::Done) return {};
        if (auto taken = run(*take, {digest(*rows)}); !taken) return taken;
        const auto isNew = notes.integer(u"SELECT changes()");
        if (!isNew) return isNew.error();
        if (!isOther || isNew->value_or(0) == 0) continue;
        if (auto added = run(*add, {rows->text(0), rows->text(1), rows->text(2)}); !added) return added;
    }
}

/// The library's notes that can be read as ours; nothing where there are none.
std::optional<Database> libraryNotes(const AppFolder& library) {
    const QString path = library.path(NotesFile);
    if (QFileInfo(path).size() == 0) return std::nullopt;
    Result<Database> database = Database::open(path, OpenMode::ReadOnly);
    if (!database || !platform::checkLayout(*database, platform::LayoutKind::Notes)) return std::nullopt;
    return std::move(*database);
}

Result<void> followLibrary(const NotesPlace& place, const Database& notes) {
    const std::optional<Database> library = libraryNotes(place.library);
    Result<Transaction> transaction = Transaction::begin(notes);
    if (!transaction) return transaction.error();
    const Result<bool> known = platform::hasTable(notes, TakenTable);
    if (!known) return known.error();
    if (!*known) {
        // The first opening: the rows here are those that the copy brought.
        auto created = notes.execute(u"CREATE TABLE tbl_Alinanlar (Ozet TEXT PRIMARY KEY) WITHOUT ROWID");
        if (created) created = takeRows(notes, notes);
        if (!created) return created;
    }
    if (library)
        if (auto taken = takeRows(*library, notes); !taken) return taken;
    return transaction->commit();
}

}  // namespace

NotesPlace notesPlace(const AppFolder& library) {
    const AppFolder users(platform::userFolder(library));
    if (QFileInfo::exists(users.path(NotesFile)) || mustStandAside(library)) return {library, users};
    return {library, library};
}

Result<bool> preparePlace(const NotesPlace& place) {
    if (!place.isUsers() || QFileInfo::exists(place.home.path(NotesFile))) return false;
    const QString folder = place.home.path(NotesFolder);
    const bool isNew = !QFileInfo::exists(folder);
    if (!QDir().mkpath(folder)) return Error{u"Not klasörü oluşturulamadı: %1"_s.arg(folder)};
    // Of two programs that start at once the second must not copy over what the first has added to.
    QLockFile lock(folder + u"/ilk.lock"_s);
    if (!lock.tryLock(5000)) return Error{u"Notların klasörüne yazılamıyor: "_s + folder};
    if (auto copied = copyNotes(place); !copied) return copied.error();
    return isNew;
}

QString placeNotice(const NotesPlace& place) {
    return u"Kitaplığın klasörüne yazılamıyor. Notlarınız bu klasörde tutulur:\n%1"_s.arg(
        QDir::toNativeSeparators(place.home.path(NotesFolder)));
}

Result<NotesDatabase> openNotes(const NotesPlace& place, const NotesDatabase::Importer& importer) {
    if (const Result<bool> prepared = preparePlace(place); !prepared) return prepared.error();
    Result<NotesDatabase> notes = NotesDatabase::open(place.home, importer);
    if (!notes || !place.isUsers()) return notes;
    if (auto followed = followLibrary(place, notes->database()); !followed) return followed.error();
    return notes;
}

}  // namespace lirovan::notes
