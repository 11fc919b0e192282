#include "search/runs/search_engine.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>

#include "search/matching/search_query.h"
#include "search/matching/variant_table.h"
#include "search/runs/companion.h"
#include "support/library_file.h"

using namespace lirovan;
using namespace lirovan::search;
using namespace Qt::StringLiterals;
using Request = SearchRequest;

namespace {

// Author 1 with books 10 (second in order) and 20 (first), author 2 with book 30 and the hidden one.
class SearchEngineTest : public testing::Test {
  protected:
    SearchEngineTest() {
        file_.execute(u"BEGIN").author(1, u"Sabri Işık").author(2, u"Zeynep");
        file_.book(10, 1, u"YAZ <B>DEFTERİ</B>", 2).book(20, 1, u"KIŞ DEFTERİ", 1);
        file_.book(30, 2, u"ALİ'NİN KİTABI").book(35, 2, u"GİZLİ");
        file_.topic(1, 10, u"DAĞ YOLU", u"<p>İlim ve irfan; ilimdir.</p>");
        file_.topic(2, 10, u" ÇAY<BR>KIYISI ", u"<p>Bir <a name='ilim'>su</a> başında.</p>");
        file_.topic(3, 20, u"BAHAR", u"<p>hakîkat yolu, ilim yolu</p>");
        file_.topic(40000, 30, u"AY", u"<p>ilim</p>").topic(5, 35, u"GİZLİ", u"<p>ilim</p>");
        file_.variant(u"hakikat", u"hakîkat").variant(u"Hakikat", u"Hak`ikât").variant(u"h_kikat", u"x");
        library_ = file_.execute(u"COMMIT").open();
    }

    // A run as the companion prints it: the whole of it, or one value, list items joined by "|".
    std::string printed(const Request& request) const {
        return companion::ara(library_, request)->toStdString();
    }
    QString printed(const Request& request, QStringView name) const {
        const QByteArray whole = *companion::ara(library_, request);
        return QJsonDocument::fromJson(whole)[name].toVariant().toStringList().join(u'|');
    }
    QString record(const Request& request) const { return printed(request, u"isabetKaydi"); }

    test::LibraryFile file_;
    data::Library library_;
    ResultTree tree_;
    SearchEngine engine_{library_, tree_};
};

}  // namespace

TEST_F(SearchEngineTest, ListsInTheOrderOfBooksOrHeadings) {
    EXPECT_EQ(
        printed({u"ilim"_s}),
        R"j({"kelimeler":["İlİm","ilim"],"kip":1,"varyantlar":[],"dugumler":[)j"
        R"j({"anahtar":"bul1","ust":null,"metin":"Aranan :\"ilim\"","simge":"Bul","etiket":1},)j"
        R"j({"anahtar":"ana10","ust":"bul1","metin":"Sabri Işık (3 adet)","simge":"vq","etiket":null},)j"
        R"j({"anahtar":"ozet10","ust":"ana10","metin":"Özet","simge":3,"etiket":"OZET0"},)j"
        R"j({"anahtar":"kitap11","ust":"ana10","metin":"Kış Defteri  (1 adet)","simge":1,"etiket":null},)j"
        R"j({"anahtar":"konu13","ust":"kitap11","metin":"Bahar  (1 adet)","simge":3,"etiket":3},)j"
        R"j({"anahtar":"kitap12","ust":"ana10","metin":"Yaz Defteri  (2 adet)","simge":1,"etiket":null},)j"
        R"j({"anahtar":"konu11","ust":"kitap12","metin":"Dağ Yolu  (2 adet)","simge":3,"etiket":1},)j"
        R"j({"anahtar":"ana11","ust":"bul1","metin":"Zeynep (1 adet)","simge":"Lirovan","etiket":null},)j"
        R"j({"anahtar":"ozet11","ust":"ana11","metin":"Özet","simge":3,"etiket":"OZET1"},)j"
        R"j({"anahtar":"kitap13","ust":"ana11","metin":"Ali'nin Kitabı  (1 adet)","simge":1,"etiket":null},)j"
        R"j({"anahtar":"konu140000","ust":"kitap13","metin":"Ay  (1 adet)","simge":3,"etiket":40000}],)j"
        R"j("isabetKaydi":"$#3;18#1;4;19$#40000;4","bulunan":3})j"
        "\n");
    // Headings are ordered as stored, with their blanks.
    const Request byHeading{u"yolu su"_s, {.caseSensitive = true}, ListOrder::Konu, {u"x"_s, 1, 0}};
    EXPECT_TRUE(printed(byHeading).ends_with(
        R"j({"anahtar":"konu12","ust":"ana10","metin":"Çay Kıyısı  (1 adet)","simge":3,"etiket":2},)j"
        R"j({"anahtar":"konu13","ust":"ana10","metin":"Bahar  (2 adet)","simge":3,"etiket":3}],)j"
        R"j("isabetKaydi":"$#2;23#3;12;23","bulunan":2})j"
        "\n"));
    EXPECT_TRUE(printed(byHeading).starts_with(R"({"kelimeler":["yolu","su"],"kip":0,)"));
    EXPECT_TRUE(printed({u"bulunmaz"_s})
                    .ends_with(R"("dugumler":[],"isabetKaydi":"$$","bulunan":0})"
                               "\n"));
    for (const ListOrder order : {ListOrder::Kitap, ListOrder::Konu}) {
        EXPECT_EQ(record({u"ilim"_s, {}, order, {u"x"_s, 1, 10}}), u"$#1;4;19");
        EXPECT_EQ(record({u"ilim"_s, {}, order, {u"x"_s, 2, 35}}), u"$");
    }
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
    for (const auto& [query, options, words, hits] : cases) {
        EXPECT_EQ(record({query, options}), hits) << query.toStdString();
        EXPECT_EQ(printed({query, options}, u"kelimeler"), words) << query.toStdString();
    }
    EXPECT_EQ(formatCount(999) + u' ' + formatCount(1234567), u"999 1.234.567");
}

