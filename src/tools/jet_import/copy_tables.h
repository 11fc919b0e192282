// Copies a source's tables into a new file of ours.
#pragma once

#include <functional>
#include <optional>

#include "platform/core/import/import_protocol.h"
#include "platform/core/library_layout.h"
#include "tools/jet_import/row_source.h"

namespace lirovan::jet_import {

using LineSink = std::function<void(const platform::ImportLine&)>;

/// The kind of file whose required tables the source has; `wanted` restricts the answer to one kind.
platform::Result<platform::LayoutKind> kindOf(const RowSource& source,
                                              std::optional<platform::LayoutKind> wanted);

/// Writes the file `target`, which must not exist yet: all tables of the kind, indexes, then an integrity
/// check, and forces it to disk. Tells its progress to `sink`. On failure the target may be left behind,
/// incomplete.
platform::Result<void> copyTables(RowSource& source, platform::LayoutKind kind, const QString& target,
                                  const LineSink& sink);

}  // namespace lirovan::jet_import
