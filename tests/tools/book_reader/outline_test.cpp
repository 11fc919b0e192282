// Which text belongs to which entry; links, notes and pictures.
#include <gtest/gtest.h>

#include "support/epub_writer.h"
#include "tools/book_reader/reader_run.h"

namespace lirovan::test {

using namespace Qt::StringLiterals;
namespace {

class BookOutline : public ::testing::Test {
  protected:
    QString write(const Epub& book) { return writeZip(folder_.filePath(u"k.epub"_s), entries(book)); }
    ReaderRun read(const Epub& book) { return readBook(write(book)); }
    QTemporaryDir folder_;
};

TEST_F(BookOutline, TextBelongsToTheEntryWhoseTargetStandsBeforeIt) {
    const EpubDocument a{"a.xhtml",
                         "<p>ön</p><h1 id=\"b\">Bir</h1><p>bir</p><h2>2. <span "
                         "id=\"c\">İki</span></h2><p>iki <i>ara <b id=\"d\">üç</b></i></p>"};
    const EpubDocument b{"b.xhtml", "<p>adsız</p>"}, c{"c.xhtml", "<p>bitti</p>"};
    const Epub books[] = {
        {{a, b, c},
         "<ol><li><a href=\"a.xhtml#b\">Bir</a><ol><li><a href=\"a.xhtml#c\">İki</a></li><li><a "
         "href=\"a.xhtml#d\">Üç</a></li></ol></li>"
         "<li><span>Küme</span><ol><li><a href=\"c.xhtml\">Son</a></li><li><a "
         "href=\"yok.xhtml\">Yok</a></li></ol></li></ol>"},
        {{a, b, c},
         {},
         "<navPoint><navLabel><text>Bir</text></navLabel><content "
         "src=\"a.xhtml#b\"/><navPoint><navLabel><text>İki</text></navLabel><content "
         "src=\"a.xhtml#c\"/></navPoint>"
         "<navPoint><navLabel><text>Üç</text></navLabel><content src=\"a.xhtml#d\"/></navPoint></navPoint>"
         "<navPoint><navLabel><text>Küme</text></navLabel><navPoint><navLabel><text>Son</text></"
         "navLabel><content src=\"c.xhtml\"/></navPoint>"
         "<navPoint><navLabel><text>Yok</text></navLabel><content "
         "src=\"yok.xhtml\"/></navPoint></navPoint>"}};
    for (const Epub& book : books)
        EXPECT_EQ(read(book).topics(),
                  "Sayfa: <P>ön</P>\n"
                  "Bir: <h1>Bir</h1><P>bir</P>\n"
                  "  İki: <h2>2. İki</h2><P>iki <i>ara</i></P>\n"
                  "  Üç: <P><i><B>üç</B></i></P><P>adsız</P>\n"
                  "Küme: \n"
                  "  Son: <P>bitti</P>\n"
                  "  Yok: \n");
}

TEST_F(BookOutline, EntriesWithTheirTitleAloneAreLevels) {
    const Epub book{
        {{"a.xhtml", "<h1 id=\"k\">Kısım</h1><h2 id=\"g\">Giriş</h2><p>bir</p>"},
         {"b.xhtml", "<h1>Öteki</h1>"},
         {"c.xhtml", "<h2>Giriş</h2><p>iki</p>"}},
        "<ol><li><a href=\"a.xhtml\">Kısım</a><ol><li><a href=\"a.xhtml#g\">Giriş</a></li></ol></li>"
        "<li><a href=\"b.xhtml\">Öteki</a><ol><li><a href=\"c.xhtml\">GİRİŞ</a></li></ol></li></ol>"};
    EXPECT_EQ(read(book).topics(),
              "Kısım: \n  Kısım – Giriş: <h1>Kısım</h1>\n<h2>Giriş</h2><P>bir</P>\n"
              "Öteki: \n  Öteki – GİRİŞ: <h1>Öteki</h1>\n<h2>Giriş</h2><P>iki</P>\n");
}

TEST_F(BookOutline, HeadingsServeWhereTheContentsListNamesNextToNothing) {
    Epub book;
    for (int i = 0; i < 11; ++i)
        book.documents.push_back({"d" + QByteArray::number(i) + ".xhtml",
                                  "<div role=\"navigation\"><h3>Gezinti</h3></div><h1>Bölüm " +
                                      QByteArray::number(i) + "</h1><p>söz</p><h2>Alt</h2><p>alt</p>"});
    for (const QByteArray list : {"", "<ol><li><a href=\"d3.xhtml\">Tek</a></li></ol>"}) {
        book.navigation = list;
        const ReaderRun run = read(book);
        EXPECT_EQ(run.book("basliklardan"), "true");
        EXPECT_EQ(run.of("konu").size(), 22u);
        EXPECT_EQ(run.topics().find("Bölüm 0: <h3>Gezinti</h3><h1>Bölüm 0</h1><P>söz</P>\n"), 0u);
    }
    book.navigation = "<ol><li><a href=\"d3.xhtml\">Üç</a></li><li><a href=\"d4.xhtml\">Dört</a></li></ol>";
    EXPECT_EQ(read(book).book("basliklardan"), "false");
}

TEST_F(BookOutline, LinksLeadToTopicsAndPlaces) {
    const Epub book{{{"a.xhtml",
                      "<p><a href=\"b.xhtml#yer%201\">öte</a> <a href=\"b.xhtml\">baş</a> <a "
                      "href=\"yok.xhtml\">yok</a></p>"},
                     {"b.xhtml", "<p>bu da</p><p id=\"yer 1\">burası <a href=\"a.xhtml\">geri</a></p>"}},
                    "<ol><li><a href=\"a.xhtml\">A</a></li><li><a href=\"b.xhtml\">B</a></li></ol>"};
    EXPECT_EQ(read(book).topics(),
              "A: <P><a href=\"konu:1#y1-1\">öte</a> <a href=\"konu:1\">baş</a> yok</P>\n"
              "B: <P>bu da</P><P><a id=\"y1-1\"></a>burası <a href=\"konu:0\">geri</a></P>\n");
}

TEST_F(BookOutline, NotesStandAtTheEndOfTheTopicThatRefersToThem) {
    const QByteArray list = "<ol><li><a href=\"a.xhtml\">A</a></li><li><a href=\"b.xhtml\">B</a></li></ol>";
    const QByteArray expected =
        "A: <P>söz<a id=\"y0-2\"></a><a href=\"#N\">1</a></P><P>sonra</P>\n<hr>\n<P><a id=\"N\"></a><a "
        "href=\"#y0-2\">1.</a> açıklama</P>\nB: <P>bu da</P>\n";
    const QByteArray reference = "<p>söz<a id=\"g\" href=\"%#n\">1</a></p>",
                     note = "<p id=\"n\"><a href=\"%#g\">1.</a> açıklama</p>";
    const auto with = [](QByteArray text, const char* file) { return text.replace('%', file); };
    const Epub books[] = {
        // in the text, at the end of another file, in a file of their own
        {{{"a.xhtml", with(reference, "") + with(note, "") + "<p>sonra</p>"}, {"b.xhtml", "<p>bu da</p>"}},
         list},
        {{{"a.xhtml", with(reference, "b.xhtml") + "<p>sonra</p>"},
          {"b.xhtml", "<p>bu da</p>" + with(note, "a.xhtml") +
                          "<p>c<a href=\"#z\" id=\"w\">2</a></p><p id=\"z\"><a href=\"#w\">2</a></p>"}},
         list},
        {{{"a.xhtml", with(reference, "n.xhtml") + "<p>sonra</p>"},
          {"b.xhtml", "<p>bu da</p>"},
          {"n.xhtml", with(note, "a.xhtml"), {}, {}, "linear=\"no\""}},
         list}};
    for (const Epub& book : books) {
        const auto topics = read(book).of("konu");
        ASSERT_EQ(topics.size(), 2u);
        const QString text = topics[0][u"metin"].toString();
        EXPECT_TRUE(text.contains(u"<P>sonra</P>\n<hr>\n<P><a id=\"y"_qs)) << text.toStdString();
        EXPECT_TRUE(text.endsWith(u">1.</a> açıklama</P>"_qs)) << text.toStdString();
        EXPECT_FALSE(topics[1][u"metin"].toString().contains(u"açıklama"));
    }
}

TEST_F(BookOutline, TheBookSaysItsSeriesAndWhoMadeIt) {
    const QByteArray refine = "<meta refines=\"#%1\" property=\"%2\">%3</meta>";
    const auto refined = [&](const char* id, const char* property, const char* value) {
        return QByteArray(refine).replace("%1", id).replace("%2", property).replace("%3", value);
    };
    const QByteArray series = "<meta property=\"belongs-to-collection\" id=\"d\">Kıyı Kitapları</meta>";
    const struct {
        QByteArray metadata;
        const char *title, *subtitle, *series;
    } cases[] = {
        {"<dc:title>Deniz</dc:title>", "Deniz", "", ""},
        {"<dc:title id=\"a\">Bir yaz</dc:title><dc:title id=\"b\">Deniz</dc:title>" +
             refined("a", "title-type", "subtitle") + refined("b", "title-type", "main"),
         "Deniz", "Bir yaz", ""},
        {series, "k", "", "Kıyı Kitapları"},
        {series + refined("d", "group-position", "2") + refined("d", "collection-type", "series"), "k", "",
         "Kıyı Kitapları, 2"},
        {series + refined("d", "collection-type", "set"), "k", "", ""},
        {"<meta name=\"x:series\" content=\"Göl\"/><meta name=\"x:series_index\" content=\"3.0\"/>", "k", "",
         "Göl, 3"},
    };
    for (const auto& one : cases) {
        Epub book{{{"a.xhtml", "<p>söz</p>"}}};
        book.metadata = one.metadata;
        const ReaderRun run = read(book);
        EXPECT_EQ(run.book("ad"), one.title) << one.metadata.toStdString();
        EXPECT_EQ(run.book("altad"), one.subtitle) << one.metadata.toStdString();
        EXPECT_EQ(run.book("dizi"), one.series) << one.metadata.toStdString();
    }
}

TEST_F(BookOutline, PicturesAreHandedOverOnceAndDrawingsWithoutScripts) {
    const QByteArray png = "\x89PNG\r\n\x1a\n....";
    const Epub book{{{"kapak.xhtml", "<img src=\"k.png\"/>"},
                     {"a.xhtml",
                      "<p>a<img src=\"r/k.png\" alt=\"“Ev”\"/><img src=\"r/k.png\"/><img "
                      "src=\"http://x/y.png\"/><img src=\"r/b.webp\"/></p>"
                      "<svg xmlns=\"http://www.w3.org/2000/svg\" onload=\"x()\"><script>y()</script><a "
                      "href=\"http://z\"><text>çizim</text></a><image href=\"http://z/1.png\"/><rect "
                      "style=\"fill:url(http://z)\"/></svg>"}},
                    "<ol><li><a href=\"a.xhtml\">A</a></li></ol>",
                    {},
                    "<dc:title>Deneme</dc:title>",
                    {{"k/r/k.png", png}, {"k/r/b.webp", "RIFF"}, {"k/k.png", png}}};
    const QString path = write(book);
    const ReaderRun run = readBook(path);
    EXPECT_EQ(run.text(),
              "<P>a<img src=\"resim:0\" alt=\"&quot;Ev&quot;\"><img src=\"resim:0\"></P><P><img "
              "src=\"resim:1\"></P>");
    const auto pictures = run.of("resim");
    ASSERT_EQ(pictures.size(), 2u);
    EXPECT_EQ(QByteArray::fromBase64(pictures[0][u"veri"].toString().toLatin1()), png);
    EXPECT_EQ(
        QByteArray::fromBase64(pictures[1][u"veri"].toString().toLatin1()),
        "<svg xmlns=\"http://www.w3.org/2000/svg\" "
        "xmlns:xlink=\"http://www.w3.org/1999/xlink\"><text>çizim</text><image></image><rect></rect></svg>");
    EXPECT_EQ(run.of("atlanan").size(), 3u);  // cover, foreign picture, unknown kind
    const ReaderRun without = readBook(path, {u"--resimsiz"_s});
    EXPECT_EQ(without.text(), run.text());
    EXPECT_TRUE(without.of("resim").empty());
}

}  // namespace
}  // namespace lirovan::test
