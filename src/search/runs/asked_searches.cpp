#include "search/runs/asked_searches.h"

#include "text/blanks.h"

namespace lirovan::search {

namespace {

// Longer ones are pasted texts.
constexpr qsizetype LongestQuery = 1000;

}  // namespace

int optionBits(const SearchOptions& o) {
    return o.caseSensitive * 1 + o.wholeWord * 2 + o.allWords * 4 + o.together * 8 + o.soundChanges * 16;
}

SearchOptions optionsOf(int bits) {
    SearchOptions options;
    options.caseSensitive = bits & 1;
    options.wholeWord = bits & 2;
    options.allWords = bits & 4;
    options.together = bits & 8;
    options.soundChanges = bits & 16;
    return options;
}

void AskedSearches::add(AskedSearch search) {
    search.query = text::trimBlanks(search.query).toString();
    if (search.query.isEmpty() || search.query.size() > LongestQuery) return;
    std::erase_if(searches_, [&](const AskedSearch& each) {
        return each.query == search.query && optionBits(each.options) == optionBits(search.options);
    });
    searches_.insert(searches_.begin(), std::move(search));
    if (searches_.size() > Most) searches_.resize(Most);
}

}  // namespace lirovan::search
