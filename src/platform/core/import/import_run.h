// One run of the import program.
#pragma once

#include "platform/core/import/import_protocol.h"
#include "platform/core/import/importer.h"

namespace lirovan::platform {

struct ImportRun {
    QString source, target;
    std::optional<LayoutKind> kind;
};

/// Runs the program to its end and checks what it wrote. On failure nothing is left at `run.target`.
Result<LayoutKind> runImport(const ImporterOptions& options, const ImportRun& run,
                             const ImportProgress& progress);

}  // namespace lirovan::platform
