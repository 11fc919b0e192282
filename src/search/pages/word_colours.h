// Which colour the hits of a run have, wherever they are shown.
#pragma once

#include <QString>
#include <vector>

#include "search/runs/search_run.h"

namespace lirovan::search {

/// The colour of each entry's marks on the page (see highlighter.h), "#00FF00"; entries as in WordTally.
/// Empty for one that has no hits of its own.
std::vector<QString> coloursOfEntries(const SearchRun& run);

}  // namespace lirovan::search
