#include "search/search_engine.h"

#include <gtest/gtest.h>

#include "search/companion.h"
#include "search/search_query.h"
#include "search/variant_table.h"
#include "support/library_file.h"

using namespace lirovan;
using namespace lirovan::search;
using namespace Qt::StringLiterals;

namespace {

struct Host : RunHost {
    int hits = 0, lastHit = 1000;
    bool goOn() override { return ++hits < lastHit; }
};

QString value(const NodeValue& v) {
    if (const auto* number = std::get_if<qint64>(&v)) return QString::number(*number);
    const auto* text = std::get_if<QString>(&v);
    return text ? *text : u"-"_s;
}

struct Listed {
    QString words, record;
    std::string nodes;  // "key|text|image|tag", children indented
    RunResult result;
};

// Author 1 with books 10 (second in order) and 20 (first), author 2 with book 30 and the hidden one.
class SearchEngineTest : public testing::Test {
  protected:
    SearchEngineTest() {
        file_.execute(u"BEGIN").author(1, u"Sabri Işık").author(2, u"Zeynep Ersoy");
        file_.book(10, 1, u"YAZ <B>DEFTERİ</B>", 2).book(20, 1, u"KIŞ DEFTERİ", 1);
        file_.book(30, 2, u"ALİ'NİN KİTABI").book(35, 2, u"GİZLİ");
        file_.topic(1, 10, u"DAĞ YOLU", u"<p>İlim ve irfan; ilimdir.</p>");
        file_.topic(2, 10, u" ÇAY<BR>KIYISI ", u"<p>Bir <a name='ilim'>su</a> başında.</p>");
        file_.topic(3, 20, u"BAHAR", u"<p>hakîkat yolu, ilim yolu</p>");
        file_.topic(40000, 30, u"AY", u"<p>ilim</p>").topic(5, 35, u"GİZLİ", u"<p>ilim</p>");
        file_.variant(u"hakikat", u"hakîkat").variant(u"Hakikat", u"Hak`ikât").variant(u"h_kikat", u"x");
        library_ = file_.execute(u"COMMIT").open();
    }

    // The first run of a new tree.
    Listed run(QString query, SearchOptions options = {}, ListOrder order = ListOrder::Kitap,
               const platform::BookSelection& scope = {}) {
        ResultTree tree;
        SearchEngine engine(library_, tree);
        const auto result = engine.listele(query, order, query, options, scope, host_);
        Listed listed;
        EXPECT_TRUE(result);
        if (result) listed.result = *result;
        if (const SearchRun* run = engine.stores().find(1)) {
            listed.words = run->AramaKelimeleri.join(u'|');
            listed.record = run->IsabetKaydi;
        }
        for (int i = 0; i < tree.runCount(); ++i)
            for (const ResultNode& node : tree.nodes(i)) {
                for (const ResultNode* up = node.parent; up; up = up->parent) listed.nodes += ' ';
                const QStringList parts{node.key, node.text, value(node.image), value(node.tag)};
                listed.nodes += parts.join(u'|').toStdString() + '\n';
            }
        return listed;
    }

    test::LibraryFile file_;
    data::Library library_;
    Host host_;
};

}  // namespace

TEST_F(SearchEngineTest, ListsInTheOrderOfBooksOrHeadings) {
    const Listed byBook = run(u"ilim"_s);
    EXPECT_EQ(byBook.words, u"İlİm|ilim");
    EXPECT_EQ(byBook.record, u"$#3;18#1;4;19$#40000;4");
    EXPECT_EQ(byBook.result.listed, 3);
    EXPECT_EQ(byBook.nodes,
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
              "   konu140000|Ay  (1 adet)|3|40000\n");
    const Listed ofAuthor = run(u"yolu su"_s, {}, ListOrder::Konu, {u"x"_s, 1, 0});
    EXPECT_EQ(ofAuthor.record, u"$#2;23#3;12;23");
    EXPECT_EQ(ofAuthor.nodes,
              "bul1|Aranan :\"yolu su\"|Bul|1\n"
              " ana10|Sabri Işık (3 adet)|vq|-\n"
              "  ozet10|Özet|3|OZET0\n"
              "  konu12|Çay Kıyısı  (1 adet)|3|2\n"  // headings are ordered as stored, with their blanks
              "  konu13|Bahar  (2 adet)|3|3\n");
    for (const ListOrder order : {ListOrder::Kitap, ListOrder::Konu}) {
        EXPECT_EQ(run(u"ilim"_s, {}, order, {u"x"_s, 1, 10}).record, u"$#1;4;19");
        EXPECT_EQ(run(u"ilim"_s, {}, order, {u"x"_s, 2, 35}).result.listed, 0);
    }
    const Listed nothing = run(u"bulunmaz"_s);
    EXPECT_EQ(nothing.nodes, "");
    EXPECT_EQ(nothing.record, u"$$");
    EXPECT_EQ(nothing.result.end, RunResult::End::Listed);
    EXPECT_EQ(run(u"ilim"_s, {}, ListOrder::None).nodes, "");
    EXPECT_EQ(run(u" ?! "_s).result.end, RunResult::End::NoWords);
}

