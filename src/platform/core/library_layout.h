// The layout of the two database files, `kitaplar.vq` (library) and `notlar.vq` (notes);
// docs/LIBRARY-FORMAT.md describes it for people.
//
// Readers take columns by position, so the order of the columns is part of the contract.
#pragma once

#include <QStringView>
#include <optional>
#include <span>

#include "platform/core/database.h"
#include "platform/core/result.h"

namespace lirovan::platform {

enum class LayoutKind { Library, Notes };

/// Value of `PRAGMA application_id`, by which a file of ours is told from any other SQLite file: "LRVK",
/// "LRVN".
inline constexpr qint32 LibraryApplicationId = 0x4C52564B;
inline constexpr qint32 NotesApplicationId = 0x4C52564E;
/// Value of `PRAGMA user_version`. A file with a greater one was written by a newer program.
inline constexpr qint32 LayoutVersion = 1;

constexpr qint32 applicationId(LayoutKind kind) {
    return kind == LayoutKind::Library ? LibraryApplicationId : NotesApplicationId;
}

enum class ColumnType {
    Integer,  ///< ids: whole numbers, no limit at 16 bits
    Number,   ///< orders and part numbers: whole or broken numbers
    Text,     ///< compared and ordered in Turkish (collation TURKCE)
    Date,     ///< ISO text, "2008-03-14"; an imported one may carry a time, "2008-03-14T21:05:00"
};

/// Where an import takes a column's value from.
enum class ColumnSource {
    Name,      ///< the column of this name; the import fails without it
    Optional,  ///< the column of this name; null without it
    Position,  ///< the column at this position, whatever its name, unless another column of the table claims
               ///< that one by its name; null without it
};

struct ColumnLayout {
    QStringView name;
    ColumnType type;
    ColumnSource source = ColumnSource::Name;
    bool assignedKey = false;  ///< integer primary key, assigned by the database where an insert gives none
};

struct TableLayout {
    QStringView name;
    std::span<const ColumnLayout> columns;
    bool optional = false;  ///< an import may lack the table; it is created empty then
};

/// The tables of a file of this kind, in the order in which they are created and imported.
std::span<const TableLayout> tablesOf(LayoutKind kind);

/// Sets what cannot be changed later, the page size; for an empty database, before its first transaction.
Result<void> prepareFile(const Database& database, LayoutKind kind);
/// Creates the tables, without the indexes, and marks the file as ours; for an empty database.
Result<void> createTables(const Database& database, LayoutKind kind);
/// Creates the indexes that serve the statements of the program. A bulk load creates them after the rows.
Result<void> createIndexes(const Database& database, LayoutKind kind);
/// All of it: an empty library or notes file out of an empty database.
Result<void> createLayout(const Database& database, LayoutKind kind);

/// Which file of ours this is; nothing for any other SQLite file.
Result<std::optional<LayoutKind>> layoutOf(const Database& database);

/// Fails when the file was written by a newer program.
Result<void> checkVersion(const Database& database);
/// Whether the file has a table of this name; a view, which could be anything, is none.
Result<bool> hasTable(const Database& database, QStringView name);
/// Fails with a message for the user when the file is not of this kind, was written by a newer program, or
/// lacks a table or column. Cheap: reads the schema and the edges of each table, not the rows.
Result<void> checkLayout(const Database& database, LayoutKind kind);

}  // namespace lirovan::platform
