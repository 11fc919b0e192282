// Finding on real pages: what is found, that it is marked and gone to, and that the page stays what it is.
#include "web_fixture.h"

using namespace lirovan::test;

namespace {

struct PageFindTest : WebTest {
    int count = -1, current = -1;
    bool complete = false;

    void SetUp() override {
        WebTest::SetUp();
        QObject::connect(view.get(), &WebView::foundChanged, view.get(),
                         [this](int all, int now, bool whole) {
                             count = all;
                             current = now;
                             complete = whole;
                         });
    }
    /// «current/count» once the whole page was looked through.
    QString found(const QString& query) {
        complete = false;
        view->findOnPage(query);
        EXPECT_TRUE(until([this] { return complete; }));
        return u"%1/%2"_s.arg(current).arg(count);
    }
    /// What is marked; the highlights are the engine's, in reach of any script.
    QString marked(const QString& name) {
        return inPage(
            uR"(Array.from(CSS.highlights.get('%1') || []).map(r => { const l = document.createRange();
            l.setStart(r.startContainer, r.startOffset); l.setEnd(r.endContainer, r.endOffset);
            return l.toString(); }).join('|'))"_s.arg(name));
    }
};

const QString Far = u"<p style='height:3000px;margin:0'></p>"_s;

}  // namespace

TEST_F(PageFindTest, FindsAcrossTagsButNotAcrossParagraphs) {
    show(topicPage(u"Başlık"_s,
                   u"<p>Kur'ân ve <b>ku</b>ran</p><p>ku</p>ran<br>ku<br>ran "
                   "<style>kuran</style><div id=menu style='display:none'>kuran</div>"_s));
    const QString before = html();
    EXPECT_EQ(found(u"KURAN"_s), u"1/2");
    EXPECT_EQ(marked(u"lirovan-bulunan"_s), u"Kur'ân|kuran");
    EXPECT_EQ(marked(u"lirovan-simdiki"_s), u"Kur'ân");
    EXPECT_EQ(html(), before);
    EXPECT_EQ(found(u"yok"_s), u"0/0");
    EXPECT_EQ(marked(u"lirovan-bulunan"_s), u"");
}

TEST_F(PageFindTest, StartsWhereThePageStandsAndGoesRound) {
    show(topicPage(u"T"_s, u"bir"_s + Far + u"iki bir"_s + Far + u"bir"_s + Far));
    ASSERT_EQ(view->setScrollTop(1000), Outcome::Answered);
    EXPECT_EQ(found(u"bir"_s), u"2/3");
    EXPECT_NEAR(view->scrollTop().valueOr(0), 2900, 400);
    view->stepFound(1);
    view->stepFound(1);
    EXPECT_EQ(current, 1);
    EXPECT_TRUE(until([this] { return view->scrollTop().valueOr(9) < 1; }));
    view->stepFound(-1);
    EXPECT_EQ(current, 3);
    // The next page is looked through, too.
    complete = false;
    show(topicPage(u"T"_s, u"bir bir"_s));
    EXPECT_TRUE(until([this] { return complete; }));
    EXPECT_EQ(count, 2);
    view->findOnPage({});
    EXPECT_EQ(marked(u"lirovan-bulunan"_s), u"");
}

TEST_F(PageFindTest, LooksThroughLongPagesInPieces) {
    // Longer than two pieces, in one paragraph and in many.
    const QString words = u"söz "_s.repeated(20'000);
    show(topicPage(u"T"_s,
                   u"<p>"_s + words.repeated(5) + u"</p>"_s + (u"<p>"_s + words + u"</p>"_s).repeated(3)));
    EXPECT_EQ(found(u"söz söz"_s), u"1/%1"_s.arg(50'000 + 3 * 10'000));
}
