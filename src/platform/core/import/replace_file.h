// Puts a finished file in the place of another one without a moment in which neither is there.
#pragma once

#include "platform/core/result.h"

namespace lirovan::platform {

/// Keeps `path` beside itself as `path` + `suffix` (".jet"; where that is taken ".2.jet", ".3.jet", ...) and
/// renames `replacement`, which lies in the same folder, to `path`, with the permissions of the old file.
/// What SQLite left beside `path` goes with the kept file. Answers the name of the kept file. On failure
/// `path` is what it was and no kept file is left.
Result<QString> replaceFile(const QString& path, const QString& replacement, const QString& suffix);

/// Fails when a journal of an interrupted write lies beside the place of a new database: it would be played
/// into that.
Result<void> checkNoJournal(const QString& path);

}  // namespace lirovan::platform
