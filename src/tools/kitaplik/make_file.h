#pragma once

#include <QString>
#include <functional>

#include "platform/core/result.h"

namespace lirovan::tools {

/// Has `write` make the database file that its argument names, beside the target, and puts it in the target's
/// place when that went well. Nothing but a library of ours is overwritten. On failure nothing is left; what
/// a killed program left is removed by the next one.
platform::Result<void> makeFile(const QString& target,
                                const std::function<platform::Result<void>(const QString&)>& write);

}  // namespace lirovan::tools
