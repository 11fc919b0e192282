// What is offered while a query is typed: queries asked before, and words of the library.
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "search/matching/word_index.h"
#include "search/runs/asked_searches.h"

namespace lirovan::search {

struct Suggestion {
    QString shown;    ///< "kâr, kar (1.204)", or the query
    QString query;    ///< what the search box holds once it is taken
    qsizetype caret;  ///< in that
    bool isQuery = false;
    std::optional<SearchOptions> options = {};  ///< what the check boxes become
};

/// For a box that holds `text` with the caret at `caret`. Queries are offered that begin as the whole text
/// does, words for the word before the caret. Nothing for an empty word. `index`: null until it is there.
std::vector<Suggestion> suggestionsFor(const QString& text, qsizetype caret, const AskedSearches& asked,
                                       const WordIndex* index);

/// The searches asked last, each with its options.
std::vector<Suggestion> lastSearches(const AskedSearches& asked);

}  // namespace lirovan::search
