#include "browse/topic_page.h"

#include <gtest/gtest.h>

#include "browse/page_layout.h"
#include "support/library_file.h"

using namespace lirovan;
using namespace lirovan::browse;
using namespace Qt::StringLiterals;

namespace {

// Stands for text whose characters do not matter.
QString filler(qsizetype length) {
    return QString(length, u'x');
}

}  // namespace

TEST(TopicPage, IsTheWholePageToTheByte) {
    test::LibraryFile file;
    file.author(3, u"Sabri Işık").book(1, 3, u"YAZ");
    file.topic(9, 1, u" GİRİŞ<br>BİR ", u"<html><P>Şey ∞ <html>&quot;</P><HTML>")
        .script(u"[homehomehomehome]");
    const data::Library library = file.open();
    const platform::AppFolder folder(u"C:\\L"_s);

    const auto page =
        topicPage(library, folder,
                  {data::BookId{1}, data::AuthorId{3}, data::TopicId{9}, u" GİRİŞ<br>BİR "_s, u"Yaz "_s});
    ASSERT_TRUE(page);
    EXPECT_EQ(pageBytes(*page).toStdString(),
              "<html><title> G\xDDR\xDD\xDE<br>B\xDDR </title>"
              "<body topmargin=0 leftmargin=0 rightmargin=0 bottommargin=0 bgcolor=#C0C0C0>"
              "<table bgColor=#FFFFFF border=5 cellSpacing=0 width=100% bordercolor=#000000 cellpadding=11 "
              "align=top>"
              "<tbody>"
              "<tr><td width=100% bgcolor=#000000><table width=100%><tr>"
              "<td width=60%><b><font color=#FFFFFF face=Arial size=3><span >Yaz </span></font></b></td>"
              "<td width=40% align=right><b><font face=Arial size=3 color=#FFFFFF><span>Sabri "
              "I\xFE\xFDk</span></font></b>"
              "</td></tr></table></td></tr>"
              "<tr><td width=100% valign=top><table border=0 width=100%><tr>            "
              "<td width=90% valign=top align=center><big><big><strong> G\xDDR\xDD\xDE<br>B\xDDR "
              "</strong></big></big></td>"
              "<td align=right width=10% valign=top><a href=javascript:window.print();>"
              "<img border=0 src=print.gif width=67 height=17></a></td></tr></table></td></tr>"
              "<tr><td width=75% valign=top ><font face=Arial>"
              "[C:\\L\\OKU\\VQ.htm]<P>\xDE"
              "ey &#8734; &quot;</P><HTML>"
              "</font></td></tr></table></html>\r\n");
}

TEST(TopicPage, LeavesEmptyWhatTheLibraryLacks) {
    test::LibraryFile file;
    file.topic(9, 1, u"BAŞLIK", u"metin");
    const data::Library library = file.open();
    const platform::AppFolder folder(u"/l"_s);
    EXPECT_FALSE(topicPage(library, folder, {data::BookId{1}, data::AuthorId{3}, data::TopicId{8}, {}, {}}));
    const auto page =
        topicPage(library, folder, {data::BookId{1}, data::AuthorId{3}, data::TopicId{9}, {}, {}});
    ASSERT_TRUE(page);
    EXPECT_TRUE(page->contains(u"<span></span></font></b></td></tr>"));
    EXPECT_TRUE(page->contains(u"<font face=Arial>metin</font>"));

    file.execute(u"DROP TABLE tbl_Konu");  // a text that cannot be read is not one that is not there
    const auto unread =
        topicPage(library, folder, {data::BookId{1}, data::AuthorId{3}, data::TopicId{9}, u"BAŞLIK"_s, {}});
    ASSERT_TRUE(unread);
    EXPECT_TRUE(unread->contains(u"BAŞLIK") && unread->contains(u"<font face=Arial></font>"));
}

TEST(TopicPage, GivesBookThirtyTwoANarrowNameCell) {
    PageFrame frame{u"t"_s, u"k"_s, u"y"_s, data::BookId{32}};
    const QString narrow = framedPage(frame, u"c");
    EXPECT_TRUE(narrow.contains(u"<td width=40%><b>"));
    EXPECT_TRUE(narrow.contains(u"<td width=60% align=right>"));
    frame.background = PageFrame::Background::None;
    EXPECT_TRUE(framedPage(frame, u"c").contains(u"bottommargin=0><table"));
}

TEST(ListPart, IsShapedInBookFiveBehindPartOneOnly) {
    const auto content = [](qint64 book, double part) {
        return topicContent(u"S", {data::TopicId{1}, u"<P>a</P>"_s + filler(30), part}, data::BookId{book});
    };
    const QString plain = u"S<P>a</P>"_s + filler(30);
    EXPECT_EQ(content(5, 1), plain);
    EXPECT_EQ(content(5, 0), plain);
    EXPECT_EQ(content(4, 3), plain);
    EXPECT_EQ(content(5, 3),
              u"<ol start=101 style='line-height:200%'>S<li>a</li>"_s + filler(10) + u"</ol><br><br>"_s);
}

TEST(ListPart, CutsTheTail) {
    const auto inList = [](const QString& content) {
        const QString shaped = shapedListPart(content, 4);
        return shaped.mid(39, shaped.size() - 39 - 13);
    };
    // The last paragraph's end within the last 22 characters: cut behind "</P", so that no "</P>" is left to
    // become a list item's end.
    EXPECT_EQ(inList(filler(50) + u"</P>\r\n"_s), filler(50) + u"</P"_s);
    EXPECT_EQ(inList(u"</P>"_s + filler(18)), u"</P"_s);
    EXPECT_EQ(inList(filler(40)), filler(20));
    EXPECT_EQ(inList(filler(22)), filler(2));
    EXPECT_EQ(inList(filler(21)), filler(21));
    EXPECT_EQ(inList({}), QString());
}

TEST(ListPart, PutsTheIntroductionOfPartTwoInFront) {
    // The first paragraph begins at position 3: the introduction has 93 characters, the list goes on at 96.
    const QString content =
        u"ab<P>"_s + QString(84, u'i') + u"</P>"_s + u"12"_s + u"<P>madde</P>"_s + filler(30);
    EXPECT_EQ(shapedListPart(content, 2), u"<ol start=1 style='line-height:200%'><li>ab"_s +
                                              QString(84, u'i') + u"</li><li>madde</li>"_s + filler(10) +
                                              u"</ol><br><br>"_s);
    EXPECT_EQ(shapedListPart(u"kısa"_s, 2),
              u"<ol start=1 style='line-height:200%'><li>kısa</li></ol><br><br>"_s);
}

TEST(ListPart, PutsTheEndOfPartSevenBehind) {
    const QString tail = u"*"_s + QString(258, u'k');
    const QString shaped = shapedListPart(u"<P>m</P>"_s + filler(30) + tail, 7);
    // The character in both places ("*") is cut away with the tail of the list.
    EXPECT_EQ(shaped, u"<ol start=501 style='line-height:200%'><li>m</li>"_s + filler(11) + tail +
                          u"</ol><br><br>"_s);
    EXPECT_EQ(shapedListPart(filler(258), 7),
              u"<ol start=501 style='line-height:200%'>"_s + filler(238) + u"</ol><br><br>"_s);
}
