// Writes small Jet 4 files, so that tests and benchmarks have some without carrying any: tables of the types
// that libraries and notes use, long values, moved and deleted rows.
#pragma once

#include <QByteArray>
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

class JetWriter {
  public:
    JetWriter();
    /// At most 255 rows to a page and one usage map of 30,000 pages a table; nothing here is near that.
    void addTable(const QString& name, const QList<JetColumn>& columns, const QList<JetRow>& rows);
    /// The whole file. `password`: what a protected file has in its header; its pages are readable all the
    /// same.
    QByteArray file(const QByteArray& password = {}) const;

  private:
    quint32 addPage(quint8 type, quint32 owner);
    quint32 addRow(quint32& page, quint32 owner, const QByteArray& row, quint16 flags = 0);
    quint32 writeTable(quint32 page, const QList<JetColumn>& columns, const QList<JetRow>& rows);
    QByteArray packed(const QList<JetColumn>& columns, const JetRow& row);
    QByteArray longValue(const QString& text);

    QList<QByteArray> pages_;
    quint32 longPage_ = 0;  // the one that takes further long values; 0: none yet
    QList<JetRow> catalogue_;
};

}  // namespace lirovan::test
