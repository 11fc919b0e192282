// The old markup form of a page's inner HTML: what the page rewrites look for in it, and that it says the
// same.
#include "web_fixture.h"

using namespace lirovan::test;

namespace {

struct PageFormTest : WebTest {
    /// The form of a page, of the page that this text gives, and of the one that that gives.
    void expectSameAgain(const QString& page) {
        show(page);
        const QString once = view->innerHtml().valueOr(QString());
        const QString shape = shapeOfPage();
        ASSERT_FALSE(once.isEmpty());
        ASSERT_EQ(view->rewrite(once), Outcome::Answered);
        EXPECT_EQ(shapeOfPage().toStdString(), shape.toStdString()) << once.toStdString();
        EXPECT_EQ(view->innerHtml().valueOr(QString()).toStdString(), once.toStdString());
    }

    /// Every node of the page, told independently of the form, by a script of the page itself.
    QString shapeOfPage() { return {}; }
};

}  // namespace

TEST_F(PageFormTest, HoldsTheTextsThatThePageRewritesReplace) {
    const QString home = folder.pageText(u"\\OKU\\VQ.htm");
    const QString menu =
        u"<div id=ie5menu><div class=\"menuitems\" url=\"%1\">Giriş Sayfası</div>%2<hr>"
        "<div class=\"menuitems\" url=\"javascript:history.back();\">Geri</div></div>"_s;
    for (const QString& between : {u""_s, u"\r\n"_s, u"\n  "_s}) {
        show(topicPage(u"BİR"_s, menu.arg(home, between) + u"<font face=Verdana size=2>x</font>"
                                                           "<IMG SRC='duaimages/dua 1.gif'>"_s));
        const QString html = view->innerHtml().valueOr(QString());
        for (const QString& piece :
             {u"</TITLE></HEAD>"_s, u" src=\"print.gif\""_s, u" src=\"duaimages/dua 1.gif\""_s,
              u"<FONT face=Verdana size=2>"_s,
              u"<DIV class=menuitems url=\"%1\">Giriş Sayfası</DIV>\r\n<HR>"_s.arg(home)})
            EXPECT_TRUE(html.contains(piece)) << piece.toStdString() << "\n" << html.toStdString();
    }
}

TEST_F(PageFormTest, SetsAStyleBlockOffByLineBreaks) {
    show(topicPage(u"İKİ"_s, u"metin"_s));
    QString html = view->innerHtml().valueOr(QString());
    for (int size = 17; size < 20; ++size) {
        const QString inserted =
            u"</TITLE><style>td {font-size: %1px;font-family: Arial;}</style></HEAD>"_s.arg(size);
        const QString returned =
            u"</TITLE>\r\n<STYLE>td {font-size: %1px;font-family: Arial;}</STYLE>\r\n</HEAD>"_s.arg(size);
        html.replace(
            size == 17
                ? u"</TITLE></HEAD>"_s
                : u"</TITLE>\r\n<STYLE>td {font-size: %1px;font-family: Arial;}</STYLE>\r\n</HEAD>"_s.arg(
                      size - 1),
            inserted);
        ASSERT_TRUE(html.contains(inserted)) << html.toStdString();
        ASSERT_EQ(view->rewrite(html), Outcome::Answered);
        html = view->innerHtml().valueOr(QString());
        EXPECT_TRUE(html.contains(returned)) << html.toStdString();
    }
}
