// Writes small Jet 4 files, so that tests and benchmarks have some without carrying any: tables of the types
// that libraries and notes use, long values, moved and deleted rows.
#pragma once

#include <QList>
#include <QString>
#include <variant>

namespace lirovan::test {

enum class JetType : quint8 { Long = 0x04, Double = 0x07, Date = 0x08, Text = 0x0A, Memo = 0x0C };

struct JetColumn {
    QString name;
    JetType type;
};

/// Null, a whole number (Long), a number or date (Double, Date: days since 1899-12-30), a text (Text, Memo).
using JetCell = std::variant<std::monostate, qint32, double, QString>;

enum class JetRowState { Normal, Deleted, Moved };

struct JetRow {
    QList<JetCell> cells;
    JetRowState state = JetRowState::Normal;
};

struct JetTable {
    QString name;
    QList<JetColumn> columns;
    QList<JetRow> rows;
};

/// The whole file; a table may take 30,000 pages besides its long values. `locked`: as a protected file has
/// it, its header names a password; the pages are readable all the same.
QByteArray jetFile(const QList<JetTable>& tables, bool locked = false);

/// Notes with the numbers 5 (a long text), 7 (moved) and 9 (a date before 1899); 8 was deleted.
QByteArray jetNotes();

}  // namespace lirovan::test
