// The browse window and the shared content window: places, commands, and what a click on the tree shows.
#include <gtest/gtest.h>

#include <climits>

#include "browse/browse_window.h"
#include "browse/content_window.h"
#include "browse/page_file.h"
#include "browse/window_places.h"
#include "support/fake_windows.h"
#include "support/files.h"
#include "support/library_file.h"
#include "support/user_places.h"

using namespace lirovan;
using namespace lirovan::browse;
using namespace Qt::StringLiterals;
using platform::Twips;
using platform::TwipsRect;

namespace {

constexpr TwipsRect rect(double left, double top, double width, double height) {
    return {Twips{left}, Twips{top}, Twips{width}, Twips{height}};
}

class WindowsTest : public testing::Test {
  protected:
    WindowsTest() { browse_.load({}); }

    void clickTopic(qint64 topic) {
        const auto& nodes = browse_.nodes();
        const auto same = [topic](const TreeNode& node) { return node.topic == data::TopicId{topic}; };
        browse_.NodeClick(std::find_if(nodes.begin(), nodes.end(), same) - nodes.begin());
    }

    QByteArray pageFile() const { return test::readFile(file_.filePath(u"OKU/oku.html"_s)); }

    test::LibraryFile file_ = test::smallLibrary();
    data::Library library_ = file_.open();
    test::FakeMainFrame frame_;
    test::FakeBrowseView view_;
    test::FakeContentView shown_;
    SearchTabState search_;
    PageCommands page_{frame_};
    BrowseWindow browse_{{frame_, view_, shown_, library_, file_.appFolder(), search_, page_, {}}};
    ContentWindow content_{frame_, shown_, page_, platform::AppFolder(u"/l"_s)};
};

}  // namespace

TEST_F(WindowsTest, StandSideBySide) {
    const TwipsRect browse = rect(0, 30, 8000, 10470);
    content_.load(browse, true);
    EXPECT_EQ(shown_.rect, rect(8010, 0, 11790, 10470));
    EXPECT_EQ(extraPlaceAtLoad(browse, true, Twips{20000}, Twips{12000}),
              rect(20000 / 2.53, 0, 20000 / 1.69, 10470));

    view_.rect = rect(50, 60, 4815, 1);
    browse_.resize();
    EXPECT_EQ(view_.rect, rect(0, 0, 4815, 10470));
    EXPECT_EQ(shown_.rect, rect(4815, 0, 14975, 10470));
    for (bool test::FakeContentView::*state :
         {&test::FakeContentView::minimized, &test::FakeContentView::maximized}) {
        shown_.*state = true;
        shown_.rect = rect(1, 2, 3, 4);
        content_.resize();
        EXPECT_EQ(shown_.rect, rect(1, 2, 3, 4)) << "not in the normal state";
        shown_.*state = false;
    }
    content_.resize();
    EXPECT_EQ(shown_.rect, rect(1, 2, 3, 10470));
    content_.unload();
    shown_.rect = view_.rect = {};
    browse_.resize();
    EXPECT_EQ(shown_.rect, TwipsRect{}) << "not there";
    view_.minimized = true;
    view_.rect = rect(1, 2, 3, 4);
    browse_.resize();
    EXPECT_EQ(view_.rect, rect(1, 2, 3, 4));
}

TEST_F(WindowsTest, ABrowseWindowThatIsOpenedAgainLeavesTheMainWindowAlone) {
    EXPECT_TRUE(view_.mainMaximized);
    view_.mainMaximized = false;
    browse_.load({}, Twips{5555});
    EXPECT_EQ(view_.rect, rect(0, 0, 5555, 10470));
    EXPECT_FALSE(view_.mainMaximized);
}

TEST_F(WindowsTest, ThePagesButtonsFollowWhatIsShownWhateverKeepsThemBack) {
    using platform::button::Down, platform::button::New, platform::button::Up, platform::button::Buyult;
    const auto expect = [this](bool visible, bool up, bool down) {
        for (const QStringView key : {New, Up, Down, Buyult})
            EXPECT_EQ(frame_.button(key).visible, visible) << key.toString().toStdString();
        EXPECT_EQ(frame_.button(Up).enabled, up);
        EXPECT_EQ(frame_.button(Down).enabled, down);
    };
    page_.setBooksInFront(false);
    for (const ShownPage plain : {ShownPage::Topic, ShownPage::Summary}) {
        page_.showPageCommands(plain);
        page_.setHitButton(Down, true);
        expect(true, false, false);
    }
    page_.showPageCommands(ShownPage::MarkedPage);
    page_.setHitButton(Down, true);
    expect(true, false, true);
    page_.setWithheld(true);
    EXPECT_FALSE(frame_.button(New).visible || frame_.button(Down).visible);
    browse_.selectTab(Tab::Books);
    page_.setWithheld(false);
    expect(true, false, false);
    browse_.selectTab(Tab::Search);
    expect(true, false, true);

    // Panel 3 comes back with the marked page only.
    search_.showPanel3 = true;
    for (const ShownPage page : {ShownPage::MarkedPage, ShownPage::Topic}) {
        page_.showPageCommands(page);
        browse_.selectTab(Tab::Books);
        browse_.selectTab(Tab::Search);
        EXPECT_EQ(frame_.panelVisible[3], page == ShownPage::MarkedPage);
    }
    content_.unload();
    expect(false, false, false);
    EXPECT_FALSE(frame_.button(New).enabled);
}

