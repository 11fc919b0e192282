// The process that shows a page: what it may take, and its end.
#pragma once

#include <QtGlobal>

namespace lirovan::platform {

/// Bounds the memory that a page's process may have, the engine's own included: a page that wants more fails,
/// or its process ends. Only where the system can bound another process (Linux).
void boundPageMemory(qint64 process);

/// Ends a page's process at once, as a crash would.
void endPageProcess(qint64 process);

}  // namespace lirovan::platform