TEST_F(SearchEngineTest, KeepsWhatWasListedWhenStopped) {
    struct : RunHost {
        int hits = 0;
        bool goOn() override { return ++hits < 4; }
    } host;
    // Asked at the hit of topic 3, after it, and at the two hits of topic 1: the second one is not counted.
    EXPECT_EQ(engine_.run({u"ilim"_s}, host)->listed, 2);
    EXPECT_EQ(engine_.stores().find(1)->IsabetKaydi, u"$#3;18#1;4");
}

TEST_F(SearchEngineTest, SeesChangesInWhatItKeepsAndEndsAtARowThatCannotBeRead) {
    SearchEngine keeping(library_, tree_);
    keeping.keepTexts();
    auto expect = [&, run = 0](QStringView record, QStringView message = u"") mutable {
        ++run;
        for (SearchEngine* engine : {&engine_, &keeping}) {
            RunHost host;
            const auto result = engine->run({u"ilim"_s}, host);
            EXPECT_EQ(result ? QString() : result.error().message, message);
            EXPECT_EQ(engine->stores().find(run)->IsabetKaydi, record);
        }
    };
    expect(u"$#3;18#1;4;19$#40000;4");
    file_.execute(u"UPDATE tbl_Konu SET Konu='<p>bir ilim' WHERE KonuID=2");  // another program
    expect(u"$#3;18#1;4;19#2;8$#40000;4");
    ASSERT_TRUE(library_.execute(u"DELETE FROM tbl_Konu WHERE KonuID=2"_s));  // over the same connection
    expect(u"$#3;18#1;4;19$#40000;4");
    file_.topic(6, 10, u"Yeni", u"<p>ilim</p>");  // another program again
    expect(u"$#3;18#1;4;19#6;4$#40000;4");
    file_.damage(5);  // in the book that no search lists
    expect(u"$#3;18#1;4;19#6;4$#40000;4");
    file_.damage(1);
    expect(u"$#3;18", u"Veritabanı dosyası bozuk.");
    file_.execute(u"ALTER TABLE tbl_KonuBaslik RENAME TO tbl_Baska");
    expect(u"$", u"Dosyada tbl_KonuBaslik tablosu yok.");
}

TEST_F(SearchEngineTest, RebuildsTheVariantTableFromTheTextsOrLeavesItAlone) {
    file_.topic(6, 10, u"İKİ", u"<p>HAKÎKAT, Kur'ân, rôl</p>");
    EXPECT_FALSE(rebuildVariantTable(library_, [n = 0]() mutable { return ++n < 8; }));
    EXPECT_EQ(*library_.database().integer(u"SELECT count(*) FROM tbl_KelimeKont"), 3);
    EXPECT_EQ(*companion::kelimeler(library_), "3\n");
    EXPECT_EQ(printed({u"KURAN"_s}, u"varyantlar"), u"Kur'ân");
    // The written and the folded form find the same.
    EXPECT_EQ(record({u"hakikat"_s}), record({u"HAKÎKAT"_s}));
    EXPECT_EQ(record({u"kuran"_s}), record({u"Kur'an"_s}));
    EXPECT_EQ(record({u"Kuran"_s}), u"$#6;13$");
}

TEST_F(SearchEngineTest, PrintsPagesForTheCompanion) {
    const platform::AppFolder folder(u"C:\\Lirovan"_s);
    const Request phrase{.query = u" su "_s, .options = {.together = true}};
    const std::string page = companion::vurgula(library_, folder, {2}, phrase, false).toStdString();
    EXPECT_TRUE(page.starts_with("<html><title> \307AY KIYISI </title><body ") &&
                page.ends_with("</html>\r\n"));
    EXPECT_NE(page.find("<a name='ilim'><a name='ggggittt'></a><input "), std::string::npos);
    EXPECT_EQ(companion::vurgula(library_, folder, {1}, {u"ilim irfan yok"_s}, true).toStdString(),
              R"({"isabet":3,"renkler":[["irfan","#00FF00"],["ilim","#00FFFF"],["yok","#FFFF00"]]})"
              "\n");
    EXPECT_EQ(companion::vurgula(library_, folder, {99}, phrase, true), "");

    const Request irfan{.query = u" irfan "_s, .options = {.together = true}};
    EXPECT_TRUE(companion::ozet(library_, irfan, 0)
                    ->contains("<font color='#000080'><b>>>>>>YAZ <B>DEFTER\xDD</B> >>>>>DA\xD0 YOLU</b>"));
    EXPECT_EQ(*companion::ozet(library_, irfan, 1), "\r\n");
    EXPECT_FALSE(companion::ozet(library_, irfan, 2));
    EXPECT_FALSE(companion::ozet(library_, {u"?"_s}, 0));
}
