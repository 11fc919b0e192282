// A topic's page: its text to the byte, its lists, its type size, its file.
#include "browse/topic_page.h"

#include <gtest/gtest.h>

#include "browse/font_size.h"
#include "browse/page_file.h"
#include "browse/page_layout.h"
#include "platform/core/user_places.h"
#include "support/files.h"
#include "support/full_disk.h"
#include "support/library_file.h"
#include "support/user_places.h"

using namespace lirovan;
using namespace lirovan::browse;
using namespace Qt::StringLiterals;

namespace {

// Stands for text whose characters do not matter.
QString filler(qsizetype length) {
    return QString(length, u'x');
}

TopicRequest request(qint64 topic, const QString& title = {}, const QString& book = {}) {
    return {data::BookId{1}, data::AuthorId{3}, data::TopicId{topic}, title, book};
}

}  // namespace

TEST(TopicPage, IsTheWholePageToTheByte) {
    test::LibraryFile file;
    file.author(3, u"Sabri Işık").book(1, 3, u"YAZ");
    file.topic(9, 1, u" GİRİŞ<br>BİR ", u"<html><P>Şey ∞ <html>&quot;</P><HTML>")
        .script(u"[homehomehomehome]");
    const auto page =
        topicPage(file.open(), platform::AppFolder(u"C:\\L"_s), request(9, u" GİRİŞ<br>BİR "_s, u"Yaz "_s));
    ASSERT_TRUE(page);
    EXPECT_EQ(pageBytes(*page).toStdString(),
              "<html><title> G\xDDR\xDD\xDE<br>B\xDDR </title>"
              "<body topmargin=0 leftmargin=0 rightmargin=0 bottommargin=0 bgcolor=#C0C0C0>"
              "<table bgColor=#FFFFFF border=5 cellSpacing=0 width=100% bordercolor=#000000 cellpadding=11 "
              "align=top><tbody>"
              "<tr><td width=100% bgcolor=#000000><table width=100%><tr>"
              "<td width=60%><b><font color=#FFFFFF face=Arial size=3><span >Yaz </span></font></b></td>"
              "<td width=40% align=right><b><font face=Arial size=3 color=#FFFFFF><span>Sabri "
              "I\xFE\xFDk</span></font></b></td></tr></table></td></tr>"
              "<tr><td width=100% valign=top><table border=0 width=100%><tr>            "
              "<td width=90% valign=top align=center><big><big><strong> G\xDDR\xDD\xDE<br>B\xDDR "
              "</strong></big></big></td>"
              "<td align=right width=10% valign=top><a href=javascript:window.print();>"
              "<img border=0 src=print.gif width=67 height=17></a></td></tr></table></td></tr>"
              "<tr><td width=75% valign=top ><font face=Arial>"
              "[C:\\L\\OKU\\VQ.htm]<P>\xDE"
              "ey &#8734; &quot;</P><HTML></font></td></tr></table></html>\r\n");
}

TEST(TopicPage, LeavesEmptyWhatTheLibraryLacks) {
    test::LibraryFile file;
    file.topic(9, 1, u"BAŞLIK", u"metin");
    const data::Library library = file.open();
    const platform::AppFolder folder(u"/l"_s);
    EXPECT_FALSE(topicPage(library, folder, request(8)));
    const QString page = topicPage(library, folder, request(9)).value_or(QString());
    EXPECT_TRUE(page.contains(u"<span></span></font></b></td></tr>"));
    EXPECT_TRUE(page.contains(u"<font face=Arial>metin</font>"));

    file.execute(u"DROP TABLE tbl_Konu");  // a text that cannot be read is not one that is not there
    const QString unread = topicPage(library, folder, request(9, u"BAŞLIK"_s)).value_or(QString());
    EXPECT_TRUE(unread.contains(u"BAŞLIK") && unread.contains(u"<font face=Arial></font>"));
}

TEST(TopicPage, GivesBookThirtyTwoANarrowNameCell) {
    PageFrame frame{u"t"_s, u"k"_s, u"y"_s, data::BookId{32}};
    frame.background = PageFrame::Background::None;
    const QString page = framedPage(frame, u"c");
    EXPECT_TRUE(page.contains(u"<td width=40%><b>") && page.contains(u"<td width=60% align=right>"));
    EXPECT_TRUE(page.contains(u"bottommargin=0><table"));
}

TEST(ListPart, IsShapedInBookFiveBehindPartOneOnly) {
    const auto content = [](qint64 book, double part) {
        return topicContent(u"S", {data::TopicId{1}, u"<P>a</P>"_s + filler(30), part}, data::BookId{book});
    };
    const QString plain = u"S<P>a</P>"_s + filler(30);
    EXPECT_EQ(content(5, 1), plain);
    EXPECT_EQ(content(4, 3), plain);
    EXPECT_EQ(content(5, 3),
              u"<ol start=101 style='line-height:200%'>S<li>a</li>"_s + filler(10) + u"</ol><br><br>"_s);
}

