#include "platform/core/database.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>
#include <QFileInfo>
#include <QUrl>

#include "text/comparison.h"

namespace lirovan::platform {

using namespace Qt::StringLiterals;
namespace {

QStringView utf16Value(sqlite3_value* value) {
    const void* data = sqlite3_value_text16(value);
    return {static_cast<const char16_t*>(data), sqlite3_value_bytes16(value) / 2};
}

int collate(void*, int leftBytes, const void* left, int rightBytes, const void* right) {
    return text::orderUtf8({static_cast<const char*>(left), static_cast<size_t>(leftBytes)},
                           {static_cast<const char*>(right), static_cast<size_t>(rightBytes)});
}

void len(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL) return;
    sqlite3_result_int64(context, utf16Value(arguments[0]).size());
}

// `%` any run, `_` any one unit, everything else by folding.
bool matchesPattern(QStringView pattern, QStringView text) {
    qsizetype p = 0, t = 0, star = -1, mark = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == u'%') {
            star = p++;
            mark = t;
        } else if (p < pattern.size() && (pattern[p] == u'_' || text::fold(pattern[p].unicode()) ==
                                                                    text::fold(text[t].unicode()))) {
            ++p;
            ++t;
        } else if (star >= 0) {
            p = star + 1;
            t = ++mark;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == u'%') ++p;
    return p == pattern.size();
}

// SQLite calls like(pattern, text) for `text LIKE pattern`.
void like(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL || sqlite3_value_type(arguments[1]) == SQLITE_NULL)
        return;
    sqlite3_result_int(context, matchesPattern(utf16Value(arguments[0]), utf16Value(arguments[1])));
}

void registerTurkish(sqlite3* handle) {
    constexpr int flags = SQLITE_UTF16 | SQLITE_DETERMINISTIC;
    sqlite3_create_collation_v2(handle, "TURKCE", SQLITE_UTF8, nullptr, collate, nullptr);
    sqlite3_create_function_v2(handle, "LEN", 1, flags, nullptr, len, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "LIKE", 2, flags, nullptr, like, nullptr, nullptr, nullptr);
}

// What a damaged file holds can be reported like a full disk: a counter of row ids at its last value, or,
// when the file is copied, a page number that no file can have.
bool isSound(SQLite::Database& connection) {
    try {
        if (connection.execAndGet("PRAGMA quick_check(1)").getString() != "ok") return false;
    } catch (const SQLite::Exception&) {
        return false;
    }
    try {
        return connection.execAndGet("SELECT count(*) FROM sqlite_sequence WHERE seq>=9223372036854775807")
                   .getInt() == 0;
    } catch (const SQLite::Exception&) {
        return true;  // no such counters
    }
}

Error damaged() {
    return {u"Veritabanı dosyası bozuk."_s};
}

Error unfinishedAndFixed() {
    return {
        u"Dosyaya yazma yarıda kalmış, klasöre yazılamadığı için de tamamlanamıyor. Klasörü yazılabilen "
        "bir yere kopyalayıp oradan açın."_s};
}

constexpr QStringView NoSuchTable = u"no such table: ";

Error error(const SQLite::Exception& exception, SQLite::Database* connection = nullptr) {
    switch (exception.getErrorCode()) {
        case SQLITE_NOTADB:
            return {u"Dosya bir veritabanı değil."_s};
        case SQLITE_CORRUPT:
            return damaged();
        case SQLITE_FULL:
            if (connection && !isSound(*connection)) return damaged();
            return {u"Diskte yer kalmadı."_s};
        case SQLITE_READONLY:
            return {u"Veritabanı dosyasına yazılamıyor."_s};
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return {u"Veritabanı dosyası başka bir program tarafından kullanılıyor."_s};
        case SQLITE_CANTOPEN:
            return {u"Veritabanı dosyası açılamadı."_s};
        case SQLITE_ERROR:
            if (const QString what = QString::fromUtf8(exception.what()); what.startsWith(NoSuchTable))
                return {u"Dosyada %1 tablosu yok."_s.arg(what.mid(NoSuchTable.size()))};
            break;
        case SQLITE_IOERR:
            return {u"Veritabanı dosyası diskten okunamadı ya da diske yazılamadı."_s};
        case SQLITE_PERM:
        case SQLITE_AUTH:
            return {u"Veritabanı dosyası için izin yok."_s};
        case SQLITE_NOMEM:
            return {u"Bellek yetmedi."_s};
        case SQLITE_TOOBIG:
            return {u"Metin veritabanı için çok uzun."_s};
        case SQLITE_CONSTRAINT:
        case SQLITE_MISMATCH:
            return {u"Değer veritabanının kurallarına uymuyor."_s};
        default:
            break;
    }
    return {u"Veritabanı hatası (SQLite %1)."_s.arg(exception.getErrorCode())};
}

