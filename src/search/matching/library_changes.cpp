#include "search/matching/library_changes.h"

namespace lirovan::search {

bool LibraryChanges::any() {
    const auto byOthers = library_.database().integer(data::catalogue::fileVersion());
    const auto byUs = library_.database().integer(data::catalogue::ownChanges());
    if (!byOthers || !byUs) return true;
    const bool changed = !byOthers_ || *byOthers != byOthers_ || *byUs != byUs_;
    byOthers_ = *byOthers;
    byUs_ = *byUs;
    return changed;
}

}  // namespace lirovan::search
