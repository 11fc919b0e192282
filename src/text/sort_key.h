// For lists so long that comparing their texts one with another would take too long.
#pragma once

#include <QStringView>
#include <string>

namespace lirovan::text {

/// Appends bytes that compare, as unsigned bytes, as order() compares the texts; a zero byte ends them. Texts
/// that only their code units tell apart have the same key.
void appendSortKey(std::string& keys, QStringView text);

}  // namespace lirovan::text
