// The picture "Dağılım" as values, and the summary as a document.
#include "search/study/strips.h"

#include <gtest/gtest.h>

#include "search/runs/search_engine.h"
#include "search/study/study_summary.h"
#include "support/library_file.h"

using namespace lirovan;
using namespace lirovan::search;
using namespace Qt::StringLiterals;

namespace {

class StripsTest : public testing::Test {
  protected:
    StripsTest() {
        file.execute(u"BEGIN").author(1, u"Sabri").author(2, u"Zeynep");
        file.book(10, 1, u"YAZ").book(20, 1, u"KIŞ").book(30, 2, u"GÜZ");
        file.topic(1, 10, u"AĞAÇ", u"<P>ilim</P>").topic(2, 10, u"ZİL", u"<P>irfan ilim</P>");
        file.topic(3, 20, u"BOŞ", u"<P>yok</P>");
        file.topic(4, 30, u"KUM", u"<P>irfan</P>"_s + QString(700, u'a') + u" irfan <b>ilim</b> &lt;son"_s);
        library = file.execute(u"COMMIT").open();
    }
    RunHits find(const QString& query) {
        const SearchRun& run = *engine.run({query}, host)->run;
        return {run, query, *hitListOf(library, engine.outline(), run)};
    }

    test::LibraryFile file;
    data::Library library;
    ResultTree tree;
    RunHost host;
    SearchEngine engine{library, tree};
    HitProgress goOn = [](qint64, qint64) { return true; };
};

}  // namespace

TEST_F(StripsTest, HaveTheBooksTheirWordsAndTheWayBackToTheHit) {
    const RunHits run = find(u"ilim irfan"_s);
    const Distribution some = **distributionOf(library, run, WantedBooks::WithHits, goOn);
    const Distribution all = **distributionOf(library, run, WantedBooks::All, goOn);
    ASSERT_EQ(some.books.size(), 2u);
    ASSERT_EQ(all.books.size(), 3u);
    EXPECT_EQ(all.books[1].name, u"Kış");
    EXPECT_EQ(all.books[1].length, 10);
    ASSERT_EQ(some.lanes.size(), 2u);
    const size_t ilim = some.lanes[0].word == u"ilim" ? 0 : 1;
    EXPECT_EQ(some.lanes[ilim].hits, 3);
    EXPECT_NE(some.lanes[0].colour, some.lanes[1].colour);

    const Strip& summer = some.books[0];
    EXPECT_EQ(summer.author, u"Sabri");
    EXPECT_EQ(summer.counts[ilim], 2);
    ASSERT_EQ(summer.hits.size(), 3u);
    const HitPlace last = placeOf(summer, 2);  // behind the first topic's 11 characters
    EXPECT_TRUE(last.topic.value == 2 && last.position == 10);
    EXPECT_EQ(passageAt(library, run, last), u"… irfan ilim …\nSabri, Yaz, Zil");
    EXPECT_EQ(hitNear(summer, 30, 3, 1), 0u);
    EXPECT_FALSE(hitNear(summer, 30, 27, 2).has_value());
    EXPECT_FALSE(hitNear(summer, 30, 3, 1, 1 - summer.hits[0].lane).has_value());

    const std::vector<Strip> topics = *topicStrips(library, summer);
    ASSERT_EQ(topics.size(), 2u);
    EXPECT_EQ(topics[1].name, u"Zil");
    EXPECT_EQ(placeOf(topics[1], 1).position, 10);

    EXPECT_EQ(ticksOf(summer, 3000).size(), 3u);
    EXPECT_EQ(ticksOf(summer, 1).size(), 2u);  // one a lane
    EXPECT_FALSE(
        distributionOf(library, run, WantedBooks::All, [](qint64, qint64) { return false; })->has_value());
}

TEST_F(StripsTest, SummaryHasOverlappingPassagesOnceAndTheirSources) {
    const RunHits run = find(u"ilim irfan"_s);
    const auto summary = [&](int author) {
        QByteArray html;
        const auto write = [&](const QByteArray& piece) { return html += piece, platform::Result<void>(); };
        EXPECT_TRUE(*studySummary(library, run, author, write, goOn));
        return QString::fromUtf8(html);
    };
    const QString all = summary(-1);
    EXPECT_TRUE(all.contains(u"<h1>ilim irfan</h1>"_s) && all.contains(u"6 isabet"_s));
    EXPECT_EQ(all.count(u"<h2>"_s), 2);
    EXPECT_TRUE(all.contains(u"<p><b class=\"isabet\">irfan</b> <b class=\"isabet\">ilim</b></p>"_s));
    EXPECT_TRUE(all.contains(u"Zeynep, Güz, Kum</p>"_s));
    const QString second = summary(1);
    EXPECT_FALSE(second.contains(u"Sabri"_s));
    EXPECT_EQ(second.count(u"<p>"_s), 2);  // too far from one another
    EXPECT_TRUE(second.contains(u"<b class=\"isabet\">ilim</b> &lt;son</p>"_s));
}
