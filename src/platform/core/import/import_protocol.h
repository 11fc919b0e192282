// The lines in which the import program tells what it does, one fact a line on its standard output. What went
// wrong stands on its standard error, in words for the user.
//
//     ilerleme 1200 15000        rows done, rows in all
//     denetim                    still alive: building indexes, checking the new file
//     tablo tbl_Konu 15000       rows written to a table
//     bitti kitaplik             the new file is complete and durable ("notlar": a notes file)
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <variant>

#include "platform/core/library_layout.h"

namespace lirovan::platform {

struct ProgressLine {
    qint64 done = 0, total = 0;
    friend bool operator==(const ProgressLine&, const ProgressLine&) = default;
};
struct CheckingLine {
    friend bool operator==(const CheckingLine&, const CheckingLine&) = default;
};
struct TableLine {
    QString table;
    qint64 rows = 0;
    friend bool operator==(const TableLine&, const TableLine&) = default;
};
struct DoneLine {
    LayoutKind kind = LayoutKind::Library;
    friend bool operator==(const DoneLine&, const DoneLine&) = default;
};
struct UnknownLine {
    friend bool operator==(const UnknownLine&, const UnknownLine&) = default;
};
using ImportLine = std::variant<UnknownLine, ProgressLine, CheckingLine, TableLine, DoneLine>;

/// One line, without its line end. Whatever is not exactly one of the lines above is UnknownLine.
ImportLine parseImportLine(QByteArrayView line);
/// The line with its line end. `parseImportLine(write(x).chopped(1)) == x`.
QByteArray writeImportLine(const ImportLine& line);

QStringView kindWord(LayoutKind kind);  ///< "kitaplik", "notlar"

/// Largest count that a line may name; more is nonsense.
inline constexpr qint64 MaximalRows = qint64(1) << 40;

}  // namespace lirovan::platform
