// What the book reader hands over, and what the program makes of readers that misbehave.
#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <QThread>

#include "platform/core/books/book_markup.h"
#include "platform/core/books/picture_check.h"
#include "support/book_lines.h"

namespace lirovan::platform {
namespace {

using namespace lirovan::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

const QByteArray Head = headLine("Deniz", "Ayşe Kaya", "urn:1");
const QByteArray Topic = topicLine(0, "Giriş", "<P>Su akar.</P>");

std::string message(const Result<BookContent>& book) {
    return book ? std::string() : book.error().message.toStdString();
}

}  // namespace

TEST(BookMarkup, HoldsNothingButReading) {
    const struct {
        QStringView html;
        bool good;
    } cases[] = {
        {u"<P>a<br>b <I>c</I></P><table><tr><td colspan=\"2\">d</td></tr></table>", true},
        {u"<P id=\"y-1\"><a href=\"konu:3#y_2\">a</a><a href=\"#y-1\">b</a><IMG src=\"resim:0\" "
         u"alt=\"x\"></P>",
         true},
        {u"<script>a</script>", false},
        {u"<P onclick=\"a\">a</P>", false},
        {u"<P style=\"a\">a</P>", false},
        {u"<P class=a>a</P>", false},
        {u"<P>a", false},
        {u"<b><i>a</b></i>", false},
        {u"</P>", false},
        {u"<P>1 < 2</P>", false},
        {u"<!-- a -->", false},
        {u"<a href=\"http://a.example\">a</a>", false},
        {u"<a href=\"javascript:a\">a</a>", false},
        {u"<a href=\"konu:03\">a</a>", false},
        {u"<a href=\"konu:3#a b\">a</a>", false},
        {u"<img src=\"konu:3\">", false},
        {u"<P src=\"resim:3\">a</P>", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(!bookMarkupFault(c.html), c.good) << c.html.toString().toStdString();
}

TEST(BookMarkup, RewritesAddressesAndDropsThoseThatLeadNowhere) {
    const auto plusTen = [](const BookAddress& old) -> std::optional<BookAddress> {
        if (old.number == 9) return std::nullopt;
        BookAddress fresh = old;
        if (fresh.number >= 0) fresh.number += 10;
        return fresh;
    };
    EXPECT_EQ(withAddresses(
                  u"<P><a title=\"t\" href=\"konu:1#y\">a</a><a href=\"konu:9\" id=\"k\">b</a>"
                  u"<img alt=\"q\" src=\"resim:9\"><img src=\"resim:2\" alt=\"p\"><a href=\"#y\">c</a></P>",
                  plusTen)
                  .toStdString(),
              "<P><a title=\"t\" href=\"konu:11#y\">a</a><a id=\"k\">b</a><img src=\"resim:12\" alt=\"p\">"
              "<a href=\"#y\">c</a></P>");
}

TEST(Pictures, AreWhatTheySay) {
    const QByteArray svg = "<svg xmlns='http://www.w3.org/2000/svg' xmlns:x='http://www.w3.org/1999/xlink'>";
    const QByteArray png = QByteArray("\x89PNG\r\n\x1a\n") + QByteArray::fromHex("0000000d") + "IHDR";
    const struct {
        QByteArray bytes;
        QStringView type;
        bool good;
    } cases[] = {
        {tinyGif(), u"image/gif", true},
        {tinyGif(), u"image/png", false},
        {png + QByteArray::fromHex("0000001000000010"), u"image/png", true},
        {png + QByteArray::fromHex("0000ffff0000ffff"), u"image/png", false},
        {png + QByteArray::fromHex("0000000000000010"), u"image/png", false},
        {QByteArray::fromHex("ffd8ffe000040000ffc0000b080010002001011100"), u"image/jpeg", true},
        {QByteArray::fromHex("ffd8ffe0000400"), u"image/jpeg", false},
        {svg + "<rect fill='url(#g)'/><use x:href='#a'/></svg>", u"image/svg+xml", true},
        {svg + "<script/></svg>", u"image/svg+xml", false},
        {svg + "<g onload='a'/></svg>", u"image/svg+xml", false},
        {svg + "<image x:href='http://a.example/b'/></svg>", u"image/svg+xml", false},
        {svg + "<style>a{background:url(//a.example)}</style></svg>", u"image/svg+xml", false},
        {svg + "<foreignObject/></svg>", u"image/svg+xml", false},
        {"<!DOCTYPE svg [<!ENTITY a 'b'>]>" + svg + "&a;</svg>", u"image/svg+xml", false},
        {svg + "<g>", u"image/svg+xml", false},
        {"<html/>", u"image/svg+xml", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(!pictureFault(c.bytes, c.type), c.good)
            << c.bytes.toStdString() << c.type.toString().toStdString();
}

TEST(ReadBook, TakesOverABookAndKeepsItOutOfMemory) {
    FakeReader reader;
    const auto book =
        reader.read(bookLine("'tur':'ilerleme','yapilan':1,'toplam':2") + Head + pictureLine(0) + Topic +
                    topicLine(1, "Bölüm", "", -1, 0) +
                    topicLine(2, "Alt", "<P><a href='konu:0'>x</a><img src='resim:0'></P>", 1, 1) +
                    bookLine("'tur':'atlanan','ad':'kapak.xhtml','neden':'kapak'") + doneLine(3, 1));
    ASSERT_TRUE(book) << message(book);
    EXPECT_EQ(book->title(), u"Deniz");
    EXPECT_EQ(book->authorName(), u"Ayşe Kaya");
    ASSERT_EQ(book->outline().size(), 3u);
    EXPECT_FALSE(book->outline()[1].isTopic());
    EXPECT_EQ(book->outline()[2].pictures, std::vector<qint64>{0});
    EXPECT_EQ(book->text(0).value(), u"<P>Su akar.</P>");
    EXPECT_EQ(book->picture(0).value(), tinyGif());
    EXPECT_EQ(book->skipped().at(0).reason, u"kapak");
}

TEST(ReadBook, BelievesNoLineThatIsNotAsItShouldBe) {
    const QByteArray done = doneLine(1);
    const struct {
        QByteArray lines;
        const char* message;
    } cases[] = {
        {"", "bitirmeden"},
        {Head + Topic, "bitirmeden"},
        {Topic + done, "konu sırası"},
        {Head + Head + Topic + done, "ikinci kitap"},
        {Head + done, "sayılar"},
        {Head + doneLine(0), "metin yok"},
        {Head + topicLine(0, "Bölüm", "") + done, "metin yok"},
        {Head + topicLine(1, "Giriş", "<P>a</P>") + done, "konu sırası"},
        {Head + topicLine(0, "Giriş", "<P>a</P>", 0) + done, "ust"},
        {Head + topicLine(0, "Giriş", "<P>a</P>", -1, 1) + done, "derinli"},
        {Head + topicLine(0, " ", "<P>a</P>") + done, "baslik"},
        {Head + topicLine(0, "G", "a") + done, "metin"},
        {Head + topicLine(0, "G", "<P>\\u0000</P>") + done, "metin"},
        {Head + topicLine(0, "G", "<P>\\ud800</P>") + done, "metin"},
        {Head + topicLine(0, "G", "<script></script>") + done, "script"},
        {Head + topicLine(0, "G", "<P><a href='konu:1'>a</a></P>") + done, "olmayan konu"},
        {Head + topicLine(0, "G", "<P><img src='resim:0'></P>") + done, "olmayan resim"},
        {Head + pictureLine(0, "GIF") + Topic + doneLine(1, 1), "türünde"},
        {Head + pictureLine(0, tinyGif(), "image/bmp") + Topic + doneLine(1, 1), "bicim"},
        {Head + Topic + done + Topic, "son satır"},
        {Head + "x\n" + Topic + done, "JSON"},
        {Head + bookLine("'tur':'ilerleme','yapilan':-1,'toplam':2") + Topic + done, "yapilan"},
        {Head + bookLine("'tur':'baska'") + Topic + done, "tur"},
        {QByteArray(Head).replace("aaaa", "zzzz") + Topic + done, "ozet"},
        {QByteArray(Head).replace("\"aut\"", "7") + Topic + done, "yazarlar"},
        {bookLine("'tur':'hata','metin':'Bu dosya bir EPUB değil.'"), "Bu dosya bir EPUB değil."},
    };
    FakeReader reader;
    for (const auto& c : cases)
        EXPECT_NE(message(reader.read(c.lines)).find(c.message), std::string::npos)
            << c.lines.toStdString() << message(reader.read(c.lines));
}

TEST(ReadBook, OutlivesEveryReader) {
    const QByteArray all = "cat \"$1\"; ";
    const struct {
        QByteArray script;
        const char* message;
    } cases[] = {
        {all + "kill -SEGV $$", "çöktü"},
        {all + "exit 3", "durum 3"},
        {"sleep 60", "çok uzun sürdü"},
        {"while :; do echo '{\"tur\":\"ilerleme\",\"yapilan\":1,\"toplam\":0}'; done", "çok uzun sürdü"},
        {"exec head -c 80000000 /dev/zero", "çok uzun"},
    };
    for (const auto& c : cases) {
        FakeReader reader(c.script);
        reader.options.silence = 1500ms;
        reader.options.longest = 3000ms;
        EXPECT_NE(message(reader.read(Head + Topic + doneLine(1))).find(c.message), std::string::npos)
            << c.script.toStdString() << message(reader.read(Head + Topic + doneLine(1)));
    }
    FakeReader missing;
    missing.options.program = u"/yok"_s;
    EXPECT_NE(message(missing.read(Head)).find("başlatılamadı"), std::string::npos);
}

TEST(ReadBook, EndsTheReaderAndWhatItStartedWhenItIsCancelled) {
    FakeReader reader("sh -c 'echo $$ > \"$0.no\"; sleep 60' \"$1\" & wait");
    const QString child = reader.path(u"kitap.epub.no"_s);
    const auto book = reader.read(Head, [&](qint64, qint64) { return !readFile(child).endsWith('\n'); });
    EXPECT_EQ(message(book), "Kitap okunması iptal edildi.");
    const QString status = u"/proc/%1/status"_s.arg(QString::fromLatin1(readFile(child).trimmed()));
    // It dies a moment after it was told to, and may still have to be waited for by somebody.
    const auto lives = [&status] { return QFile::exists(status) && !readFile(status).contains("State:\tZ"); };
    for (const QDeadlineTimer limit(5000); lives() && !limit.hasExpired();) QThread::yieldCurrentThread();
    EXPECT_FALSE(lives());
}

}  // namespace lirovan::platform
