#include "desk/reader_file.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "notes/notes_place.h"
#include "platform/core/library_layout.h"

namespace lirovan::desk {

using namespace Qt::StringLiterals;
using platform::AppFolder;
using platform::Database;
using platform::Error;
using platform::OpenMode;
using platform::Result;

namespace {

constexpr qint64 ApplicationId = 0x4C4F4B52;  // "LOKR"
constexpr qint64 Layout = 1;

constexpr QStringView Beside = u"\\Notlar\\okur.vq", InUsersFolder = u"\\okur.vq";

constexpr QStringView Tables =
    u"CREATE TABLE tbl_Oturum (Anahtar TEXT PRIMARY KEY, Deger TEXT NOT NULL) WITHOUT ROWID;"
    "CREATE TABLE tbl_YerImleri (YerImiID INTEGER PRIMARY KEY AUTOINCREMENT, Tarih TEXT NOT NULL,"
    " KonuID INTEGER NOT NULL, KitapID INTEGER NOT NULL, Yazar TEXT NOT NULL, Kitap TEXT NOT NULL,"
    " Konu TEXT NOT NULL, Yer TEXT NOT NULL, Satir TEXT NOT NULL);"
    "PRAGMA application_id=1280265042; PRAGMA user_version=1";

/// Whether the file has our tables; false where it has none at all.
Result<bool> checkFile(const Database& database) {
    const auto tables = database.integer(u"SELECT count(*) FROM sqlite_master");
    if (!tables) return tables.error();
    if (tables->value_or(0) == 0) return false;
    const auto id = database.integer(u"PRAGMA application_id"),
               layout = database.integer(u"PRAGMA user_version");
    if (!id) return id.error();
    if (!layout) return layout.error();
    if (id->value_or(0) != ApplicationId) return Error{u"\"%1\" okur dosyası değil."_s.arg(database.path())};
    if (layout->value_or(0) > Layout)
        return Error{u"\"%1\" programın daha yeni bir sürümüyle yazılmış."_s.arg(database.path())};
    for (const QStringView table : {u"tbl_Oturum", u"tbl_YerImleri"}) {
        const Result<bool> has = platform::hasTable(database, table);
        if (!has) return has.error();
        if (!*has) return Error{u"\"%1\" dosyasında %2 yok."_s.arg(database.path(), table)};
    }
    return true;
}

Result<void> makeTables(const Database& database) {
    // Of two programs that make it at once the second finds the tables there.
    Result<platform::Transaction> transaction = platform::Transaction::begin(database);
    if (!transaction) return transaction.error();
    const Result<bool> made = checkFile(database);
    if (!made) return made.error();
    if (!*made)
        if (const Result<void> created = database.execute(Tables); !created) return created;
    return transaction->commit();
}

// What was kept in a library's folder that can only be read goes on in the user's.
void bringAlong(const AppFolder& library, const QString& path) {
    const QString before = library.path(Beside);
    if (before == path || QFileInfo::exists(path) || QFileInfo(before).size() == 0) return;
    QDir().mkpath(QFileInfo(path).path());
    const QString half = path + u".yeni"_s;
    QFile::remove(half);
    if (QFile::copy(before, half)) {
        QFile::setPermissions(half, QFile::ReadOwner | QFile::WriteOwner);
        QFile::rename(half, path);
    }
}

}  // namespace

QString readerFilePath(const AppFolder& library) {
    const notes::NotesPlace place = notes::notesPlace(library);
    QString path = place.home.path(place.isUsers() ? InUsersFolder : Beside);
    bringAlong(library, path);
    return path;
}

Result<Database> openReaderFile(const QString& path) {
    const QString folder = QFileInfo(path).path();
    if (!QDir().mkpath(folder)) return Error{u"Klasör oluşturulamadı: "_s + QDir::toNativeSeparators(folder)};
    Result<Database> database = Database::open(path, OpenMode::Create);
    if (!database) return database;
    if (const auto durable = database->execute(u"PRAGMA journal_mode=DELETE; PRAGMA synchronous=EXTRA");
        !durable)
        return durable.error();
    const Result<bool> made = checkFile(*database);
    if (!made) return made.error();
    if (!*made)
        if (const Result<void> done = makeTables(*database); !done) return done.error();
    return database;
}

Result<Database> readReaderFile(const QString& path) {
    if (QFileInfo(path).size() == 0) return Error{u"Okur dosyası yok: "_s + QDir::toNativeSeparators(path)};
    Result<Database> database = Database::open(path, OpenMode::ReadOnly);
    if (!database) return database;
    const Result<bool> made = checkFile(*database);
    if (!made) return made.error();
    if (!*made) return Error{u"Okur dosyası boş: "_s + QDir::toNativeSeparators(path)};
    return database;
}

bool isDamagedReaderFile(const QString& path) {
    return QFileInfo(path).size() > 0 && platform::isDamaged(path);
}

Result<QString> setReaderFileAside(const QString& path) {
    const QString aside =
        path + u'.' + QDateTime::currentDateTime().toString(u"yyyyMMdd-HHmmss"_s) + u".bozuk"_s;
    if (!QFile::rename(path, aside)) return Error{u"\"%1\" yeniden adlandırılamadı."_s.arg(path)};
    for (const QStringView side : platform::SideFiles)
        if (QFileInfo::exists(path + side.toString()))
            QFile::rename(path + side.toString(), aside + side.toString());
    return aside;
}

}  // namespace lirovan::desk