Error closed() {
    return {u"Veritabanı açık değil."_s};
}

// `code`: that of the failure.
Result<std::shared_ptr<SQLite::Database>> connected(const std::string& name, int flags, int& code) {
    try {
        // A connection belongs to one thread; another thread opens its own.
        auto connection = std::make_shared<SQLite::Database>(name, flags | SQLite::OPEN_NOMUTEX);
        connection->setBusyTimeout(5000);
        registerTurkish(connection->getHandle());
        // SQLite opens lazily; a first read tells now whether this is a database at all.
        connection->execAndGet("SELECT count(*) FROM sqlite_master");
        return connection;
    } catch (const SQLite::Exception& exception) {
        code = exception.getErrorCode();
        // The statements above are right, so it is the file that SQLite does not understand.
        return exception.getErrorCode() == SQLITE_ERROR ? damaged() : error(exception);
    }
}

// Runs `action` and turns what the wrapper throws into an Error.
template <class Action>
auto guarded(SQLite::Database* connection, Action&& action) -> decltype(action()) {
    try {
        return action();
    } catch (const SQLite::Exception& exception) {
        return error(exception, connection);
    }
}

}  // namespace

Statement::Statement(std::shared_ptr<SQLite::Database> database, std::unique_ptr<SQLite::Statement> statement)
    : database_(std::move(database)), statement_(std::move(statement)) {}
Statement::Statement(Statement&&) noexcept = default;
Statement& Statement::operator=(Statement&&) noexcept = default;
Statement::~Statement() = default;

Result<void> Statement::bind(int parameter, qint64 value) {
    return guarded(database_.get(), [&]() -> Result<void> {
        statement_->bind(parameter, static_cast<int64_t>(value));
        return {};
    });
}

Result<void> Statement::bind(int parameter, double value) {
    return guarded(database_.get(), [&]() -> Result<void> {
        statement_->bind(parameter, value);
        return {};
    });
}

Result<void> Statement::bind(int parameter, QStringView value) {
    return guarded(database_.get(), [&]() -> Result<void> {
        const QByteArray bytes = value.toUtf8();
        statement_->bind(parameter, std::string(bytes.constData(), static_cast<size_t>(bytes.size())));
        return {};
    });
}

Result<void> Statement::bindBytes(int parameter, QByteArrayView value) {
    return guarded(database_.get(), [&]() -> Result<void> {
        // A null pointer would bind null.
        statement_->bind(parameter, value.isEmpty() ? "" : value.data(), static_cast<int>(value.size()));
        return {};
    });
}

Result<void> Statement::bindNull(int parameter) {
    return guarded(database_.get(), [&]() -> Result<void> {
        statement_->bind(parameter);
        return {};
    });
}

Result<Step> Statement::step() {
    return guarded(database_.get(),
                   [&]() -> Result<Step> { return statement_->executeStep() ? Step::Row : Step::Done; });
}

void Statement::reset() {
    // Its code is that of the last step once more.
    (void)statement_->tryReset();
}

int Statement::columnCount() const {
    return statement_->getColumnCount();
}

int Statement::column(QStringView name) const {
    for (int i = 0; i < columnCount(); ++i)
        if (QString::fromUtf8(statement_->getColumnName(i)).compare(name, Qt::CaseInsensitive) == 0) return i;
    return -1;
}

QString Statement::columnName(int column) const {
    return QString::fromUtf8(statement_->getColumnName(column));
}

namespace {
bool readable(const SQLite::Statement& statement, int column) {
    return column >= 0 && column < statement.getColumnCount() && statement.hasRow();
}
}  // namespace

bool Statement::isNull(int column) const {
    return !readable(*statement_, column) || statement_->isColumnNull(column);
}

