// The tables of a library that serve the books added from files. A library has them from its first added book
// on; older programs, which know nothing of them, read it as before (docs/LIBRARY-FORMAT.md).
#pragma once

#include <QString>

#include "data/ids.h"
#include "platform/core/database.h"
#include "platform/core/each_row.h"
#include "platform/core/result.h"

namespace lirovan::data {

/// The ids of added authors, books, topics and pictures lie above this one: below stand the books that a
/// library was laid down with, some of which have rules of their own.
inline constexpr qint64 LastLaidDownId = 1000;

inline constexpr QStringView PictureTable = u"tbl_Resim", SourceTable = u"tbl_Kaynak",
                             CounterTable = u"tbl_SonNumara";

/// Whether the library has the tables; a table without its columns is an error.
platform::Result<bool> hasBookTables(const platform::Database& database);
/// Makes those that are missing.
platform::Result<void> makeBookTables(const platform::Database& database);

/// Copies the rows of these tables from one library into another that has none of them.
platform::Result<void> copyBookTables(const platform::Database& from, const platform::Database& into);

/// What is counted.
enum class Numbered { Author, Book, Topic, Picture };
/// The next free id: greater than every id in use and every id that was ever given out, so that nothing that
/// remembers a topic finds another one under its number.
platform::Result<qint64> nextId(const platform::Database& database, Numbered what);

/// Runs a statement with these parameters.
template <class... Values>
platform::Result<platform::Statement> prepared(const platform::Database& database, QStringView sql,
                                               const Values&... values) {
    platform::Result<platform::Statement> statement = database.prepare(sql);
    if (!statement) return statement;
    int parameter = 0;
    platform::Result<void> bound;
    [[maybe_unused]] const auto bind = [&](const auto& value) {
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, QByteArray>)
            bound = statement->bindBytes(++parameter, value);
        else if constexpr (std::is_arithmetic_v<std::decay_t<decltype(value)>>)
            bound = statement->bind(++parameter, value);
        else
            bound = statement->bind(++parameter, QStringView(value));
        return static_cast<bool>(bound);
    };
    (void)(bind(values) && ...);
    if (!bound) return bound.error();
    return statement;
}
template <class... Values>
platform::Result<void> execute(const platform::Database& database, QStringView sql, const Values&... values) {
    platform::Result<platform::Statement> statement = prepared(database, sql, values...);
    if (!statement) return statement.error();
    const platform::Result<platform::Step> step = statement->step();
    if (!step) return step.error();
    return {};
}
/// Calls `row` for every row.
template <class Row, class... Values>
platform::Result<void> forEachRow(const platform::Database& database, QStringView sql, Row row,
                                  const Values&... values) {
    return platform::eachRow(prepared(database, sql, values...), row);
}

}  // namespace lirovan::data
