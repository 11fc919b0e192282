#include "search/search_engine.h"

#include <gtest/gtest.h>

#include "search/companion.h"
#include "search/highlighter.h"
#include "search/search_query.h"
#include "search/variant_table.h"
#include "support/library_file.h"

using namespace lirovan;
using namespace lirovan::search;
using namespace Qt::StringLiterals;

namespace {

// Author 1 with books 10 (second in order) and 20 (first), author 2 with book 30 and the hidden one.
test::LibraryFile library() {
    test::LibraryFile file;
    file.execute(u"BEGIN").author(1, u"Sabri Işık").author(2, u"Zeynep Ersoy");
    file.book(10, 1, u"YAZ <B>DEFTERİ</B>", 2).book(20, 1, u"KIŞ DEFTERİ", 1).book(30, 2, u"ALİ'NİN KİTABI");
    file.book(35, 2, u"GİZLİ");
    file.topic(1, 10, u"DAĞ YOLU", u"<p>İlim ve irfan; ilimdir.</p>");
    file.topic(2, 10, u" ÇAY<BR>KIYISI ", u"<p>Bir <a name='ilim'>su</a> başında.</p>");
    file.topic(3, 20, u"BAHAR", u"<p>hakîkat yolu, ilim yolu</p>");
    file.topic(40000, 30, u"AY", u"<p>ilim</p>");
    file.topic(5, 35, u"GİZLİ", u"<p>ilim</p>");
    file.variant(u"hakikat", u"hakîkat")
        .variant(u"Hakikat", u"Hak`ikât")
        .variant(u"h_kikat", u"x")
        .execute(u"COMMIT");
    return file;
}

struct Listed {
    QStringList words;
    QString record;
    QStringList nodes;  // "key text tag", children indented
    RunResult result;
    bool wholeWord = false;
};

QString value(const NodeValue& v) {
    if (const auto* number = std::get_if<qint64>(&v)) return QString::number(*number);
    const auto* text = std::get_if<QString>(&v);
    return text ? *text : u"-"_s;
}

QString line(const ResultNode& node) {
    QString indent;
    for (const ResultNode* up = node.parent; up; up = up->parent) indent += u' ';
    return indent + node.key + u'|' + node.text + u'|' + value(node.image) + u'|' + value(node.tag);
}

Listed runOf(const data::Library& library, QString query, SearchOptions options = {},
             ListOrder order = ListOrder::Kitap, const platform::BookSelection& scope = {}) {
    ResultTree tree;
    SearchEngine engine(library, tree);
    RunHost host;
    const QString typed = query;
    const auto result = engine.listele(query, order, typed, options, scope, host);
    Listed listed;
    EXPECT_TRUE(result);
    if (!result) return listed;
    listed.result = *result;
    listed.wholeWord = options.wholeWord;
    if (const SearchRun* run = engine.stores().find(1)) {
        listed.words = run->AramaKelimeleri;
        listed.record = run->IsabetKaydi;
    }
    for (int i = 0; i < tree.runCount(); ++i)
        for (const ResultNode& node : tree.nodes(i)) listed.nodes += line(node);
    return listed;
}

std::string joined(const QStringList& lines) {
    return lines.join(u'\n').toStdString();
}

}  // namespace

