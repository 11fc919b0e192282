#include "search/matching/library_changes.h"

namespace lirovan::search {

bool LibraryChanges::any() {
    const auto byOthers = library_.database().integer(data::catalogue::fileVersion());
    const auto byUs = library_.database().integer(data::catalogue::ownChanges());
    if (!byOthers || !byUs) return true;
    const bool changed = seen_.handle() != library_.database().handle() || !byOthers_ ||
                         *byOthers != byOthers_ || *byUs != byUs_;
    seen_ = library_.database();
    byOthers_ = *byOthers;
    byUs_ = *byUs;
    return changed;
}

}  // namespace lirovan::search
