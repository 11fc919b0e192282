// Whether a database is still the file of its name.
#pragma once

#include "platform/core/database.h"

namespace lirovan::platform {

/// The file that the connection reads was renamed or removed; its name may belong to another file by now.
/// Only where the system lets an open file go (not on Windows).
bool hasLostItsName(const Database& database);

}  // namespace lirovan::platform