TEST(ListPart, CutsTheTailAndMovesWhatIsNoListOutOfIt) {
    // Part 2: the first paragraph begins at position 3, so the introduction has 93 characters.
    const QString introduction(84, u'i');
    // Part 7: the character in both places ("*") is cut away with the tail of the list.
    const QString ending = u"*"_s + QString(258, u'k');
    const struct {
        int part, start;
        QString content, list;
    } cases[] = {
        // The last paragraph's end within the last 22 characters: cut behind "</P", so that no "</P>" is left
        // to become a list item's end.
        {4, 201, filler(50) + u"</P>\r\n"_s, filler(50) + u"</P"_s},
        {4, 201, u"</P>"_s + filler(18), u"</P"_s},
        {4, 201, filler(22), filler(2)},
        {4, 201, filler(21), filler(21)},
        {4, 201, {}, {}},
        {2, 1, u"ab<P>"_s + introduction + u"</P>12<P>madde</P>"_s + filler(30),
         u"<li>ab"_s + introduction + u"</li><li>madde</li>"_s + filler(10)},
        {2, 1, u"kısa"_s, u"<li>kısa</li>"_s},
        {7, 501, u"<P>m</P>"_s + filler(30) + ending, u"<li>m</li>"_s + filler(11) + ending},
        {7, 501, filler(258), filler(238)},
    };
    for (const auto& c : cases)
        EXPECT_EQ(shapedListPart(c.content, c.part),
                  u"<ol start=%1 style='line-height:200%'>"_s.arg(c.start) + c.list + u"</ol><br><br>"_s);
}

TEST(FontSize, InsertsAStyleReplacesItsOwnLaterAndMovesVerdanaTagsPastZero) {
    const QString shown =
        u"<TITLE>t</TITLE>\r\n<STYLE>td {font-size: 17px;font-family: Arial;}</STYLE>\r\n</HEAD>"_s;
    const QString inserted =
        u"<TITLE>t</TITLE><style>td {font-size: %1px;font-family: Arial;}</style></HEAD>"_s;
    const struct {
        int from, to;
        QString before, after;
    } cases[] = {
        {16, 17, u"<TITLE>t</TITLE></HEAD>"_s, inserted.arg(17)},
        {17, 16, shown, inserted.arg(16)},
        {16, 15, shown, shown},  // another size: not the block that was inserted
        {16, 17, u"<FONT face=Verdana size=2>"_s, u"<FONT face=Verdana size=3>"_s},
        {14, 13, u"<FONT face=Verdana size=0>"_s, u"<FONT face=Verdana size=-1>"_s},
        {16, 17, u"<FONT face=Verdana size=4>"_s, u"<FONT face=Verdana size=4>"_s},
        {16, 17, u"<font face=Verdana size=2>"_s, u"<font face=Verdana size=2>"_s},
    };
    for (const auto& c : cases) EXPECT_EQ(withFontSize(c.before, c.from, c.to), c.after);
}

TEST(PageFile, OverwritesThePageWhateverTheCaseOfItsNameAndFailsWithoutHarm) {
    const QTemporaryDir folder;
    const platform::AppFolder app(folder.path());
    std::optional<test::UserPlaces> user(std::in_place);
    EXPECT_EQ(*writePage(app, u"ilk ş"), "ilk \xFE\r\n") << "no OKU";
    EXPECT_EQ(test::readFile(platform::cacheFolder(app) + u"/oku.html"_s), "ilk \xFE\r\n");
    user.emplace(test::UserPlaces::Kind::Shut);
    EXPECT_FALSE(writePage(app, u"x")) << "no place at all";
    const QString file = test::writeFile(folder.filePath(u"oku/OKU.html"_s), "eski ve daha uzun bir sayfa");
    ASSERT_TRUE(writePage(app, u"yeni ş"));
    EXPECT_EQ(test::readFile(file), "yeni \xFE\r\n");
    const QDir pages(folder.filePath(u"oku"_s));
    for (const rlim_t room : {0, 7}) {
        const test::FullDisk full(room);
        EXPECT_FALSE(writePage(app, QString(100, u'x')));
        EXPECT_EQ(test::readFile(file), "yeni \xFE\r\n") << room;
    }
    EXPECT_EQ(pages.entryList(QDir::Files), QStringList{u"OKU.html"_s});

    ASSERT_TRUE(QFile::remove(file) && pages.mkdir(u"oku.html"_s));  // a folder in the file's place
    EXPECT_FALSE(writePage(app, u"x"));
    EXPECT_EQ(pages.entryList(QDir::Files), QStringList());
}
