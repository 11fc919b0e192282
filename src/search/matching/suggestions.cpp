#include "search/matching/suggestions.h"

#include "search/matching/search_query.h"
#include "text/comparison.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype MostKept = 30;
constexpr size_t MostQueries = 4, MostWords = 8;

bool beginsWith(QStringView text, QStringView beginning) {
    return text.size() >= beginning.size() &&
           text::equal(text.first(beginning.size()), beginning, text::Comparison::CaseInsensitive);
}

}  // namespace

void AskedQueries::add(const QString& query) {
    if (query.trimmed().isEmpty()) return;
    queries_.removeAll(query);
    queries_.prepend(query);
    if (queries_.size() > MostKept) queries_.removeLast();
}

std::vector<Suggestion> suggestionsFor(const QString& text, qsizetype caret, const AskedQueries& asked,
                                       const WordIndex* index) {
    std::vector<Suggestion> offered;
    qsizetype begin = caret;
    while (begin > 0 && !text.at(begin - 1).isSpace()) --begin;
    const QStringView word = QStringView(text).sliced(begin, caret - begin);
    if (word.isEmpty()) return offered;
    if (caret == text.size()) {
        for (const QString& query : asked.all()) {
            if (offered.size() == MostQueries) break;
            if (query != text && beginsWith(query, text))
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

}  // namespace lirovan::search