TEST_F(SearchEngineTest, CleansTheQueryAndAppliesTheOptions) {
    const std::tuple<QString, SearchOptions, QStringView, QStringView> cases[] = {
        {u" (a/b) & ve!"_s, {}, u"ve|ab", u"$#1;9$"},  // of one length: as an exchange sort leaves them
        {u"dedi: \"gel\""_s, {.caseSensitive = true, .together = true}, u"dedi: &quot;gel&quot;", u"$$"},
        {u"a    su"_s, {}, u"a|su", u"$#2;23$"},  // a single letter: whole words only
        {u"-=%, ?!"_s, {}, u"", u""},
        {u"o'nun % ' _[*\\"_s, {}, u"o'nun|'|_[*\\", u"$$"},
        // Variants of the table join the words, the longest first; apostrophes come back.
        {u"hakikat"_s, {}, u"Hak'ikât|Hak'ikât|hakîkat|hakîkat|hakİkat|hakikat", u"$#3;4$"},
        {u"İlim"_s, {.caseSensitive = true}, u"İlim", u"$#1;4$"},
        {u"ilim"_s, {.wholeWord = true}, u"ilim|İlİm", u"$#3;18#1;4$#40000;4"},
        {u"ilim hakikat"_s, {.allWords = true}, u"ilim|hakikat|İlİm|hakİkat", u"$#3;18;4$"},
        {u"ilim yolu"_s, {.together = true}, u"İlİm yolu|ilim yolu", u"$#3;18$"},
        {u"ilim ve"_s, {.allWords = true, .together = true}, u"ilim ve|İlİm ve", u"$#1;4$"},
    };
    for (const auto& [query, options, words, record] : cases) {
        const Listed listed = run(query, options);
        EXPECT_EQ(listed.record, record) << query.toStdString();
        EXPECT_EQ(listed.words, words) << query.toStdString();
    }
    EXPECT_EQ(formatCount(999) + u' ' + formatCount(1234567), u"999 1.234.567");
}

TEST_F(SearchEngineTest, KeepsWhatWasListedWhenStopped) {
    host_.lastHit = 4;
    const Listed stopped = run(u"ilim"_s);
    // Asked at the hit of topic 3, after it, and at the two hits of topic 1: the second one is not counted.
    EXPECT_EQ(stopped.result.listed, 2);
    EXPECT_EQ(stopped.record, u"$#3;18#1;4");
    EXPECT_EQ(stopped.nodes.find("Zeynep"), std::string::npos);
}

TEST_F(SearchEngineTest, SeesChangesInTextsThatItKeeps) {
    ResultTree tree;
    SearchEngine engine(library_, tree);
    engine.keepTexts();
    auto record = [&, run = 0]() mutable {
        SearchOptions options;
        QString query = u"ilim"_s;
        EXPECT_TRUE(engine.listele(query, ListOrder::Kitap, query, options, {}, host_));
        return engine.stores().find(++run)->IsabetKaydi;
    };
    EXPECT_EQ(record(), u"$#3;18#1;4;19$#40000;4");
    EXPECT_EQ(record(), u"$#3;18#1;4;19$#40000;4");
    file_.execute(u"UPDATE tbl_Konu SET Konu='<p>bir ilim' WHERE KonuID=2");  // another program
    EXPECT_EQ(record(), u"$#3;18#1;4;19#2;8$#40000;4");
    ASSERT_TRUE(library_.execute(u"DELETE FROM tbl_Konu WHERE KonuID=1"_s));  // over the same connection
    EXPECT_EQ(record(), u"$#3;18#2;8$#40000;4");
}

TEST_F(SearchEngineTest, EndsAtARowThatCannotBeReadAndNotBefore) {
    ResultTree tree;
    SearchEngine plain(library_, tree), keeping(library_, tree);
    keeping.keepTexts();
    auto expect = [&, run = 0](QStringView message, QStringView record) mutable {
        ++run;
        for (SearchEngine* engine : {&plain, &keeping}) {
            SearchOptions options;
            QString query = u"ilim"_s;
            const auto result = engine->listele(query, ListOrder::Kitap, query, options, {}, host_);
            EXPECT_EQ(result ? QString() : result.error().message, message);
            EXPECT_EQ(engine->stores().find(run)->IsabetKaydi, record);
        }
    };
    file_.damage(5);  // in the book that no search lists
    expect(u"", u"$#3;18#1;4;19$#40000;4");
    file_.damage(1);
    expect(u"Veritabanı dosyası bozuk.", u"$#3;18");
    file_.execute(u"ALTER TABLE tbl_KonuBaslik RENAME TO tbl_Baska");
    expect(u"Dosyada tbl_KonuBaslik tablosu yok.", u"$");
}

