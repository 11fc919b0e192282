// A place on a page is found again by what is read there.
#include "web_fixture.h"

using namespace lirovan::test;

namespace {

// Paragraphs that begin alike, so that a place needs its surroundings, with tags inside the words.
QString longText(int paragraphs) {
    QString text;
    for (int i = 0; i < paragraphs; ++i)
        text +=
            u"<p>Irmak boyunda <b>yürü</b>yenler sabahı bekler, kuşlar da öyle. Sayfa %1&nbsp;satırı biter; "
            "ardından gelen cümle uzundur ki satır bölünsün ve yer yine bulunsun, nerede olursa olsun.</p>"_s
                .arg(i);
    return text;
}

struct PagePlacesTest : WebTest {
    PagePlace placeNow() { return view->place(false).valueOr({}); }
};

}  // namespace

TEST_F(PagePlacesTest, HoldAfterTheWidthTheZoomAndTheTypeSizeChanged) {
    show(topicPage(u"Konu"_s, longText(90)));
    EXPECT_TRUE(placeNow().atTop);
    for (const int pixels : {700, 2900, 4321}) {
        view->resize(700, 500);
        view->setZoom(1);
        show(topicPage(u"Konu"_s, longText(90)));
        view->setScrollTop(pixels);
        const PagePlace place = placeNow();
        EXPECT_FALSE(place.atTop);
        EXPECT_GE(place.passage.size(), 100);
        EXPECT_EQ(view->goTo(place, false).value, true);
        EXPECT_NEAR(view->scrollTop().valueOr(0), pixels, 2) << "nothing has changed";
        view->resize(1100, 400);
        view->setZoom(1.4);
        show(topicPage(u"Konu"_s, u"<span style='font-size:24px'>"_s + longText(90) + u"</span>"_s));
        EXPECT_EQ(view->goTo(place, false).value, true);
        // The line may begin a few words earlier or later.
        const QString text = withoutBlanks(shown());
        EXPECT_NEAR(findPlace(text, placeNow()), findPlace(text, place), 90) << place.passage.toStdString();
    }
}

TEST_F(PagePlacesTest, TellEqualPassagesApartAndComeNearWhereTheTextIsGone) {
    const QString refrain = u"<p>Nakarat hep aynı söyler, her seferinde aynı sözleri.</p>"_s;
    QString song;
    for (int i = 0; i < 40; ++i) song += u"<p style='height:90px'>kıta %1</p>"_s.arg(i) + refrain;
    show(topicPage(u"Konu"_s, song));
    view->setScrollTop(3000);
    const PagePlace place = placeNow();
    view->setScrollTop(0);
    EXPECT_EQ(view->goTo(place, false).value, true);
    EXPECT_NEAR(view->scrollTop().valueOr(0), 3000, 2);

    PagePlace gone = place;
    gone.passage = u"bu sözler bu sayfada hiçbir yerde yazmaz"_s;
    view->setScrollTop(0);
    EXPECT_EQ(view->goTo(gone, false).value, false);
    EXPECT_NEAR(view->scrollTop().valueOr(0), 3000, 60);
}

TEST_F(PagePlacesTest, OfASelectionIsSelectedAgainInAnotherPageOfTheText) {
    show(topicPage(u"Konu"_s, longText(30)));
    EXPECT_FALSE(view->place(true)) << "nothing is selected";
    inPage(
        u"(() => { const p = document.querySelectorAll('p')[20];"
        "getSelection().setBaseAndExtent(p.firstChild, 6, p.lastChild, 40); return ''; })()"_s);
    ASSERT_TRUE(until([&] { return view->hasSelection(); }));
    const auto place = view->place(true);
    ASSERT_TRUE(place);
    EXPECT_TRUE(place.value->passage.startsWith(u"boyunda yürüyenler sabahı"_s))
        << place.value->passage.toStdString();

    // The same text with its hits marked.
    QString marked = longText(30);
    marked.replace(u"sabahı"_s, hit(0, u"sabahı"_s));
    show(topicPage(u"Konu"_s, marked));
    EXPECT_EQ(view->goTo(*place.value, true).value, true);
    ASSERT_TRUE(until([&] { return view->hasSelection(); }));
    EXPECT_EQ(withoutBlanks(view->selectedText()), withoutBlanks(place.value->passage));
    EXPECT_GT(view->scrollTop().valueOr(0), 500);
}

TEST_F(PagePlacesTest, ABusyPageIsNotWaitedFor) {
    show(topicPage(u"Konu"_s, longText(30)));
    page()->runJavaScript(u"(function(){ const t = Date.now(); while (Date.now() - t < 1200); })()"_s);
    QElapsedTimer time;
    time.start();
    EXPECT_FALSE(view->place(false));
    EXPECT_LT(time.elapsed(), 700);
    EXPECT_TRUE(until([&] { return bool(view->place(false)); }))
        << "it is asked again later, and was not given up";
}

TEST(PagePlace, StandsInATextWithoutItsHeading) {
    PagePlace place;
    place.passage = u"Başlık Metnin ilk sözleri burada durur"_s;
    EXPECT_GE(findPlace(withoutBlanks(u"Giriş. Metnin ilk sözleri burada durur."_s), place), 0);
    EXPECT_EQ(findPlace(withoutBlanks(u"Giriş. Metnin son sözleri burada durmaz."_s), place), -1);
    place.before = u"Giriş."_s;
    place.passage = u"Metnin ilk"_s;
    EXPECT_EQ(findPlace(withoutBlanks(u"Metnin ilk. Giriş. Metnin ilk"_s), place), 16);
    EXPECT_EQ(placeFromJson(placeJson(place)), place);
    for (const char* bad : {"", "[]", "{", "\"x\""}) EXPECT_EQ(placeFromJson(bad), std::nullopt);
}
