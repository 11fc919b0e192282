// The window that is shown while a library or notes file of another kind is brought into the program's own
// layout.
#pragma once

#include "platform/core/import/importer.h"

class QWidget;

namespace lirovan::shell {

/// Makes `path` a file of ours; nothing to do for most. Shows progress, with a button to cancel, once it
/// takes longer than a moment; meanwhile nothing else takes input.
platform::Result<platform::EnsuredLayout> ensureLayout(const QString& path, platform::LayoutKind kind,
                                                       QWidget* parent);

}  // namespace lirovan::shell