TEST_F(SearchEngineTest, RebuildsTheVariantTableFromTheTextsOrLeavesItAlone) {
    file_.topic(6, 10, u"İKİ", u"<p>HAKÎKAT, Kur'ân, rôl</p>");
    EXPECT_FALSE(rebuildVariantTable(library_, [n = 0]() mutable { return ++n < 8; }));
    EXPECT_EQ(*library_.database().integer(u"SELECT count(*) FROM tbl_KelimeKont"), 3);
    const auto rows = rebuildVariantTable(library_, [] { return true; });
    ASSERT_TRUE(rows);
    EXPECT_EQ(*rows, 3);
    auto kuran = library_.variants(u"KURAN");
    data::Variant variant;
    ASSERT_TRUE(kuran && *kuran->next(variant));
    EXPECT_EQ(variant.searchForm, u"Kur`ân");
    // The written and the folded form find the same.
    EXPECT_EQ(run(u"hakikat"_s).record, run(u"HAKÎKAT"_s).record);
    EXPECT_EQ(run(u"kuran"_s).record, run(u"Kur'an"_s).record);
    EXPECT_EQ(run(u"Kuran"_s).result.listed, 1);
}

TEST_F(SearchEngineTest, PrintsARunForTheCompanionAsOneObject) {
    const auto ara =
        companion::ara(library_, {.query = u"\"ay\" irfan"_s, .options = {.caseSensitive = true}});
    ASSERT_TRUE(ara);
    EXPECT_EQ(
        ara->toStdString(),
        R"j({"kelimeler":["&quot;ay&quot;","irfan"],"kip":0,"varyantlar":[],"dugumler":[)j"
        R"j({"anahtar":"bul1","ust":null,"metin":"Aranan :\"\"ay\" irfan\"","simge":"Bul","etiket":1},)j"
        R"j({"anahtar":"ana10","ust":"bul1","metin":"Sabri Işık (1 adet)","simge":"vq","etiket":null},)j"
        R"j({"anahtar":"ozet10","ust":"ana10","metin":"Özet","simge":3,"etiket":"OZET0"},)j"
        R"j({"anahtar":"kitap11","ust":"ana10","metin":"Yaz Defteri  (1 adet)","simge":1,"etiket":null},)j"
        R"j({"anahtar":"konu11","ust":"kitap11","metin":"Dağ Yolu  (1 adet)","simge":3,"etiket":1},)j"
        R"j({"anahtar":"ana11","ust":"bul1","metin":"Zeynep Ersoy","simge":"Lirovan","etiket":null}],)j"
        R"j("isabetKaydi":"$#1;12$","bulunan":1})j"
        "\n");
    EXPECT_EQ(companion::ara(library_, {.query = u"?"_s})->toStdString(),
              R"j({"kelimeler":[],"kip":1,"varyantlar":[],"dugumler":[],"isabetKaydi":"","bulunan":0})j"
              "\n");
}

TEST_F(SearchEngineTest, PrintsPagesForTheCompanion) {
    const platform::AppFolder folder(u"C:\\Lirovan"_s);
    const std::string page =
        companion::vurgula(library_, folder, {2}, {.query = u" su "_s, .options = {.together = true}}, false)
            .toStdString();
    EXPECT_TRUE(
        page.starts_with("<html><title> \xC7"
                         "AY KIYISI </title><body "));
    EXPECT_NE(page.find("<a name='ilim'><a name='ggggittt'></a><input type='submit' name='ggggittt0' "
                        "style='width:0px; height:0px;'><font color='#000080'><span "
                        "style='background-color:#00FF00'>su</font></span></a>"),
              std::string::npos);
    EXPECT_TRUE(page.ends_with("</html>\r\n"));
    EXPECT_EQ(companion::vurgula(library_, folder, {1}, {.query = u"ilim irfan yok"_s}, true).toStdString(),
              R"({"isabet":3,"renkler":[["irfan","#00FF00"],["ilim","#00FFFF"],["yok","#FFFF00"]]})"
              "\n");
    EXPECT_TRUE(companion::vurgula(library_, folder, {99}, {.query = u"su"_s}, true).isEmpty());

    const auto summary = companion::ozet(library_, {.query = u" irfan "_s, .options = {.together = true}}, 0);
    ASSERT_TRUE(summary);
    EXPECT_TRUE(
        summary->contains("<font color='#000080'><b>>>>>>YAZ <B>DEFTER\xDD</B> >>>>>DA\xD0 YOLU</b>"));
    EXPECT_EQ(*companion::ozet(library_, {.query = u"irfan"_s}, 1), "\r\n");
    EXPECT_FALSE(companion::ozet(library_, {.query = u"irfan"_s}, 2));
    EXPECT_FALSE(companion::ozet(library_, {.query = u"?"_s}, 0));
}