TEST_F(WindowsTest, TheStartPageHasNoTopicsNameWhicheverWayItWasReached) {
    clickTopic(101);
    content_.pageLoaded();
    EXPECT_EQ(shown_.title, u"İçerik Penceresi - Giriş ");
    test::writeFile(file_.filePath(u"OKU/VQ.htm"_s), "start");
    shown_.page.navigated += file_.filePath(u"OKU/VQ.htm"_s);  // by the page's own menu
    ContentWindow(frame_, shown_, page_, file_.appFolder()).pageLoaded();
    EXPECT_EQ(shown_.title, u"İçerik Penceresi");
    EXPECT_EQ(page_.shown(), ShownPage::Topic) << "it can be opened in a new window";
}

TEST_F(WindowsTest, TypeStopsShrinkingAtFourPixels) {
    shown_.page.html = u"<HEAD><TITLE>t</TITLE></HEAD>"_s;
    for (int press = 0; press < 20; ++press) content_.ChangeFontSize(-1);
    EXPECT_EQ(frame_.pixels, 4);
    content_.ChangeFontSize(1);
    EXPECT_EQ(frame_.pixels, 5);
    frame_.pixels = 2;  // whoever set it: not larger by making it smaller
    content_.ChangeFontSize(-1);
    EXPECT_EQ(frame_.pixels, 2);
}

TEST_F(WindowsTest, AnotherTypeSizeKeepsThePagesImagesAndAsksForTheHitsAgain) {
    shown_.page.html = u"<HEAD><TITLE>t</TITLE></HEAD><IMG src=\"print.gif\">"_s;
    content_.ChangeFontSize(1);
    EXPECT_TRUE(shown_.page.html.contains(u"13px") && shown_.page.html.contains(u"\"/l\\OKU\\print.gif\""));
    EXPECT_EQ(frame_.reorders, 1);
}

TEST(TypeSize, OfAPageThatDoesNotAnswerStays) {
    struct : test::FakePageView {
        platform::Reply<QString> innerHtml() override { return {platform::Outcome::TimedOut, std::nullopt}; }
    } page;
    page.html = u"metin"_s;
    rewriteWithFontSize(page, 16, 17, nullptr);
    EXPECT_EQ(page.html, u"metin");
}

TEST_F(WindowsTest, ThePageStaysWhenThereIsNoOtherToShow) {
    clickTopic(101);
    const QByteArray page = pageFile();
    EXPECT_EQ(shown_.page.navigated, QStringList{file_.folder() + u"\\OKU\\oku.html"_s});
    file_.execute(u"DELETE FROM tbl_Konu WHERE KonuID=102");
    clickTopic(102);
    EXPECT_EQ(pageFile(), page);
    EXPECT_EQ(shown_.title, u"İçerik Penceresi - Giriş ");
    EXPECT_EQ(shown_.page.navigated.size(), 1);

    ASSERT_TRUE(QDir(file_.filePath(u"OKU"_s)).removeRecursively());
    const test::UserPlaces user(test::UserPlaces::Kind::Shut);
    clickTopic(202);
    EXPECT_EQ(shown_.page.navigated.size(), 2);
    EXPECT_TRUE(shown_.page.notice.startsWith(u"Sayfa dosyası yazılamadı:"));
    EXPECT_EQ(shown_.title, u"İçerik Penceresi - Irmak Boyu ");
}

TEST_F(WindowsTest, ThePageIsWrittenOverWhereNoSecondFileCanStandBesideIt) {
    // The name of a second file would be longer than the system bears.
    QString folder = file_.folder() + u'/' + QString(200, u'x');
    while (folder.size() < PATH_MAX - 220) folder += u'/' + QString(200, u'x');
    folder += u'/' + QString(PATH_MAX - 1 - folder.size() - 1 - sizeof("/OKU/oku.html") + 1, u'y');
    const QString page = folder + u"/OKU/oku.html"_s;
    ASSERT_EQ(page.size(), PATH_MAX - 1);
    test::writeFile(page, "a page that was longer than the new one" + QByteArray(500, 'x'));
    ASSERT_TRUE(writePage(platform::AppFolder(folder), u"kısa"));
    EXPECT_EQ(test::readFile(page), "k\xFDsa\r\n");
}

TEST_F(WindowsTest, TopicsOpenWhateverTheirBooksTitle) {
    file_.author(3, u"Bir").author(4, u"İki").author(5, u"Üç");
    file_.book(61, 3, u"AYNI AD").book(62, 4, u"AYNI AD").book(63, 5, u"ÖNSÖZ<br>GİRİŞ");
    file_.book(64, 5, u"ALİ'NİN").book(65, 5, u"BOŞ");
    for (qint64 book = 61; book <= 64; ++book) file_.topic(book * 10, book, u"KONU", u"metin");
    browse_.load({});
    const std::pair<qint64, QByteArray> authors[] = {
        {610, "Bir"}, {620, "\xDDki"}, {630, "\xDC\xE7"}, {640, "\xDC\xE7"}};
    for (const auto& [topic, author] : authors) {
        clickTopic(topic);
        EXPECT_TRUE(pageFile().contains("<span>" + author + "</span>")) << topic;
    }
    const auto expectStartPage = [this](qsizetype node) {
        clickTopic(610);
        EXPECT_FALSE(shown_.startPage.shown);
        browse_.NodeClick(node);
        EXPECT_TRUE(shown_.startPage.shown && !shown_.page.shown) << node;
        EXPECT_EQ(page_.shown(), ShownPage::None);
    };
    for (const TreeNode& node : browse_.nodes())
        if (node.kind != TreeNode::Kind::Topic) expectStartPage(&node - browse_.nodes().data());
}
