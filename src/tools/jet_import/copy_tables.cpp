#include "tools/jet_import/copy_tables.h"

#include <sqlite3.h>

#include <QElapsedTimer>
#include <QFile>
#include <algorithm>
#include <cmath>

#include "platform/core/file_writer.h"
#include "platform/core/import/jet_values.h"

namespace lirovan::jet_import {

using namespace Qt::StringLiterals;
namespace {

using namespace platform;

QString find(const QStringList& names, QStringView wanted) {
    for (const QString& name : names)
        if (name.compare(wanted, Qt::CaseInsensitive) == 0) return name;
    return {};
}

// For each column of the layout the source's column, or -1 for null.
Result<std::vector<int>> matchColumns(const TableLayout& table, const QStringList& names) {
    const auto byName = [&](QStringView wanted) {
        const QString name = find(names, wanted);
        return name.isNull() ? -1 : static_cast<int>(names.indexOf(name));
    };
    std::vector<int> matched;
    for (const ColumnLayout& column : table.columns) matched.push_back(byName(column.name));
    for (size_t i = 0; i < matched.size(); ++i) {
        const ColumnLayout& column = table.columns[i];
        if (column.source == ColumnSource::Position) {
            const int position = static_cast<int>(i);
            const bool claimed =
                std::any_of(table.columns.begin(), table.columns.end(), [&](const ColumnLayout& other) {
                    return other.source != ColumnSource::Position && byName(other.name) == position;
                });
            matched[i] = position < names.size() && !claimed ? position : -1;
        } else if (matched[i] < 0 && column.source == ColumnSource::Name) {
            return Error{u"Dosyadaki %1 tablosunda %2 sütunu yok."_s.arg(table.name, column.name)};
        }
    }
    return matched;
}

std::optional<double> numberOf(const Value& value) {
    if (const auto* whole = std::get_if<qint64>(&value)) return static_cast<double>(*whole);
    if (const auto* real = std::get_if<double>(&value)) return *real;
    if (const auto* text = std::get_if<QString>(&value)) {
        bool ok = false;
        const double number = text->trimmed().toDouble(&ok);
        if (ok && std::isfinite(number)) return number;
    }
    return std::nullopt;
}

bool isWhole(double number) {
    return std::abs(number) < 9.0e15 && std::trunc(number) == number;
}

// The value as the column's type has it; what does not fit an id is null.
Value converted(const Value& value, ColumnType type) {
    if (std::holds_alternative<std::monostate>(value)) return value;
    const std::optional<double> number = type == ColumnType::Text ? std::nullopt : numberOf(value);
    switch (type) {
        case ColumnType::Integer:
            if (std::holds_alternative<qint64>(value)) return value;
            return number && isWhole(*number) ? Value(static_cast<qint64>(*number)) : Value();
        case ColumnType::Number:
            if (!number) return value;
            return isWhole(*number) ? Value(static_cast<qint64>(*number)) : Value(*number);
        case ColumnType::Date:
            if (!number) return value;
            if (const std::optional<QString> date = isoDate(*number)) return *date;
            return {};
        case ColumnType::Text:
            if (const auto* whole = std::get_if<qint64>(&value)) return QString::number(*whole);
            if (const auto* real = std::get_if<double>(&value)) return QString::number(*real, 'g', 17);
            return value;
    }
    Q_UNREACHABLE();
}

Result<void> bindValue(Statement& statement, int parameter, const Value& value) {
    if (const auto* whole = std::get_if<qint64>(&value)) return statement.bind(parameter, *whole);
    if (const auto* real = std::get_if<double>(&value)) return statement.bind(parameter, *real);
    if (const auto* text = std::get_if<QString>(&value)) return statement.bind(parameter, QStringView(*text));
    return statement.bindNull(parameter);
}

// Progress lines at frame rate, not per row.
class Progress {
  public:
    Progress(const LineSink& sink, qint64 total)
        : sink_(sink), total_(std::clamp(total, qint64(0), MaximalRows)) {
        timer_.start();
        tell();
    }
    void step() {
        ++done_;
        if (timer_.elapsed() < 30) return;
        timer_.restart();
        tell();
    }
    void tell() const { sink_(ProgressLine{done_, std::max(done_, total_)}); }

  private:
    const LineSink& sink_;
    qint64 total_, done_ = 0;
    QElapsedTimer timer_;
};

struct TablePlan {
    const TableLayout* layout;
    std::unique_ptr<TableReader> reader;
    std::vector<int> columns;  // source column of each column of the layout
};

Result<std::vector<TablePlan>> planTables(RowSource& source, LayoutKind kind) {
    std::vector<TablePlan> plans;
    for (const TableLayout& table : tablesOf(kind)) {
        const QString name = find(source.tables(), table.name);
        if (name.isNull()) continue;  // only an optional table can be missing here
        Result<std::unique_ptr<TableReader>> reader = source.open(name);
        if (!reader) return reader.error();
        Result<std::vector<int>> columns = matchColumns(table, (*reader)->columns());
        if (!columns) return columns.error();
        plans.push_back({&table, std::move(*reader), std::move(*columns)});
    }
    return plans;
}

// Writes the rows of one table.
class TableWriter {
  public:
    static Result<TableWriter> create(const Database& target, TablePlan& plan) {
        const QStringView name = plan.layout->name;
        const auto columns = static_cast<qsizetype>(plan.layout->columns.size());
        const QString marks = QString(u"?,"_s).repeated(columns).chopped(1);
        Result<Statement> insert = target.prepare(u"INSERT INTO %1 VALUES (%2)"_s.arg(name, marks));
        if (!insert) return insert.error();
        Result<Statement> taken = target.prepare(u"SELECT 1 FROM %1 WHERE rowid=?"_s.arg(name));
        if (!taken) return taken.error();
        return TableWriter(plan, std::move(*insert), std::move(*taken));
    }

