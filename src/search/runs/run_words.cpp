#include "search/runs/run_words.h"

#include <algorithm>

#include "search/matching/search_query.h"
#include "search/matching/word_list.h"
#include "text/comparison.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;

std::vector<RunWord> runWords(const SearchRun& run, const HighlightedText& marks) {
    const std::vector<WordCount> counts = wordCounts(run);
    std::vector<RunWord> words;
    std::vector<qsizetype> entries;
    for (const MarkedWord& marked : marks.words) {
        const auto known = std::ranges::find(entries, marked.standsFor);
        const auto place = static_cast<size_t>(known - entries.begin());
        if (known == entries.end()) {
            entries.push_back(marked.standsFor);
            const auto count = std::ranges::find_if(counts, [&](const WordCount& each) {
                return text::equal(each.word, marked.word, run.KarsilastirmaKipi);
            });
            words.push_back({marked.word, marked.colour, 0, count == counts.end() ? 0 : count->hits, {}});
        }
        RunWord& word = words[place];
        word.onPage += marked.hits;
        if (marked.hits > 0) word.hits.push_back({marked.first, marked.hits});
        word.inRun = std::max(word.inRun, word.onPage);
    }
    std::erase_if(words, [](const RunWord& word) { return word.inRun == 0; });
    return words;
}

CueLine cueLine(int colour) {
    constexpr int styles = 5;
    return {static_cast<CueLine::Style>(colour % styles), colour / styles % 2 == 1, colour / styles >= 2};
}

QString cueStyle() {
    constexpr QStringView names[] = {u"solid", u"dashed", u"dotted", u"double", u"wavy"};
    QString rules;
    for (size_t colour = 0; colour < VurguRenkleri.size(); ++colour) {
        const CueLine cue = cueLine(static_cast<int>(colour));
        rules +=
            u"input[name^=\"%1\"]+font>span[style*=\"%2\" i]{text-decoration:underline%3 %4 %5px "
            "#000080;text-underline-offset:2px;text-decoration-skip-ink:none}"_s
                .arg(HitAnchor, VurguRenkleri[colour], cue.above ? u" overline"_s : QString(),
                     names[static_cast<size_t>(cue.style)])
                .arg(cue.thick ? 3 : 1);
    }
    return u"@media screen{"_s + rules + u'}';
}

QString wordCaption(const RunWord& word) {
    return word.word.trimmed() + u"  "_s + formatCount(word.onPage) + u" / "_s + formatCount(word.inRun);
}

}  // namespace lirovan::search