QString Statement::text(int column) const {
    const std::string_view bytes = utf8(column);
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

std::string_view Statement::utf8(int column) const {
    if (!readable(*statement_, column)) return {};
    const SQLite::Column value = statement_->getColumn(column);
    const char* data = value.getText(nullptr);
    return data ? std::string_view(data, static_cast<size_t>(value.getBytes())) : std::string_view();
}

QByteArray Statement::bytes(int column) const {
    if (!readable(*statement_, column)) return {};
    const SQLite::Column value = statement_->getColumn(column);
    const void* data = value.getBlob();
    return data ? QByteArray(static_cast<const char*>(data), value.getBytes()) : QByteArray();
}

qint64 Statement::integer(int column) const {
    return readable(*statement_, column) ? statement_->getColumn(column).getInt64() : 0;
}

double Statement::real(int column) const {
    return readable(*statement_, column) ? statement_->getColumn(column).getDouble() : 0.0;
}

bool hasJournal(const QString& path) {
    return QFileInfo(path + SideFiles[0].toString()).size() > 0 ||
           QFileInfo(path + SideFiles[1].toString()).size() > 0;
}

bool isDamaged(const QString& path) {
    try {
        SQLite::Database connection(path.toStdString(), SQLite::OPEN_READONLY);
        connection.setBusyTimeout(100);  // what another program is writing is not damaged
        registerTurkish(connection.getHandle());
        return connection.execAndGet("PRAGMA quick_check(1)").getString() != "ok";
    } catch (const SQLite::Exception& exception) {
        return exception.getErrorCode() == SQLITE_NOTADB || exception.getErrorCode() == SQLITE_CORRUPT;
    }
}

Result<Database> Database::open(const QString& path, OpenMode mode) {
    // Where the file cannot be written, its error is told by what follows.
    if (mode == OpenMode::ReadOnly && QFileInfo(path + SideFiles[0].toString()).size() > 0)
        (void)open(path, OpenMode::ReadWrite);
    int flags = SQLite::OPEN_READONLY;
    if (mode == OpenMode::ReadWrite) flags = SQLite::OPEN_READWRITE;
    if (mode == OpenMode::Create) flags = SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE;
    int code = SQLITE_OK;
    auto opened = connected(path.toStdString(), flags, code);
    // What another program holds (busy) is not fixed.
    const bool isFixed = (code == SQLITE_CANTOPEN || code == SQLITE_READONLY) && mode != OpenMode::Create &&
                         !QFileInfo(QFileInfo(path).path()).isWritable();
    if (isFixed && hasJournal(path)) return unfinishedAndFixed();
    // A file in WAL form is read only where files can be made beside it, unless nobody can change it.
    if (isFixed)
        opened = connected(QUrl::fromLocalFile(path).toEncoded().toStdString() + "?immutable=1",
                           SQLite::OPEN_READONLY | SQLite::OPEN_URI, code);
    if (!opened) return opened.error();
    return Database(std::move(*opened));
}

Result<Statement> Database::prepare(QStringView sql) const {
    if (!connection_) return closed();
    return guarded(connection_.get(), [&]() -> Result<Statement> {
        const QByteArray bytes = sql.toUtf8();
        return Statement(connection_, std::make_unique<SQLite::Statement>(*connection_, bytes.constData()));
    });
}

Result<void> Database::execute(QStringView sql) const {
    if (!connection_) return closed();
    return guarded(connection_.get(), [&]() -> Result<void> {
        connection_->exec(sql.toUtf8().constData());
        return {};
    });
}

Result<std::optional<qint64>> Database::integer(QStringView sql) const {
    Result<Statement> statement = prepare(sql);
    if (!statement) return statement.error();
    const Result<Step> step = statement->step();
    if (!step) return step.error();
    if (*step == Step::Done || statement->isNull(0)) return std::optional<qint64>();
    return std::optional<qint64>(statement->integer(0));
}

sqlite3* Database::handle() const {
    return connection_ ? connection_->getHandle() : nullptr;
}

QString Database::path() const {
    return connection_ ? QString::fromUtf8(sqlite3_db_filename(handle(), "main")) : QString();
}

Result<Transaction> Transaction::begin(const Database& database) {
    const Result<void> begun = database.execute(u"BEGIN IMMEDIATE");
    if (!begun) return begun.error();
    return Transaction(database);
}

Result<Transaction> Transaction::beginReading(const Database& database) {
    const Result<void> begun = database.execute(u"BEGIN");
    if (!begun) return begun.error();
    return Transaction(database);
}

Transaction::Transaction(Transaction&& other) noexcept
    : database_(std::move(other.database_)), open_(std::exchange(other.open_, false)) {}

Transaction::~Transaction() {
    // A statement that failed may have ended the transaction already; then there is nothing left to undo.
    if (open_) (void)static_cast<bool>(database_.execute(u"ROLLBACK"));
}

Result<void> Transaction::commit() {
    const Result<void> committed = database_.execute(u"COMMIT");
    if (committed) open_ = false;
    return committed;
}

}  // namespace lirovan::platform