TEST(SearchQuery, IsCleanedAndSplit) {
    struct Case {
        QStringView query;
        QStringView cleaned;
        bool together;
        QStringList words;
    };
    const Case cases[] = {
        {u"ilim, irfan!", u"ilim irfan", false, {u"ilim"_s, u"irfan"_s}},
        {u" (a/b) & c ", u" ab c ", false, {u"ab"_s, u"c"_s}},
        {u"dedi: \"gel\"", u"dedi: &quot;gel&quot;", true, {u"dedi: &quot;gel&quot;"_s}},
        {u"a    b", u"a  b", false, {u"a"_s, u"b"_s}},
        {u"?! .", u" ", true, {}},
        {u"-=%,", u"", false, {}},
        {u"O'nun _[*\\", u"O'nun _[*\\", false, {u"O'nun"_s, u"_[*\\"_s}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(cleanQuery(c.query), c.cleaned.toString());
        EXPECT_EQ(queryWords(cleanQuery(c.query), c.together), c.words) << c.query.toString().toStdString();
    }
    // The ties of an exchange sort.
    QStringList words{u"ab"_s, u"c"_s, u"de"_s, u"f"_s, u"ghi"_s};
    orderLongestFirst(words);
    EXPECT_EQ(joined(words), "ghi\nde\nab\nf\nc");
    EXPECT_EQ(formatCount(999) + u' ' + formatCount(1234567), u"999 1.234.567");
}

TEST(SearchEngine, ListsABookOrderRun) {
    const test::LibraryFile file = library();
    const Listed listed = runOf(file.open(), u"ilim"_s);
    EXPECT_EQ(joined(listed.words), "İlİm\nilim");
    EXPECT_EQ(listed.record, u"$#3;18#1;4;19$#40000;4");
    EXPECT_EQ(listed.result.listed, 3);
    EXPECT_EQ(joined(listed.nodes),
              "bul1|Aranan :\"ilim\"|Bul|1\n"
              " ana10|Sabri Işık (3 adet)|vq|-\n"
              "  ozet10|Özet|3|OZET0\n"
              "  kitap11|Kış Defteri  (1 adet)|1|-\n"
              "   konu13|Bahar  (1 adet)|3|3\n"
              "  kitap12|Yaz Defteri  (2 adet)|1|-\n"
              "   konu11|Dağ Yolu  (2 adet)|3|1\n"
              " ana11|Zeynep Ersoy (1 adet)|Lirovan|-\n"
              "  ozet11|Özet|3|OZET1\n"
              "  kitap13|Ali'nin Kitabı  (1 adet)|1|-\n"
              "   konu140000|Ay  (1 adet)|3|40000");
}

TEST(SearchEngine, KeepsToTheSelectedAuthorOrBook) {
    const test::LibraryFile file = library();
    const Listed listed = runOf(file.open(), u"yolu su"_s, {}, ListOrder::Konu, {u"x"_s, 1, 0});
    EXPECT_EQ(listed.record, u"$#2;23#3;12;23");
    EXPECT_EQ(joined(listed.nodes),
              "bul1|Aranan :\"yolu su\"|Bul|1\n"
              " ana10|Sabri Işık (3 adet)|vq|-\n"
              "  ozet10|Özet|3|OZET0\n"
              "  konu12|Çay Kıyısı  (1 adet)|3|2\n"  // headings are ordered as stored, with their blanks
              "  konu13|Bahar  (2 adet)|3|3");
    for (const ListOrder order : {ListOrder::Kitap, ListOrder::Konu}) {
        EXPECT_EQ(runOf(file.open(), u"ilim"_s, {}, order, {u"x"_s, 1, 10}).record, u"$#1;4;19");
        EXPECT_EQ(runOf(file.open(), u"ilim"_s, {}, order, {u"x"_s, 2, 35}).result.listed, 0);
    }
}

TEST(SearchEngine, AppliesTheOptions) {
    struct Case {
        QString query;
        SearchOptions options;
        QString words;
        QString record;
    };
    const Case cases[] = {
        // Variants of the table join the words, the longest first; apostrophes come back.
        {u"hakikat"_s, {}, u"Hak'ikât Hak'ikât hakîkat hakîkat hakİkat hakikat"_s, u"$#3;4$"_s},
        {u"İlim"_s, {.caseSensitive = true}, u"İlim"_s, u"$#1;4$"_s},
        {u"ilim"_s, {.wholeWord = true}, u"ilim İlİm"_s, u"$#3;18#1;4$#40000;4"_s},
        {u"ilim hakikat"_s, {.allWords = true}, u"ilim hakikat İlİm hakİkat"_s, u"$#3;18;4$"_s},
        {u"ilim yolu"_s, {.together = true}, u"İlİm yolu|ilim yolu"_s, u"$#3;18$"_s},
        {u"ilim ve"_s, {.allWords = true, .together = true}, u"ilim ve|İlİm ve"_s, u"$#1;4$"_s},
        {u"o'nun % ' _"_s, {}, u"o'nun ' _"_s, QString()},
    };
    const test::LibraryFile file = library();
    for (const Case& c : cases) {
        const Listed listed = runOf(file.open(), c.query, c.options);
        if (!c.record.isNull()) {
            EXPECT_EQ(listed.record.toStdString(), c.record.toStdString()) << c.query.toStdString();
        }
        EXPECT_EQ(listed.words, c.words.split(c.options.together ? u'|' : u' ')) << joined(listed.words);
    }
}

TEST(SearchEngine, AsksAboutASingleLetterOnce) {
    struct Host : RunHost {
        bool answer = true;
        int asked = 0;
        bool acceptSingleLetter() override { return ++asked, answer; }
    } host;
    const test::LibraryFile file = library();
    const data::Library open = file.open();
    ResultTree tree;
    SearchEngine engine(open, tree);
    SearchOptions options;
    QString query = u"i x ilim"_s;
    ASSERT_TRUE(engine.listele(query, ListOrder::Kitap, query, options, {}, host));
    EXPECT_EQ(host.asked, 1);
    EXPECT_TRUE(options.wholeWord);
    EXPECT_NE(engine.stores().find(1), nullptr);

    host.answer = false;
    const auto cancelled = engine.listele(query, ListOrder::Kitap, query, options, {}, host);
    ASSERT_TRUE(cancelled);
    EXPECT_EQ(cancelled->end, RunResult::End::Cancelled);
    EXPECT_EQ(engine.stores().find(2), nullptr);
    EXPECT_EQ(tree.runCount(), 1);
}

TEST(SearchEngine, KeepsWhatWasListedWhenStopped) {
    struct Host : RunHost {
        int hits = 0;
        bool goOn() override { return ++hits < 4; }
    } host;
    const test::LibraryFile file = library();
    const data::Library open = file.open();
    ResultTree tree;
    SearchEngine engine(open, tree);
    SearchOptions options;
    QString query = u"ilim"_s;
    const auto result = engine.listele(query, ListOrder::Kitap, query, options, {}, host);
    ASSERT_TRUE(result);
    // Asked at the hit of topic 3, after it, and at the two hits of topic 1: the second one is not counted.
    EXPECT_EQ(result->listed, 2);
    EXPECT_EQ(engine.stores().find(1)->IsabetKaydi, u"$#3;18#1;4");
    EXPECT_EQ(tree.run(0).children.size(), 1u);
}

TEST(SearchEngine, SeesChangesInTextsThatItKeeps) {
    test::LibraryFile file = library();
    const data::Library open = file.open();
    ResultTree tree;
    SearchEngine engine(open, tree);
    engine.keepTexts();
    auto record = [&, run = 0]() mutable {
        SearchOptions options;
        RunHost host;
        QString query = u"ilim"_s;
        EXPECT_TRUE(engine.listele(query, ListOrder::Kitap, query, options, {}, host));
        return engine.stores().find(++run)->IsabetKaydi;
    };
    EXPECT_EQ(record(), u"$#3;18#1;4;19$#40000;4");
    EXPECT_EQ(record(), u"$#3;18#1;4;19$#40000;4");
    file.execute(u"UPDATE tbl_Konu SET Konu='<p>bir ilim' WHERE KonuID=2");  // another program
    EXPECT_EQ(record(), u"$#3;18#1;4;19#2;8$#40000;4");
    ASSERT_TRUE(open.execute(u"DELETE FROM tbl_Konu WHERE KonuID=1"_s));  // over the same connection
    EXPECT_EQ(record(), u"$#3;18#2;8$#40000;4");
}

TEST(SearchEngine, RemovesARunThatListsNothing) {
    const test::LibraryFile file = library();
    const Listed nothing = runOf(file.open(), u"bulunmaz"_s);
    EXPECT_TRUE(nothing.nodes.empty());
    EXPECT_EQ(nothing.record, u"$$");
    EXPECT_EQ(nothing.result.end, RunResult::End::Listed);
    EXPECT_TRUE(runOf(file.open(), u"ilim"_s, {}, ListOrder::None).nodes.empty());
    EXPECT_EQ(runOf(file.open(), u" ?! "_s).result.end, RunResult::End::NoWords);
}

TEST(VariantTable, IsRebuiltFromTheTextsOrLeftAlone) {
    test::LibraryFile file = library();
    file.topic(6, 10, u"İKİ", u"<p>HAKÎKAT, Kur'ân, rôl</p>");
    const data::Library open = file.open();
    const auto stopped = rebuildVariantTable(open, [n = 0]() mutable { return ++n < 8; });
    EXPECT_FALSE(stopped);
    EXPECT_EQ(*open.database().integer(u"SELECT count(*) FROM tbl_KelimeKont"), 3);

    const auto rows = rebuildVariantTable(open, [] { return true; });
    ASSERT_TRUE(rows);
    EXPECT_EQ(*rows, 3);
    auto kuran = open.variants(u"KURAN");
    data::Variant variant;
    ASSERT_TRUE(kuran && *kuran->next(variant));
    EXPECT_EQ(variant.searchForm, u"Kur`ân");
    // The written and the folded form find the same.
    EXPECT_EQ(runOf(open, u"hakikat"_s).record, runOf(open, u"HAKÎKAT"_s).record);
    EXPECT_EQ(runOf(open, u"kuran"_s).record, runOf(open, u"Kur'an"_s).record);
    EXPECT_EQ(runOf(open, u"Kuran"_s).result.listed, 1);
}

TEST(Companion, PrintsARunAsOneObject) {
    test::LibraryFile file = library();
    const data::Library open = file.open();
    const auto ara = companion::ara(open, {.query = u"\"ay\" irfan"_s, .options = {.caseSensitive = true}});
    ASSERT_TRUE(ara);
    EXPECT_EQ(
        ara->toStdString(),
        "{\"kelimeler\":[\"&quot;ay&quot;\",\"irfan\"],\"kip\":0,\"varyantlar\":[],\"dugumler\":["
        "{\"anahtar\":\"bul1\",\"ust\":null,\"metin\":\"Aranan :\\\"\\\"ay\\\" irfan\\\"\",\"simge\":\"Bul\","
        "\"etiket\":1},"
        "{\"anahtar\":\"ana10\",\"ust\":\"bul1\",\"metin\":\"Sabri Işık (1 adet)\",\"simge\":\"vq\","
        "\"etiket\":null},"
        "{\"anahtar\":\"ozet10\",\"ust\":\"ana10\",\"metin\":\"Özet\",\"simge\":3,\"etiket\":\"OZET0\"},"
        "{\"anahtar\":\"kitap11\",\"ust\":\"ana10\",\"metin\":\"Yaz Defteri  (1 adet)\",\"simge\":1,"
        "\"etiket\":null},"
        "{\"anahtar\":\"konu11\",\"ust\":\"kitap11\",\"metin\":\"Dağ Yolu  (1 "
        "adet)\",\"simge\":3,\"etiket\":1},"
        "{\"anahtar\":\"ana11\",\"ust\":\"bul1\",\"metin\":\"Zeynep Ersoy\",\"simge\":\"Lirovan\","
        "\"etiket\":null}],\"isabetKaydi\":\"$#1;12$\",\"bulunan\":1}\n");
    const auto empty = companion::ara(open, {.query = u"?"_s});
    ASSERT_TRUE(empty);
    EXPECT_EQ(*empty,
              "{\"kelimeler\":[],\"kip\":1,\"varyantlar\":[],\"dugumler\":[],\"isabetKaydi\":\"\","
              "\"bulunan\":0}\n");
}

TEST(Companion, PrintsPages) {
    test::LibraryFile file = library();
    const data::Library open = file.open();
    const platform::AppFolder folder(u"C:\\Lirovan"_s);
    const QByteArray page =
        companion::vurgula(open, folder, {2}, {.query = u" su "_s, .options = {.together = true}}, false);
    EXPECT_TRUE(
        page.startsWith("<html><title> \xC7"
                        "AY KIYISI </title><body topmargin=0 leftmargin=0 "
                        "rightmargin=0 bottommargin=0><table"));
    EXPECT_TRUE(
        page.contains("<a name='ilim'><a name='ggggittt'></a><input type='submit' name='ggggittt0' "
                      "style='width:0px; height:0px;'><font color='#000080'><span "
                      "style='background-color:#00FF00'>su</font></span></a>"));
    EXPECT_TRUE(page.endsWith("</html>\r\n"));
    EXPECT_EQ(companion::vurgula(open, folder, {1}, {.query = u"ilim irfan yok"_s}, true).toStdString(),
              "{\"isabet\":3,\"renkler\":[[\"irfan\",\"#00FF00\"],[\"ilim\",\"#00FFFF\"],[\"yok\",\"#"
              "FFFF00\"]]}\n");
    EXPECT_TRUE(companion::vurgula(open, folder, {99}, {.query = u"su"_s}, true).isEmpty());

    const auto summary = companion::ozet(open, {.query = u" irfan "_s, .options = {.together = true}}, 0);
    ASSERT_TRUE(summary);
    EXPECT_TRUE(
        summary->contains("<font color='#000080'><b>>>>>>YAZ <B>DEFTER\xDD</B> >>>>>DA\xD0 YOLU</b>"));
    EXPECT_EQ(*companion::ozet(open, {.query = u"irfan"_s}, 1), "\r\n");
    EXPECT_FALSE(companion::ozet(open, {.query = u"irfan"_s}, 2));
    EXPECT_FALSE(companion::ozet(open, {.query = u"?"_s}, 0));
}

TEST(Highlighter, LeavesMarkupAlone) {
    const QString text = u"<P>ilim <i>ilim</i> irfan</P>"_s;
    const QStringList words{u"ilim"_s, u"<i"_s, u"<"_s, u"i>"_s};
    const auto page = markHits(text, words, text::Comparison::CaseInsensitive, false);
    EXPECT_EQ(page.hits, 2);
    EXPECT_EQ(page.text.count(u"<input type='submit' name='ggggittt"_s), 2);
    EXPECT_EQ(page.colours.size(), 4u);  // the words take their colours all the same
}
