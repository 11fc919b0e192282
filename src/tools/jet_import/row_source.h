// Where rows come from: tables with named columns, read forward once.
#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <variant>
#include <vector>

#include "platform/core/import/file_format.h"
#include "platform/core/result.h"

namespace lirovan::jet_import {

/// A value as stored: nothing, a number, text. Dates of Jet columns come as ISO text.
using Value = std::variant<std::monostate, qint64, double, QString>;

/// One table's rows, in stored order.
class TableReader {
  public:
    virtual ~TableReader() = default;
    virtual QStringList columns() const = 0;
    /// Rows that the file claims to hold; the reader fails at the end when it could not read as many.
    virtual qint64 rowCount() const = 0;
    /// False at the end.
    virtual platform::Result<bool> next() = 0;
    /// A value of the current row; `column` is a position in columns().
    virtual platform::Result<Value> value(int column) = 0;
};

class RowSource {
  public:
    virtual ~RowSource() = default;
    virtual QStringList tables() const = 0;
    /// `name` as tables() gives it.
    virtual platform::Result<std::unique_ptr<TableReader>> open(const QString& name) = 0;
};

platform::Result<std::unique_ptr<RowSource>> openJet(const QString& path, const platform::FileHeader& header);
platform::Result<std::unique_ptr<RowSource>> openSqlite(const QString& path);

}  // namespace lirovan::jet_import
