// A run's hits as a list: its orders, its lines, its files, and the way from a hit to its button.
#include "search/study/hit_list.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include "random_text.h"
#include "search/matching/topic_scanner.h"
#include "search/matching/word_list.h"
#include "search/pages/highlighter.h"
#include "search/pages/hit_anchor.h"
#include "search/pages/word_colours.h"
#include "search/runs/search_engine.h"
#include "search/study/hit_export.h"
#include "search/study/hit_lines.h"
#include "search/study/study_summary.h"
#include "support/files.h"
#include "support/library_file.h"

using namespace lirovan;
using namespace lirovan::search;
using namespace Qt::StringLiterals;
using test::Random;

namespace {

class HitListTest : public testing::Test {
  protected:
    HitListTest() {
        file.execute(u"BEGIN").author(1, u"Sabri").author(2, u"Zeynep");
        file.book(10, 1, u"YAZ", 2).book(20, 1, u"KIŞ", 1).book(30, 2, u"GÜZ");
        file.topic(1, 10, u"AĞAÇ", u"<P>çam ve ilim yolu</P><P>ışık ilim zor</P>");
        file.topic(2, 20, u"ZİL", u"<P>ince İlim, &amp; sözü</P>");
        file.topic(3, 30, u"=KUM", u"<P>ev</P> ilim");
        file.execute(
            u"INSERT INTO tbl_KonuBaslik(KonuID, KitapID, KonuBaslik, Konu_Sira) "
            "VALUES(3, 20, 'Ek', 9)");
        library = file.execute(u"COMMIT").open();
    }

    RunHits find(const QString& query, ListOrder order = ListOrder::Kitap,
                 platform::BookSelection scope = {}) {
        tree.SonuclariTemizle();
        const SearchRun& run = *engine.run({query, {}, order, scope}, host)->run;
        return {run, query, *hitListOf(library, engine.outline(), run)};
    }
    QStringList shown(const RunHits& run, HitOrder order, qint64 book = 0) {
        HitLines lines(library, run.list);
        QStringList shown;
        const auto hits = orderedHits(library, run.list, order, [](qint64, qint64) { return true; });
        for (const quint32 hit : hitsInBook(run.list, **hits, {book})) {
            const HitLine line = lines.line(hit);
            shown += (line.left + u'[' + line.hit + u']' + line.right).trimmed();
        }
        return shown;
    }

    test::LibraryFile file;
    data::Library library;
    ResultTree tree;
    RunHost host;
    SearchEngine engine{library, tree};
};

const QString First = u"çam ve [ilim] yolu ışık ilim zor"_s, Second = u"çam ve ilim yolu ışık [ilim] zor"_s,
              Third = u"ince [İlim], & sözü"_s, Fourth = u"ev [ilim]"_s;

}  // namespace

TEST_F(HitListTest, OrdersAsTurkishListsDo) {
    const RunHits run = find(u"ilim"_s, ListOrder::Konu);
    EXPECT_EQ(shown(run, HitOrder::Found), (QStringList{First, Second, Fourth, Third, Fourth}));
    EXPECT_EQ(shown(run, HitOrder::Source), (QStringList{Third, Fourth, First, Second, Fourth}));
    EXPECT_EQ(shown(run, HitOrder::Left), (QStringList{Fourth, Fourth, Second, Third, First}));
    EXPECT_EQ(shown(run, HitOrder::Right), (QStringList{Fourth, Fourth, Third, First, Second}));
    EXPECT_EQ(shown(run, HitOrder::Word).size(), 5);
    EXPECT_EQ(shown(run, HitOrder::Left, 20), (QStringList{Fourth, Third}));
    EXPECT_EQ(shown(find(u"ilim"_s, ListOrder::Oran, {u"Kış"_s, 1, 20}), HitOrder::Found),
              (QStringList{Fourth, Fourth, Third}));

    QStringList books;
    for (const ListedBook& book : booksOf(run.list))
        books += QString::number(book.book.value) + u':' + QString::number(book.hits);
    EXPECT_EQ(books.join(u' '), u"20:2 10:2 30:1");
    int asked = 0;
    EXPECT_FALSE(orderedHits(library, run.list, HitOrder::Left, [&](qint64, qint64) {
                     return asked++ > 0;
                 })->has_value());
}

