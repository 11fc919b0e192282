#include "search/matching/suggestions.h"

#include <algorithm>

#include "search/matching/search_query.h"
#include "search/runs/run_tip.h"
#include "text/comparison.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;

namespace {

constexpr size_t MostQueries = 4, MostWords = 8;

bool beginsWith(QStringView text, QStringView beginning) {
    return text.size() >= beginning.size() &&
           text::equal(text.first(beginning.size()), beginning, text::Comparison::CaseInsensitive);
}

}  // namespace

std::vector<Suggestion> suggestionsFor(const QString& text, qsizetype caret, const AskedSearches& asked,
                                       const WordIndex* index) {
    std::vector<Suggestion> offered;
    qsizetype begin = caret;
    while (begin > 0 && !text.at(begin - 1).isSpace()) --begin;
    const QStringView word = QStringView(text).sliced(begin, caret - begin);
    if (word.isEmpty()) return offered;
    if (caret == text.size()) {
        for (const AskedSearch& each : asked.all()) {
            if (offered.size() == MostQueries) break;
            const QString& query = each.query;
            // With other options it is the same query.
            const bool isThere = std::ranges::count(offered, query, &Suggestion::query) > 0;
            if (query != text && beginsWith(query, text) && !isThere)
                offered.push_back({query, query, query.size(), true});
        }
    }
    if (!index) return offered;
    for (const IndexedWord& each : index->beginningWith(word, MostWords)) {
        const QString taken = each.shown.section(u',', 0, 0);
        // The word that stands there already is no help.
        if (taken == word) continue;
        offered.push_back({each.shown + u" ("_s + formatCount(each.count) + u')',
                           text.first(begin) + taken + text.sliced(caret), begin + taken.size()});
    }
    return offered;
}

std::vector<Suggestion> lastSearches(const AskedSearches& asked) {
    std::vector<Suggestion> offered;
    for (const auto& [query, options] : asked.all()) {
        const QString names = namesOfOptions(options);
        offered.push_back(
            {names.isEmpty() ? query : query + u" ("_s + names + u')', query, query.size(), true, options});
    }
    return offered;
}

}  // namespace lirovan::search