    /// Writes the reader's current row. A row whose key is missing or taken gets a key of its own: no note is
    /// lost.
    Result<void> writeRow() {
        for (size_t i = 0; i < plan_->columns.size(); ++i)
            if (const Result<void> bound = bindColumn(i); !bound) return bound;
        if (const Result<Step> step = insert_.step(); !step) return step.error();
        insert_.reset();
        return {};
    }

  private:
    TableWriter(TablePlan& plan, Statement insert, Statement taken)
        : plan_(&plan), insert_(std::move(insert)), taken_(std::move(taken)) {}

    Result<void> bindColumn(size_t index) {
        const int parameter = static_cast<int>(index) + 1;
        if (plan_->columns[index] < 0) return insert_.bindNull(parameter);
        const Result<Value> value = plan_->reader->value(plan_->columns[index]);
        if (!value) return value.error();
        const ColumnLayout& column = plan_->layout->columns[index];
        const Value stored = converted(*value, column.type);
        if (const auto* key = std::get_if<qint64>(&stored); key && column.assignedKey) {
            const Result<bool> found = isTaken(*key);
            if (!found) return found.error();
            if (*found) return insert_.bindNull(parameter);
        }
        return bindValue(insert_, parameter, stored);
    }

    Result<bool> isTaken(qint64 key) {
        if (const Result<void> bound = taken_.bind(1, key); !bound) return bound.error();
        const Result<Step> found = taken_.step();
        if (!found) return found.error();
        taken_.reset();
        return *found == Step::Row;
    }

    TablePlan* plan_;
    Statement insert_, taken_;
};

// The number of rows written.
Result<qint64> copyTable(const Database& target, TablePlan& plan, Progress& progress) {
    Result<TableWriter> writer = TableWriter::create(target, plan);
    if (!writer) return writer.error();
    for (qint64 rows = 0;; ++rows) {
        const Result<bool> next = plan.reader->next();
        if (!next) return next.error();
        if (!*next) return rows;
        if (const Result<void> written = writer->writeRow(); !written) return written.error();
        progress.step();
    }
}

Result<void> checkIntegrity(const Database& database) {
    Result<Statement> check = database.prepare(u"PRAGMA integrity_check(1)");
    if (!check) return check.error();
    const Result<Step> step = check->step();
    if (!step) return step.error();
    if (*step != Step::Row || check->text(0) != u"ok")
        return Error{u"Yazılan dosya denetimden geçmedi (%1)."_s.arg(check->text(0))};
    return {};
}

// Keeps the one who waits informed during long single statements.
int tellChecking(void* sink) {
    (*static_cast<const LineSink*>(sink))(CheckingLine{});
    return 0;
}

Result<void> copyAll(const Database& target, std::vector<TablePlan>& plans, LayoutKind kind,
                     const LineSink& sink) {
    Result<Transaction> transaction = Transaction::begin(target);
    if (!transaction) return transaction.error();
    if (const Result<void> created = createTables(target, kind); !created) return created;
    qint64 total = 0;
    for (const TablePlan& plan : plans) total += plan.reader->rowCount();
    Progress progress(sink, total);
    for (TablePlan& plan : plans) {
        const Result<qint64> rows = copyTable(target, plan, progress);
        if (!rows) return rows.error();
        sink(TableLine{plan.layout->name.toString(), *rows});
    }
    progress.tell();
    sqlite3_progress_handler(target.handle(), 2'000'000, tellChecking, const_cast<LineSink*>(&sink));
    if (const Result<void> indexed = createIndexes(target, kind); !indexed) return indexed;
    return transaction->commit();
}

}  // namespace

Result<LayoutKind> kindOf(const RowSource& source, std::optional<LayoutKind> wanted) {
    const QStringList names = source.tables();
    QString missing;
    for (const LayoutKind kind : {LayoutKind::Library, LayoutKind::Notes}) {
        if (wanted.value_or(kind) != kind) continue;
        bool complete = true;
        for (const TableLayout& table : tablesOf(kind)) {
            if (table.optional || !find(names, table.name).isNull()) continue;
            if (missing.isEmpty()) missing = table.name.toString();
            complete = false;
        }
        if (complete) return kind;
    }
    if (!wanted)
        return Error{u"Dosyada ne kitaplık ne de not tabloları var (örneğin %1 yok)."_s.arg(missing)};
    return Error{u"Dosyada %1 tablosu yok; bu bir %2 dosyası değil."_s.arg(
        missing, *wanted == LayoutKind::Library ? u"kitaplık"_s : u"not"_s)};
}

Result<void> copyTables(RowSource& source, LayoutKind kind, const QString& target, const LineSink& sink) {
    Result<std::vector<TablePlan>> plans = planTables(source, kind);
    if (!plans) return plans.error();
    Result<Database> database = Database::open(target, OpenMode::Create);
    if (!database) return Error{u"Hedef dosya oluşturulamadı."_s};
    if (const Result<void> prepared = prepareFile(*database, kind); !prepared) return prepared;
    // The file counts only once it is complete, so nothing is protected on the way.
    if (const Result<void> set = database->execute(u"PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF"); !set)
        return set;
    if (const Result<void> copied = copyAll(*database, *plans, kind, sink); !copied) return copied;
    sink(CheckingLine{});
    if (const Result<void> checked = checkIntegrity(*database); !checked) return checked;
    database->close();
    if (!forceToDisk(target)) return Error{u"Yazılan dosya diske aktarılamadı."_s};
    return {};
}

}  // namespace lirovan::jet_import
