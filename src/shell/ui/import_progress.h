// The window that is shown while a library file of another kind is brought into the program's own layout.
#pragma once

#include "platform/core/import/importer.h"

class QWidget;

namespace lirovan::shell {

/// Makes `path` a library of ours; nothing to do for most. Shows progress, with a button to cancel, once it
/// takes longer than a moment.
platform::Result<platform::EnsuredLayout> ensureLibraryLayout(const QString& path, QWidget* parent);

}  // namespace lirovan::shell
