// Walking a cursor from where it stands to its end.
#pragma once

#include <type_traits>
#include <utility>

#include "platform/core/database.h"

namespace lirovan::platform {

/// Calls `onRow(row)` as long as `next()` gives a row. `onRow` returns nothing, or a Result<void> whose error
/// ends the walk. `next`: a Result whose value says whether there is another row.
template <class Row, class Next, class OnRow>
Result<void> eachOf(Row& row, Next next, OnRow& onRow) {
    while (true) {
        const Result<bool> more = next();
        if (!more) return more.error();
        if (!*more) return {};
        if constexpr (std::is_void_v<decltype(onRow(row))>)
            onRow(row);
        else if (Result<void> done = onRow(row); !done)
            return done;
    }
}

/// Every row of a statement: eachRow(database.prepare(sql), [&](const Statement& row) { … }). Where the
/// statement could not be made, its error.
template <class OnRow>
Result<void> eachRow(Result<Statement> rows, OnRow onRow) {
    if (!rows) return rows.error();
    Statement& row = *rows;
    const auto next = [&row]() -> Result<bool> {
        const Result<Step> step = row.step();
        if (!step) return step.error();
        return *step == Step::Row;
    };
    return eachOf(std::as_const(row), next, onRow);
}

}  // namespace lirovan::platform
