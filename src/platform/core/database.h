// SQLite connections and statements that speak Turkish.
//
// Every connection has the collation TURKCE (equality by Turkish simple folding, order by the Turkish
// alphabet), a LIKE that compares by the same folding, and LEN(text) in UTF-16 units, so that statements
// written for another engine run as they stand.
//
// A step has three outcomes that must not be mixed up: a row, the end, an error.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/core/result.h"

struct sqlite3;

namespace SQLite {
class Database;
class Statement;
}  // namespace SQLite

namespace lirovan::platform {

enum class OpenMode { ReadOnly, ReadWrite, Create };

enum class Step { Row, Done };

/// A forward-only cursor. Columns are addressed by zero-based position or by name (case does not matter; of
/// several columns with one name the first counts). Reading past the last column gives null.
class Statement {
  public:
    Statement(Statement&&) noexcept;
    Statement& operator=(Statement&&) noexcept;
    ~Statement();

    Result<void> bind(int parameter, qint64 value);
    Result<void> bind(int parameter, double value);
    Result<void> bind(int parameter, QStringView value);
    Result<void> bindNull(int parameter);
    Result<void> bindBytes(int parameter, QByteArrayView value);
    Result<Step> step();
    /// Back to before the first row, whatever the last step came to; parameters stay bound.
    void reset();

    int columnCount() const;
    int column(QStringView name) const;  ///< -1 when there is no such column
    QString columnName(int column) const;

    bool isNull(int column) const;
    QString text(int column) const;
    /// The text as stored, UTF-8; valid until the next step, reset or end of the statement. May hold NULs.
    std::string_view utf8(int column) const;
    QByteArray bytes(int column) const;  ///< of a blob, or a text as stored
    qint64 integer(int column) const;
    double real(int column) const;

  private:
    friend class Database;
    Statement(std::shared_ptr<SQLite::Database> database, std::unique_ptr<SQLite::Statement> statement);
    // Keeps the connection alive: a cursor may outlive the handle it was made from.
    std::shared_ptr<SQLite::Database> database_;
    std::unique_ptr<SQLite::Statement> statement_;
};

class Database {
  public:
    Database() = default;  ///< a closed connection; every use of it is an error, none is a crash

    /// A write that a crash interrupted is undone first; a reading connection alone could not open the file.
    static Result<Database> open(const QString& path, OpenMode mode);

    bool isOpen() const { return connection_ != nullptr; }
    void close() { connection_.reset(); }

    Result<Statement> prepare(QStringView sql) const;
    /// Runs one or several statements without rows.
    Result<void> execute(QStringView sql) const;
    /// First column of the first row; nothing when there is no row or the value is null.
    Result<std::optional<qint64>> integer(QStringView sql) const;
    sqlite3* handle() const;
    /// Of the file; empty for a database in memory.
    QString path() const;

  private:
    explicit Database(std::shared_ptr<SQLite::Database> connection) : connection_(std::move(connection)) {}
    std::shared_ptr<SQLite::Database> connection_;
};

/// The files beside a database that belong to it: a journal left by a crash would be played into whatever
/// file takes the database's name.
inline constexpr QStringView SideFiles[] = {u"-journal", u"-wal", u"-shm"};
/// Whether the file is no database, or one whose pages are damaged. One that cannot be looked into is
/// neither.
bool isDamaged(const QString& path);
/// Whether the database, or a file that is to be made at `path`, has a journal with content.
bool hasJournal(const QString& path);

/// Rolls back at the end of its scope unless commit() succeeded.
class Transaction {
  public:
    static Result<Transaction> begin(const Database& database);
    /// For reading alone: one view of the file, locked once instead of anew for every statement.
    static Result<Transaction> beginReading(const Database& database);
    Transaction(Transaction&& other) noexcept;
    Transaction& operator=(Transaction&&) = delete;
    ~Transaction();
    Result<void> commit();

  private:
    explicit Transaction(Database database) : database_(std::move(database)), open_(true) {}
    Database database_;
    bool open_ = false;
};

}  // namespace lirovan::platform
