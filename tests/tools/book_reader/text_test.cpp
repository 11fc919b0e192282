// What becomes of a document's markup and letters.
#include <gtest/gtest.h>

#include <QRegularExpression>

#include "support/epub_writer.h"
#include "tools/book_reader/reader_run.h"

namespace lirovan::test {

using namespace Qt::StringLiterals;
namespace {

class BookTexts : public ::testing::Test {
  protected:
    ReaderRun read(const Epub& book) {
        return readBook(writeZip(folder_.filePath(u"k.epub"_s), entries(book)));
    }
    // The text of a book with one document and one entry.
    std::string text(const QByteArray& body) {
        return read({{{"a.xhtml", body}}, "<ol><li><a href=\"a.xhtml\">Başlık</a></li></ol>"}).text();
    }
    QTemporaryDir folder_;
};

TEST_F(BookTexts, LettersAreWrittenAsSearchLooksForThem) {
    const struct {
        QByteArray body, expected;
    } cases[] = {
        {"<p>ka\xCC\x82g\xCC\x86\xC4\xB1t I\xCC\x87"
         "z i\xCC\x87"
         "z</p>",
         "<P>kâğıt İz iz</P>"},
        {"<p>ki\xC2\xADtap ki\xE2\x80\x8Btap \xEF\xBB\xBFki\xE2\x81\xA0tap</p>", "<P>kitap kitap kitap</P>"},
        {"<p>“Kur’ân’ı” ‘oku’ dedi „hoca‟</p>", "<P>&quot;Kur'ân'ı&quot; 'oku' dedi &quot;hoca&quot;</P>"},
        {"<p>ﬁnal ﬂüt eﬀekt aﬃş</p>", "<P>final flüt effekt affiş</P>"},
        {"<p>bir&nbsp;iki&#8239;üç&#x2011;dört</p>", "<P>bir iki üç-dört</P>"},
        {"<p>a &lt; b &amp; c &hellip; &copy; &bilinmez; d & e</p>",
         "<P>a &lt; b &amp; c … © &amp;bilinmez; d &amp; e</P>"},
        {"<p>İSTANBUL ışık IĞDIR</p>", "<P>İSTANBUL ışık IĞDIR</P>"},
        {"<p>می\xE2\x80\x8Cخواهم</p>", "<P>می\xE2\x80\x8Cخواهم</P>"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(text(one.body), one.expected.toStdString()) << one.body.toStdString();
}

TEST_F(BookTexts, TagsDoNotSplitWords) {
    const struct {
        QByteArray body, expected;
    } cases[] = {
        {"<p><span>ki</span>tap <span class=\"d\">K</span>apı</p>", "<P>kitap Kapı</P>"},
        {"<p><b>ki</b>tap ve <em>Nutuk</em>’un <i>adı</i></p>",
         "<P><B>kitap</B> ve <em>Nutuk'un</em> <i>adı</i></P>"},
        {"<p>ki<b>tap okumak</b> güzel</p>", "<P>kitap <B>okumak</B> güzel</P>"},
        {"<p>ki<!-- x -->tap de<wbr/>mek</p>", "<P>kitap demek</P>"},
        {"<p>H<sub>2</sub>O, döndü<sup>1</sup> ve <a href=\"#y\" id=\"y\">bağ</a></p>",
         "<P>H<sub>2</sub>O, döndü<sup>1</sup> ve <a id=\"y0-1\"></a><a href=\"#y0-1\">bağ</a></P>"},
        {"<p>bir<br/>iki</p><div>üç<div>dört</div>beş</div>",
         "<P>bir<br>iki</P><P>üç</P><P>dört</P><P>beş</P>"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(text(one.body), one.expected.toStdString()) << one.body.toStdString();
}

TEST_F(BookTexts, WhatCarriesReadingStaysAndTheRestGoes) {
    const struct {
        QByteArray body, expected;
    } cases[] = {
        {"<h2 style=\"x\" onclick=\"y()\">Ad</h2><script>kötü()</script><style>p{}</style><p "
         "class=\"c\">Söz</p>",
         "<h2>Ad</h2><P>Söz</P>"},
        {"<ul><li>bir</li><li><p>iki</p></li></ul><ol start=\"3\"><li>üç</li></ol>",
         "<ul><li>bir</li><li><P>iki</P></li></ul><ol start=\"3\"><li>üç</li></ol>"},
        {"<table class=\"t\"><tr><td colspan=\"2\" onload=\"x\">a</td><td></td></tr></table>",
         "<table border=\"1\"><tr><td colspan=\"2\">a</td><td></td></tr></table>"},
        {"<blockquote>alıntı</blockquote><pre>bir\n  iki</pre>",
         "<blockquote><P>alıntı</P></blockquote><pre>bir\n  iki</pre>"},
        {"<p><a href=\"http://ornek.tr/x\">site</a> <a href=\"https://ornek.tr/\">ornek.tr</a> <a "
         "href=\"javascript:x()\">y</a></p>",
         "<P>site (http://ornek.tr/x) ornek.tr y</P>"},
        {"<div dir=\"rtl\"><p>سلام</p></div><p>son</p>", "<div dir=\"rtl\"><P>سلام</P></div><P>son</P>"},
        {"<p><ruby>漢<rt>kan</rt></ruby><audio>ses yok</audio><noscript>betik yok</noscript> son</p>",
         "<P>漢 son</P>"},
        {"<p><q>söz</q></p><p> </p><p>&nbsp;</p>", "<P>&quot;söz&quot;</P>"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(text(one.body), one.expected.toStdString()) << one.body.toStdString();
}

TEST_F(BookTexts, CodePagesAndBrokenMarkupAreRead) {
    const auto whole = [](const char* declaration, const QByteArray& body) {
        return QByteArray(declaration) + "<html><head><title>x</title></head><body>" + body +
               "</body></html>";
    };
    QByteArray wide("\xFF\xFE");
    for (const QChar unit : QString::fromUtf8(whole("", "<p>ığdır</p>"))) {
        wide += static_cast<char>(unit.unicode() & 0xFF);
        wide += static_cast<char>(unit.unicode() >> 8);
    }
    const struct {
        QByteArray page, expected;
    } cases[] = {
        {wide, "<P>ığdır</P>"},
        {whole("<?xml version=\"1.0\" encoding=\"iso-8859-9\"?>",
               "<p>\xFD\xF0"
               "d\xFDr</p>"),
         "<P>ığdır</P>"},
        {whole("",
               "<p>\xFD\xF0"
               "d\xFDr</p>"),
         "<P>ığdır</P>"},
        {whole("<!DOCTYPE html [<!ENTITY ad \"Işık\">]>", "<p>&ad;</p>"), "<P>Işık</P>"},
        {whole("", "<p>kapanmayan <b>kalın<p>ikinci &amp; son"),
         "<P>kapanmayan <B>kalın</B></P><P>ikinci &amp; son</P>"},
    };
    for (const auto& one : cases) {
        Epub book{{{"a.xhtml", {}, {}, one.page}}, "<ol><li><a href=\"a.xhtml\">Başlık</a></li></ol>"};
        EXPECT_EQ(read(book).text(), one.expected.toStdString());
    }
}

// A page with every difficulty at once: no word may be missing, whatever happens to its tags.
TEST_F(BookTexts, EveryWordComesOut) {
    QByteArray body, expected;
    int number = 0;
    const auto word = [&] { return "kelime" + QByteArray::number(++number) + "x "; };
    for (const char* wrap :
         {"%", "<p>%", "<p>%</p>", "<div>%<p>%</p>%</div>", "<ul><li>%<ul><li>%</li></ul>%</li></ul>",
          "<table><tr><td>%<p>%</p>%</td><th>%</th></tr></table>", "<h1>%<div>%</div>%</h1>",
          "<p>%<blockquote>%</blockquote>%</p>", "<dl><dt>%</dt><dd>%<p>%</p></dd></dl>", "<i>%<p>%</p>%</i>",
          "<a href=\"#q\">%<p>%</p></a>%", "<figure>%<figcaption>%</figcaption></figure>", "<pre>%\n%</pre>%",
          "<tr>%</tr>", "<li>%</li>", "<unknown>%<p>%</p></unknown>", "<center>%<font>%</font></center>",
          "<![CDATA[ % ]]>"}) {
        QByteArray piece(wrap);
        while (piece.contains('%')) {
            const QByteArray one = word();
            expected += one;
            piece.replace(piece.indexOf('%'), 1, one);
        }
        body += piece;
    }
    const ReaderRun run =
        read({{{"a.xhtml", body}, {"b.xhtml", body}}, "<ol><li><a href=\"a.xhtml\">Başlık</a></li></ol>"});
    QString all = QString::fromStdString(run.topics());
    all.replace(QRegularExpression(u"<[^>]*>"_s), u" "_s);
    const QStringList found = all.simplified().split(u' ');
    for (const QByteArray& one : expected.split(' '))
        if (!one.isEmpty()) {
            EXPECT_EQ(found.count(QString::fromLatin1(one)), 2) << one.toStdString();
        }
}

}  // namespace
}  // namespace lirovan::test
