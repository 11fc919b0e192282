// What is no EPUB: HTML, Markdown, plain text, and documents through pandoc.
#include <gtest/gtest.h>

#include <QStandardPaths>

#include "support/epub_writer.h"
#include "tools/book_reader/reader_run.h"

namespace lirovan::test {

using namespace Qt::StringLiterals;
namespace {

class BookSources : public ::testing::Test {
  protected:
    ReaderRun read(const char* name, const QByteArray& content) {
        return readBook(writeFile(folder_.filePath(QString::fromLatin1(name)), content));
    }
    QTemporaryDir folder_;
};

TEST_F(BookSources, HtmlIsSplitAtItsHeadings) {
    const ReaderRun run =
        read("a.html",
             "<title>Kitap</title><meta name=author "
             "content=Yazar><h1>KİTAP</h1><h1>Bir</h1><p>söz<h2>Alt</h2>alt<h1>İki</h1>son");
    EXPECT_EQ(run.book("ad"), "Kitap");
    EXPECT_EQ(run.topics(),
              "Bir: <h1>KİTAP</h1><h1>Bir</h1><P>söz</P>\n  Alt: <h2>Alt</h2><P>alt</P>\nİki: "
              "<h1>İki</h1><P>son</P>\n");
}

TEST_F(BookSources, PagesThatTheIndexLinksToFollowIt) {
    writeFile(folder_.filePath(u"b/index.html"_s),
              "<h1>İlk</h1><p>bir <a href='iki.html'>iki</a> <a href='../dis.html'>dış</a></p>");
    writeFile(folder_.filePath(u"b/iki.html"_s), "<h1>İkinci</h1><p>iki</p>");
    writeFile(folder_.filePath(u"dis.html"_s), "<h1>Dış</h1>");
    EXPECT_EQ(
        readBook(folder_.filePath(u"b"_s)).topics(),
        "İlk: <h1>İlk</h1><P>bir <a href=\"konu:1\">iki</a> dış</P>\nİkinci: <h1>İkinci</h1><P>iki</P>\n");
}

TEST_F(BookSources, MarkdownHasTablesFootnotesAndLinksToHeadings) {
    const ReaderRun run =
        read("a.md",
             "---\ntitle: 'Ad'\nauthor: Yazar\n---\n# Bir IŞIK\nsöz[^a] `[^a]`\n\n[^a]: açıklama\n    "
             "*devam*\n\n## Alt\n| a | b |\n|---|---|\n| c | d |\n\n[baş](#bir-işik)\n");
    EXPECT_EQ(run.book("ad"), "Ad");
    EXPECT_EQ(run.topics(),
              "Bir IŞIK: <h1><a id=\"y0-2\"></a>Bir IŞIK</h1><P>söz<a id=\"y0-3\"></a><a "
              "href=\"#y0-1\"><sup>1</sup></a> <code>[^a]</code></P>\n<hr>\n"
              "<P><a id=\"y0-1\"></a><a href=\"#y0-3\">1.</a> açıklama <em>devam</em></P>\n"
              "  Alt: <h2>Alt</h2><table "
              "border=\"1\"><thead><tr><th>a</th><th>b</th></tr></thead><tbody><tr><td>c</td><td>d</td></"
              "tr></tbody></table><P><a href=\"konu:0#y0-2\">baş</a></P>\n");
}

TEST_F(BookSources, PlainTextIsReadInAnyTurkishCodePage) {
    const QByteArray utf8 =
        "KİTABIN ADI\nYazar Adı\n\n\nBirinci Bölüm: IŞIK\n\nBir ğ satır.\n- a\n- b\n\n\nAra başlık\n\nson < "
        "söz";
    QByteArray turkish;
    for (const QChar unit : QString::fromUtf8(utf8)) {
        const std::u16string_view special = u"ĞİŞğış";
        const size_t at = special.find(unit.unicode());
        turkish += at == special.npos ? static_cast<char>(unit.unicode()) : "\xD0\xDD\xDE\xF0\xFD\xFE"[at];
    }
    for (const QByteArray& bytes :
         {utf8, "\xEF\xBB\xBF" + utf8, turkish, QByteArray(turkish).replace("\n", "\r\n")}) {
        const ReaderRun run = read("a.txt", bytes);
        EXPECT_EQ(run.book("ad"), "KİTABIN ADI");
        EXPECT_EQ(run.topics(),
                  "Birinci Bölüm: IŞIK: <h1>KİTABIN ADI</h1><P>Yazar Adı</P><h1>Birinci Bölüm: "
                  "IŞIK</h1><P>Bir ğ satır.<br>- a<br>- b</P>\n"
                  "  Ara başlık: <h2>Ara başlık</h2><P>son &lt; söz</P>\n");
    }
    EXPECT_EQ(read("b.txt", "tek satır\nikinci").topics(), "b: <P>tek satır<br>ikinci</P>\n");
}

TEST_F(BookSources, RichTextLosesNoLetter) {
    if (QStandardPaths::findExecutable(u"pandoc"_s).isEmpty()) GTEST_SKIP() << "pandoc is not installed";
    EXPECT_EQ(read("a.rtf",
                   "{\\rtf1\\ansi\\ansicpg1254\\uc1 \\u351?ey g\\u252\\'fczel \\'fe\\'fd\\'f0 \\u305 ?\\par}")
                  .text(),
              "<P>şey güzel şığ ı</P>");
}

TEST_F(BookSources, WithoutPandocASentenceNamesThePackage) {
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nonexistent");
    const ReaderRun run = read("a.rtf", "{\\rtf1 a}");
    qputenv("PATH", path);
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.failure().find("pandoc"), std::string::npos);
}

}  // namespace
}  // namespace lirovan::test
