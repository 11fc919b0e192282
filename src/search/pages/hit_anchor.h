// From a recorded hit to its button on the marked page.
#pragma once

#include <QStringView>
#include <optional>

namespace lirovan::search {

/// Number of the hit button (see highlighter.h) whose mark holds the unit at `position` (1-based) of the
/// stored text, else of the last one before it, else of the first. Nothing where no hit is marked. `marked`
/// is what markHits() made of `stored`. Linear in both.
std::optional<qint32> anchorOf(QStringView stored, QStringView marked, qint64 position);

}  // namespace lirovan::search
