// A plain SQLite file as a source. Values come as text: the columns of the layout convert numbers by
// themselves.
#include <QFile>
#include <QFileInfo>

#include "platform/core/database.h"
#include "platform/core/each_row.h"
#include "tools/jet_import/row_source.h"

namespace lirovan::jet_import {

using namespace Qt::StringLiterals;
namespace {

using platform::Database;
using platform::Error;
using platform::Result;
using platform::Statement;
using platform::Step;

QString quoted(const QString& name) {
    QString text = name;
    return u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

class SqliteTable : public TableReader {
  public:
    SqliteTable(Statement rows, qint64 count) : rows_(std::move(rows)), count_(count) {}

    QStringList columns() const override {
        QStringList names;
        for (int i = 0; i < rows_.columnCount(); ++i) names += rows_.columnName(i);
        return names;
    }
    qint64 rowCount() const override { return count_; }
    Result<bool> next() override {
        const Result<Step> step = rows_.step();
        if (!step) return step.error();
        return *step == Step::Row;
    }
    Result<Value> value(int column) override {
        if (rows_.isNull(column)) return Value();
        return Value(rows_.text(column));
    }

  private:
    Statement rows_;
    qint64 count_;
};

class SqliteSource : public RowSource {
  public:
    SqliteSource(Database database, QStringList tables)
        : database_(std::move(database)), tables_(std::move(tables)) {}

    QStringList tables() const override { return tables_; }
    Result<std::unique_ptr<TableReader>> open(const QString& name) override {
        const auto count = database_.integer(u"SELECT count(*) FROM "_s + quoted(name));
        if (!count) return count.error();
        Result<Statement> rows = database_.prepare(u"SELECT * FROM "_s + quoted(name));
        if (!rows) return rows.error();
        return std::unique_ptr<TableReader>(
            std::make_unique<SqliteTable>(std::move(*rows), count->value_or(0)));
    }

  private:
    Database database_;
    QStringList tables_;
};

}  // namespace

Result<std::unique_ptr<RowSource>> openSqlite(const QString& path) {
    // Changes that wait in a journal beside the file would be lost, or applied to the wrong file later.
    for (const QString& suffix : {u"-wal"_s, u"-journal"_s})
        if (QFileInfo(path + suffix).size() > 0)
            return Error{
                u"Dosyanın yanında yarım kalmış değişiklikler var (%1). Dosyayı kullanan "
                "programı kapatıp yeniden deneyin."_s.arg(QFileInfo(path + suffix).fileName())};
    Result<Database> database = Database::open(path, platform::OpenMode::ReadOnly);
    if (!database) return database.error();
    QStringList tables;
    const Result<void> read =
        platform::eachRow(database->prepare(u"SELECT name FROM sqlite_master WHERE type IN ('table','view')"),
                          [&](const Statement& row) { tables += row.text(0); });
    if (!read) return read.error();
    return std::unique_ptr<RowSource>(
        std::make_unique<SqliteSource>(std::move(*database), std::move(tables)));
}

}  // namespace lirovan::jet_import
