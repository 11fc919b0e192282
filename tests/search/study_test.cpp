// Sound changes, ratios, contexts and positions within books, against plain twins and over a small library.
#include <gtest/gtest.h>

#include <map>

#include "random_text.h"
#include "search/matching/topic_scanner.h"
#include "search/matching/word_list.h"
#include "search/runs/companion.h"
#include "search/runs/ratio_order.h"
#include "search/runs/recorded_hits.h"
#include "search/study/contexts.h"
#include "study_reference.h"
#include "support/library_file.h"

using namespace lirovan;
using namespace lirovan::search;
using namespace Qt::StringLiterals;
using test::Random;

namespace {

const QStringList StudyWords = u"hak|kitap|renk|burun|et|k|ana"_s.split(u'|');
const QStringList Endings = u"||ı|kı|ab|ğı|ı|u"_s.split(u'|');

QString studyText(Random& random) {
    QString text;
    for (int pieces = random.below(9); pieces > 0; --pieces) {
        const QString word = random.from(StudyWords);
        const QStringList forms = reference::forms(word);
        text += (forms.isEmpty() || random.oneIn(2) ? word : random.from(forms)) + random.from(Endings);
        if (!random.oneIn(4)) text += random.from(test::Marks);
    }
    return text + (random.oneIn(2) ? u"</P>"_s : QString());
}

QString utf16(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// What the companion prints, several calls.
QByteArray contexts(const data::Library& library, const SearchRequest& request, qsizetype width = 60) {
    QByteArray all;
    EXPECT_TRUE(companion::baglam(library, request, width, [&](const QByteArray& bytes) { all += bytes; }));
    return all;
}

QByteArray distribution(const data::Library& library, const SearchRequest& request) {
    QByteArray all;
    EXPECT_TRUE(companion::dagilim(library, request, [&](const QByteArray& bytes) { all += bytes; }));
    return all;
}

}  // namespace

TEST(SoundChanges, FindCountAndMarkAsTheTwinDoes) {
    Random random;
    for (int round = 0; round < 1000; ++round) {
        SearchOptions options{random.oneIn(2), random.oneIn(2), random.oneIn(2), false, false, true};
        QStringList typed;
        for (int i = random.below(3); i >= 0; --i)
            if (const QString word = random.from(StudyWords); !typed.contains(word)) typed += word;
        SearchRun run = startRun({{}, options}, typed.join(u' '));
        if (hasSingleLetter(run)) run.request.options.wholeWord = options.wholeWord = true;
        completeRun(run, [](const QString&) { return QStringList(); });
        const QString text = studyText(random);
        const std::string bytes = text.toStdString();
        SCOPED_TRACE(run.AramaKelimeleri.join(u'|').toStdString() + '\n' + bytes);
        const reference::Topic twin{run, options, text};
        const TopicScanner scanner(run);
        const auto found = [&](const QString& word) { return reference::wordFound(twin, word); };
        ASSERT_EQ(scanner.matches(bytes), options.allWords ? std::all_of(typed.begin(), typed.end(), found)
                                                           : std::any_of(typed.begin(), typed.end(), found));
        run.IsabetKaydi = u"$"_s;
        const qint64 count =
            scanner.BulKelimeSay(bytes, {{7}, {1}}, {run.IsabetKaydi, &run.tally}, [] { return true; });
        HitTopic topic;
        RecordedHits record(run);
        ASSERT_EQ(record.next(topic), count > 0);
        qint64 total = 0;
        for (const WordCount& word : wordCounts(run)) {
            QList<qint64> places;
            for (const RecordedHit& hit : topic.hits)
                if (run.AramaKelimeleri.at(hit.word) == word.word) places += hit.position;
            QList<qint64> expected = reference::hitsOfWord(
                twin, typed.contains(word.word) ? word.word : text::folded(word.word), typed);
            std::sort(places.begin(), places.end());
            std::sort(expected.begin(), expected.end());
            ASSERT_EQ(places, expected) << word.word.toStdString();
            ASSERT_EQ(word.hits, expected.size());
            total += word.hits;
        }
        ASSERT_EQ(total, count);
    }
}

TEST(SoundChanges, ShareTheColourOfTheirWord) {
    SearchOptions options{.caseSensitive = true, .soundChanges = true};
    SearchRun run = startRun({{}, options}, u"hak kitap"_s);
    completeRun(
        run, [](const QString& word) { return word == u"kitap" ? QStringList{u"kitâp"_s} : QStringList(); });
    const HighlightedText page = markHits(u"<p>hakkı kitabı kitâbı</p>"_s, wordsToMark(run), run);
    std::map<QString, QString> colours(page.colours.begin(), page.colours.end());
    EXPECT_EQ(colours[u"hak"_s], colours[u"hağ"_s]);
    EXPECT_EQ(colours[u"kitap"_s], colours[u"kitab"_s]);
    EXPECT_EQ(colours[u"kitâp"_s], colours[u"kitâb"_s]);
    EXPECT_NE(colours[u"hak"_s], colours[u"kitap"_s]);
    EXPECT_FALSE(colours.contains(u"hakk"_s));  // what it would mark, "hak" marks
    EXPECT_EQ(page.hits, 3);
}

TEST(Ratio, CountsWordsAsTheTwinDoes) {
    Random random;
    for (int round = 0; round < 1000; ++round) {
        const QString text = test::randomText(random);
        ASSERT_EQ(wordsOfText(text.toStdString()), reference::wordsOfText(text)) << text.toStdString();
    }
    EXPECT_EQ(formatRatio({3, 80}), u"37,5");
    EXPECT_EQ(formatRatio({1, 0}), u"1.000,0");
    EXPECT_EQ(formatRatio({1, 6}), u"166,7");
    EXPECT_TRUE(isHigher({2, 3}, {1, 2}) && !isHigher({1, 2}, {2, 4}));
}

TEST(Contexts, AreWhatTheTwinCutsOut) {
    Random random;
    for (int round = 0; round < 1000; ++round) {
        const QString text = test::randomText(random);
        SearchRun run;
        run.AramaKelimeleri = {random.from(test::Words), random.from(test::Words)};
        const SearchOptions options;
        const TopicScanner scanner(run);
        run.IsabetKaydi = u"$"_s;
        scanner.BulKelimeSay(text.toStdString(), {{7}, {1}}, {run.IsabetKaydi, &run.tally},
                             [] { return true; });
        HitTopic topic;
        RecordedHits(run).next(topic);
        const int width = random.below(9);
        const TopicContexts found = contextsOf(text.toStdString(), topic.hits, width);
        ASSERT_EQ(found.contexts.size(), topic.hits.size());
        const QString whole = reference::plain(text);
        ASSERT_EQ(found.plain, whole.toStdString()) << text.toStdString();
        for (size_t i = 0; i < topic.hits.size(); ++i) {
            const Context& context = found.contexts[i];
            const QString left = utf16(context.left), hit = utf16(context.hit), right = utf16(context.right);
            SCOPED_TRACE(text.toStdString() + "\n" + std::to_string(context.position));
            ASSERT_TRUE(whole.contains(left + hit + right));
            ASSERT_TRUE(left.size() <= width && right.size() <= width);
            ASSERT_EQ(run.AramaKelimeleri.at(context.word).size(), topic.hits[i].length);
            // Where a hit cuts no entity and no tag, it is the text itself, and so is what stands before it.
            const QString before = text.first(context.position - 1);
            const QString word = text.mid(context.position - 1, topic.hits[i].length);
            if (word.contains(u'<') || word.contains(u'&') || word.contains(u'#') ||
                reference::plain(word) != word)
                continue;
            // A hit in the last tag counts, as no "<" follows; it shows nothing.
            if (text.indexOf(u'<', context.position - 1) < 0 && text.indexOf(u'>', context.position - 1) >= 0)
                continue;
            if (before.lastIndexOf(u'&') > before.lastIndexOf(u';') || word == u"quot") continue;
            ASSERT_EQ(hit, word);
            ASSERT_TRUE(left.isEmpty() || reference::plain(before).endsWith(left));
            ASSERT_GE(left.size(), std::min<qsizetype>(width - 1, reference::plain(before).size()));
        }
    }
}

class StudyLibrary : public testing::Test {
  protected:
    StudyLibrary() {
        file_.author(1, u"Sabri").author(2, u"Zeynep");
        file_.book(10, 1, u"YAZ", 2).book(20, 1, u"KIŞ", 1).book(30, 2, u"GÜZ", 1);
        file_.topic(1, 10, u"BİR", u"<p>kitap &quot;ve&quot;<br>kitabı</p>");
        file_.topic(2, 20, u"İKİ", u"<p>kitap var, kalem de var</p>");
        file_.topic(3, 20, u"ÜÇ", u"kitap").topic(4, 20, u"DÖRT", u"<p>su</p>");
        file_.topic(5, 30, u"BEŞ", u"<p>😀 kitap</p>");
        library_ = file_.open();
    }
    test::LibraryFile file_;
    data::Library library_;
};

TEST_F(StudyLibrary, ListsByRatio) {
    const QByteArray printed = *companion::ara(library_, {u"kitap"_s, {}, ListOrder::Oran});
    const char* rows[] = {"\"ust\":\"bul1\",\"metin\":\"Sabri (3 adet)\"",
                          "\"metin\":\"Özet\"",
                          "\"ust\":\"ana10\",\"metin\":\"Üç  (1 adet, binde 1.000,0)\"",
                          "\"metin\":\"Bir  (1 adet, binde 333,3)\"",
                          "\"metin\":\"İki  (1 adet, binde 200,0)\"",
                          "\"metin\":\"Beş  (1 adet, binde 1.000,0)\"",
                          "\"isabetKaydi\":\"$#3;1#1;4#2;4$#5;7\""};
    qsizetype at = 0;
    for (const char* row : rows) EXPECT_GT(at = printed.indexOf(row, at), 0) << row << printed.constData();
}

TEST_F(StudyLibrary, PrintsContextsAndDistribution) {
    const SearchRequest sounds{u"kitap"_s, {.soundChanges = true}};
    EXPECT_EQ(contexts(library_, sounds, 7).toStdString(),
              R"({"konu":2,"konum":4,"sol":"","isabet":"kitap","sag":" var, k"}
{"konu":3,"konum":1,"sol":"","isabet":"kitap","sag":""}
{"konu":1,"konum":28,"sol":"p \"ve\" ","isabet":"kitab","sag":"ı "}
{"konu":1,"konum":4,"sol":"","isabet":"kitap","sag":" \"ve\" k"}
{"konu":5,"konum":7,"sol":"😀 ","isabet":"kitap","sag":" "}
)");
    EXPECT_EQ(distribution(library_, sounds).toStdString(),
              R"({"kitap":20,"uzunluk":44,"isabetler":[[1,4],[1,31]]}
{"kitap":10,"uzunluk":37,"isabetler":[[1,4],[1,28]]}
{"kitap":30,"uzunluk":15,"isabetler":[[1,7]]}
)");
    // A topic that is gone since the run, a query of nothing, one that finds nothing.
    for (const QString& nothing : {QString(), u"  "_s, u"!?"_s, u"bulunmaz"_s}) {
        EXPECT_EQ(contexts(library_, {nothing}), QByteArray());
        EXPECT_EQ(distribution(library_, {nothing}), QByteArray());
    }
}

TEST_F(StudyLibrary, PassesOverTopicsThatAreGone) {
    ResultTree tree;
    SearchEngine engine(library_, tree);
    RunHost host;
    ASSERT_TRUE(engine.run({u"kitap"_s}, host));
    ASSERT_TRUE(library_.database().execute(
        u"delete from tbl_Konu where KonuID=2; update tbl_Konu set Konu='x' where KonuID=5"));
    QString seen;
    ASSERT_TRUE(
        contextsOfRun(library_, *engine.stores().find(1), 5, [&](data::TopicId topic, const auto& hits) {
            seen += u"%1:%2 "_s.arg(topic.value).arg(hits.size());
            return true;
        }));
    EXPECT_EQ(seen, u"3:1 1:1 5:0 ");
}
