#include "search/pages/word_colours.h"

#include <algorithm>

#include "search/matching/search_query.h"
#include "search/matching/word_list.h"
#include "search/pages/highlighter.h"
#include "text/blanks.h"

namespace lirovan::search {

std::vector<QString> coloursOfEntries(const SearchRun& run) {
    const QStringList marked = wordsToMark(run);
    QStringList words;  // in the order of their colours
    for (const CountedWord& counted : countedWords(marked, run))
        if (const QString& word = marked.at(counted.word);
            !text::trimBlanks(marked.at(counted.entry)).isEmpty() && !words.contains(word))
            words += word;
    std::vector<QString> ofEntries;
    const QStringList entries = run.AramaKelimeleri + run.TumVaryantlar;
    for (const QString& entry : entries) {
        // Of spellings that compare equal another one may come first there.
        const auto place = std::find_if(words.begin(), words.end(), [&](const QString& word) {
            return AyniKelimeVar(entry, {word}, 1, run.KarsilastirmaKipi);
        });
        const auto number = static_cast<size_t>(place - words.begin());
        ofEntries.push_back(place == words.end() ? QString()
                                                 : VurguRenkleri[number % VurguRenkleri.size()].toString());
    }
    return ofEntries;
}

}  // namespace lirovan::search
