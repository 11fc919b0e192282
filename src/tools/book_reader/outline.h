// The entries of a book: from its contents list, its headings, or its documents, each with the place where
// its text begins.
#pragma once

#include <vector>

#include "tools/book_reader/package.h"
#include "tools/book_reader/scan.h"

namespace lirovan::book_reader {

struct Entry {
    QString title;
    int depth = 0, parent = -1;
    Position position;     ///< document -1: the entry leads nowhere
    bool isStart = false;  ///< holds what stands before the first target
    bool isCover = false;  ///< leads to a cover that is left out
};

struct Outline {
    std::vector<Entry> entries;  ///< parents before their children, in reading order
    bool fromHeadings = false;   ///< no contents list to go by
    /// Entries by position: where a text begins, and whose it is. The last of several at one place has it.
    std::vector<std::pair<Position, int>> cuts;

    /// The entry that a place belongs to.
    int owner(Position position) const;
};

/// `scans` and `package.documents` go together. `covers`: documents that are left out.
Outline makeOutline(const Package& package, const std::vector<DocumentScan>& scans,
                    const QStringList& covers);

}  // namespace lirovan::book_reader
