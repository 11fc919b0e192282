// Rebuilding the word-variant table from all texts of the library.
#pragma once

#include <QtGlobal>
#include <functional>

#include "data/library.h"
#include "platform/core/result.h"

namespace lirovan::search {

/// Empties tbl_KelimeKont and fills it with the variants of every topic, each text form once (compared
/// without regard to case; the first spelling stays), all in one transaction: on failure, and when `goOn`
/// answers false, the table is as it was. `goOn` is asked once a topic and every few rows; events may run in
/// it. Returns the number of rows.
platform::Result<qint64> rebuildVariantTable(const data::Library& library, const std::function<bool()>& goOn);

}  // namespace lirovan::search
