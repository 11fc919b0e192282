#include "search/runs/run_words.h"

#include <gtest/gtest.h>

#include <set>

#include "search/matching/word_list.h"
#include "text/comparison.h"

using namespace lirovan;
using namespace lirovan::search;
using namespace Qt::StringLiterals;

TEST(RunWords, CountsWordsHereAndInTheRunAndKnowsTheirHits) {
    SearchRun run = startRun({.query = u"deniz kum yok"_s}, u"deniz kum yok"_s);
    completeRun(run, [](const QString&) { return QStringList(); });
    // Of a word and its I variant the first one is counted.
    for (const QString& entry : run.AramaKelimeleri) {
        const bool isSea = text::equal(entry, u"deniz", text::Comparison::CaseInsensitive);
        run.tally.counts.push_back(isSea ? 112 : entry == u"kum" ? 5 : 0);
    }
    const HighlightedText marks = markHits(u"<p>kum deniz kum denizde</p>"_s, wordsToMark(run), run);
    const std::vector<RunWord> words = runWords(run, marks);
    ASSERT_EQ(words.size(), 2U) << "what the run did not find is left out";
    EXPECT_EQ(wordCaption(words[0]), u"deniz  2 / 112");
    EXPECT_EQ(wordCaption(words[1]), u"kum  2 / 5");
    ASSERT_EQ(words[1].hits.size(), 1U);
    const HitRange kum = words[1].hits[0];
    EXPECT_EQ(kum.count, 2);
    EXPECT_TRUE(
        marks.text.contains(u"name='ggggittt%1' style='width:0px; height:0px;'><font color='#000080'><span "
                            "style='background-color:%2'>kum"_s.arg(QString::number(kum.first),
                                                                    VurguRenkleri[size_t(words[1].colour)])))
        << marks.text.toStdString();
}

TEST(RunWords, HasAnotherLineForEachColour) {
    std::set<std::tuple<int, bool, bool>> seen;
    for (int colour = 0; colour < int(VurguRenkleri.size()); ++colour) {
        const CueLine cue = cueLine(colour);
        seen.insert({int(cue.style), cue.above, cue.thick});
    }
    EXPECT_EQ(seen.size(), VurguRenkleri.size());
}
