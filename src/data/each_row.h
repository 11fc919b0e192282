// Walking typed rows to their end.
#pragma once

#include "data/rows.h"
#include "platform/core/each_row.h"

namespace lirovan::data {

/// Every row of a query: eachRow(library.authors(), [&](const Author& author) { … }); see
/// platform/core/each_row.h.
template <class Row, class OnRow>
platform::Result<void> eachRow(platform::Result<Rows<Row>> rows, OnRow onRow) {
    if (!rows) return rows.error();
    Row row;
    return platform::eachOf(
        row, [&] { return rows->next(row); }, onRow);
}

}  // namespace lirovan::data