TEST_F(HitListTest, SaysWhereALineStandsAndWhenItsTopicIsGone) {
    const RunHits run = find(u"ilim"_s);
    HitLines lines(library, run.list);
    EXPECT_EQ(copiedLine(lines.line(0)), u"… ince İlim, & sözü … (Sabri, Kış, Zil)");
    file.execute(u"DELETE FROM tbl_Konu WHERE KonuID=1");
    file.execute(u"DELETE FROM tbl_KonuBaslik WHERE KonuID=1");
    file.execute(u"UPDATE tbl_Konu SET Konu='<P>ev</P>' WHERE KonuID=3");
    EXPECT_EQ(copiedLine(lines.line(1)), u"…  … (Sabri, Kış, Ek)");
    EXPECT_EQ(lines.line(2).source, u"(konu kitaplıktan kaldırılmış)");
    EXPECT_EQ(shown(run, HitOrder::Left).filter(u"[ilim]"_s).size(), 0);
}

TEST_F(HitListTest, IsSavedInThreeForms) {
    const RunHits run = find(u"ilim"_s, ListOrder::Kitap, {u"Güz"_s, 2, 30});
    HitLines lines(library, run.list);
    const auto save = [&](const QString& name, bool goOn = true) {
        const auto saved =
            saveHits(lines, {0}, u"<Başlık>"_s, file.filePath(name), [goOn](qint64, qint64) { return goOn; });
        EXPECT_TRUE(saved && *saved == goOn);
        return test::readFile(file.filePath(name));
    };
    EXPECT_EQ(save(u"a.CSV"_s),
              "\xEF\xBB\xBF\"Sol\";\"İsabet\";\"Sağ\";\"Kaynak\"\r\n"
              "\"ev \";\"ilim\";\"\";\"Zeynep, Güz, =kum\"\r\n");
    EXPECT_TRUE(save(u"a.html"_s).contains("<h1>&lt;Başlık&gt;</h1>"));
    EXPECT_TRUE(save(u"a.txt"_s).endsWith("  ev   ilim    (Zeynep, Güz, =kum)\n"));
    save(u"b.txt"_s, false);
    EXPECT_FALSE(QFile::exists(file.filePath(u"b.txt"_s)));
    EXPECT_FALSE(
        saveHits(lines, {0}, {}, file.filePath(u"yok/a.txt"_s), [](qint64, qint64) { return true; }));
}

