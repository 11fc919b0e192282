// The searches asked last, with their options: what the search box offers and the session keeps.
#pragma once

#include <QString>
#include <vector>

#include "search/runs/search_request.h"

namespace lirovan::search {

struct AskedSearch {
    QString query;          ///< as it was typed
    SearchOptions options;  ///< without clearResult, which is about the tree
};

/// The check boxes as one number, one bit each, without clearResult.
int optionBits(const SearchOptions& options);
SearchOptions optionsOf(int bits);

class AskedSearches {
  public:
    static constexpr std::size_t Most = 20;

    /// Puts a search in front; the same words with the same options stand there once. Neither an empty query
    /// nor a pasted text is kept.
    void add(AskedSearch search);
    const std::vector<AskedSearch>& all() const { return searches_; }  ///< the newest first

  private:
    std::vector<AskedSearch> searches_;
};

}  // namespace lirovan::search