TEST_F(HitListTest, SavesALongListInItsOrder) {
    QString text;
    for (int i = 0; i < 11'000; ++i) text += u"<P>%1 ilim</P>"_s.arg(i);
    file.execute(u"UPDATE tbl_Konu SET Konu='"_s + text + u"' WHERE KonuID<3"_s);
    const RunHits run = find(u"ilim"_s);
    HitLines lines(library, run.list);
    // From topic to topic, over more lines than are made at once.
    std::vector<quint32> order;
    QByteArray expected;
    for (quint32 hit = 0; hit < 11'000; ++hit)
        for (const quint32 each : {21'999 - hit, hit}) {
            order.push_back(each);
            const HitLine line = lines.line(each);
            expected +=
                (u'"' + line.left + u"\";\"ilim\";\""_s + line.right + u"\";\""_s + line.source + u"\"\r\n"_s)
                    .toUtf8();
        }
    qint64 told = 0;
    ASSERT_TRUE(*saveHits(lines, order, {}, file.filePath(u"uzun.csv"_s), [&](qint64 done, qint64 all) {
        EXPECT_TRUE(done >= std::exchange(told, done) && all == 22'000);
        return true;
    }));
    EXPECT_TRUE(test::readFile(file.filePath(u"uzun.csv"_s)).endsWith(expected));
    EXPECT_GT(told, 20'000);
}

TEST_F(HitListTest, SummaryIsHeadedByWhatWasSearchedAndCountsItsAuthor) {
    RunHits run = find(u"ilim"_s);
    run.run.request.shown = u"başka"_s;  // the box, when the list was sorted again
    QByteArray html;
    const auto write = [&](const QByteArray& piece) { return html += piece, platform::Result<void>(); };
    ASSERT_TRUE(*studySummary(library, run, 1, write, [](qint64, qint64) { return true; }));
    EXPECT_TRUE(html.contains("<h1>ilim</h1>") && !html.contains("başka") && html.endsWith("</html>\n"));
    EXPECT_TRUE(html.contains(">1 isabet<"));
    EXPECT_EQ(hitsOfSummary(run, 1), 1);
    EXPECT_EQ(hitsOfSummary(run, 0), 4);
    EXPECT_EQ(hitsOfSummary(run, -1), 5);
}

TEST(HitAnchor, LeadsToTheMarkAtTheHit) {
    Random random;
    for (int round = 0; round < 2000; ++round) {
        SearchOptions options{.caseSensitive = random.oneIn(2), .wholeWord = random.oneIn(3)};
        SearchRun run = startRun({{}, options}, random.from(test::Words) + u' ' + random.from(test::Words));
        if (run.AramaKelimeleri.isEmpty()) continue;
        completeRun(run, [](const QString&) { return QStringList(); });
        const QString text = test::randomText(random);
        if (text.contains(u"</font></span>"_s)) continue;  // would be taken for what marking puts in
        const HighlightedText page = markHits(text, wordsToMark(run), run);
        // Every button leads to itself: the text before it, without what marking put in, says where it is.
        static const QRegularExpression marks(
            u"<input type='submit' name='ggggittt\\d+' style='width:0px; height:0px;'><font "
            "color='#000080'><span style='background-color: ?#\\w{6}'>|<a name='ggggittt'></a>"_s);
        static const QRegularExpression button(u"name='ggggittt(\\d+)'"_s);
        for (auto each = button.globalMatch(page.text); each.hasNext();) {
            const auto match = each.next();
            const QStringView rest = QStringView(page.text).sliced(match.capturedEnd());
            const auto anchor = match.captured(1).toInt();
            // Nested marks share their place; then any of them will do.
            QString before = page.text.left(match.capturedStart() - u"<input type='submit' "_s.size());
            before.remove(marks);
            before.remove(u"</font></span>"_s);
            const auto found = anchorOf(text, page.text, before.size() + 1);
            ASSERT_TRUE(found.has_value());
            ASSERT_TRUE(*found == anchor || rest.left(200).contains(u"name='ggggittt%1'"_s.arg(*found)))
                << *found << " for " << anchor << '\n'
                << page.text.toStdString();
        }
    }
    EXPECT_EQ(anchorOf(u"<p>su</p>", u"<p>su</p>", 4), std::nullopt);
}

TEST(WordColours, AreThoseOfThePage) {
    SearchOptions options{.soundChanges = true};
    SearchRun run = startRun({{}, options}, u"bir kitap ev bir"_s);
    completeRun(run, [](const QString&) { return QStringList(); });
    const HighlightedText page = markHits({}, wordsToMark(run), run);
    const std::vector<QString> colours = coloursOfEntries(run);
    for (const auto& [word, colour] : page.colours) {
        if (text::equal(word, u"kitab", text::Comparison::CaseInsensitive)) continue;  // its word has it
        for (qsizetype i = 0; i < run.AramaKelimeleri.size(); ++i) {
            if (text::equal(run.AramaKelimeleri[i], word, text::Comparison::CaseInsensitive)) {
                EXPECT_EQ(colours[size_t(i)], colour) << word.toStdString();
            }
        }
    }
}
