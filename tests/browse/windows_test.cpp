// The browse window and the shared content window: places, commands, and what a click on the tree shows.
#include <gtest/gtest.h>

#include "browse/browse_window.h"
#include "browse/content_window.h"
#include "browse/window_places.h"
#include "support/fake_windows.h"
#include "support/files.h"
#include "support/library_file.h"

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

    qsizetype nodeOf(qint64 topic) const {
        const auto& nodes = browse_.nodes();
        return std::find_if(nodes.begin(), nodes.end(),
                            [topic](const TreeNode& node) { return node.topic == data::TopicId{topic}; }) -
               nodes.begin();
    }
    void clickTopic(qint64 topic) { browse_.NodeClick(nodeOf(topic)); }

    QByteArray pageFile() const { return test::readFile(file_.filePath(u"OKU/oku.html"_s)); }

    test::LibraryFile file_ = test::smallLibrary();
    data::Library library_ = file_.open();
    test::FakeMainFrame frame_;
    test::FakeBrowseView view_;
    test::FakeContentView shown_;
    SearchTabState search_;
    bool helpShown_ = false;
    BrowseWindow browse_{
        {frame_, view_, shown_, library_, file_.appFolder(), search_, [this] { return helpShown_; }}};
    ContentWindow content_{frame_, shown_, platform::AppFolder(u"/l"_s)};
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
    view_.rect = {};
    browse_.resize();
    EXPECT_EQ(view_.rect, TwipsRect{});
}

TEST_F(WindowsTest, APageThatDoesNotAnswerKeepsItsTypeSize) {
    shown_.page.html = u"<HEAD><TITLE>t</TITLE></HEAD><IMG src=\"print.gif\">"_s;
    const QString before = shown_.page.html;
    shown_.page.outcome = platform::Outcome::TimedOut;
    content_.ChangeFontSize(1);
    EXPECT_EQ(shown_.page.html, before);
    shown_.page.outcome = platform::Outcome::Answered;
    content_.ChangeFontSize(1);
    EXPECT_TRUE(shown_.page.html.contains(u"14px") && shown_.page.html.contains(u"\"/l\\OKU\\print.gif\""));
    EXPECT_EQ(frame_.reorders, 2);
}

TEST_F(WindowsTest, TabsShowWhatBelongsToThem) {
    search_.showPanel3 = true;
    browse_.selectTab(Tab::Search);
    EXPECT_EQ(frame_.panels[1], u"Arama Penceresi - Arama");
    EXPECT_TRUE(frame_.selectorVisible && frame_.panelVisible[3] && view_.searchFocused);
    EXPECT_FALSE(frame_.panelVisible[2]);

    browse_.selectTab(Tab::Books);
    EXPECT_EQ(frame_.panels[1], u"Arama Penceresi - Kitaplar");
    EXPECT_FALSE(frame_.selectorVisible || frame_.panelVisible[3] || frame_.button(u"Up").enabled);
    EXPECT_EQ(view_.tab, Tab::Books);

    view_.searchFocused = false;
    helpShown_ = true;
    browse_.selectTab(Tab::Search);
    EXPECT_FALSE(view_.searchFocused);
}

TEST_F(WindowsTest, NothingMovesWhileASearchRuns) {
    search_ = {true, true, true};
    clickTopic(101);
    EXPECT_EQ(pageFile(), "(missing)");
    EXPECT_EQ(frame_.pixels, 12);
    EXPECT_FALSE(browse_.unload());
    EXPECT_TRUE(frame_.isMenuChecked(u"mnu_Arama") && search_.showPanel2);

    search_.running = false;
    EXPECT_TRUE(browse_.unload());
    EXPECT_FALSE(frame_.isMenuChecked(u"mnu_Arama") || search_.showPanel2 || search_.showPanel3 ||
                 frame_.selectorVisible);
}

TEST_F(WindowsTest, AClickOnATopicShowsItAndOneOnABookTheStartPage) {
    clickTopic(101);
    EXPECT_TRUE(pageFile().startsWith("<html><title>  G\xDDR\xDD\xDE  </title>"));
    EXPECT_EQ(shown_.title, u"İçerik Penceresi - Giriş ");
    EXPECT_EQ(shown_.page.navigated, QStringList{file_.folder() + u"\\OKU\\oku.html"_s});
    EXPECT_TRUE(shown_.page.shown && !shown_.startPage.shown);
    EXPECT_EQ(shown_.shows, 1);
    clickTopic(101);
    EXPECT_EQ(shown_.page.navigated.size(), 2) << "again";

    for (const qsizetype above : {0, 1}) {
        clickTopic(101);
        browse_.NodeClick(above);
        EXPECT_TRUE(shown_.startPage.shown && !shown_.page.shown) << above;
    }
    shown_.loaded = shown_.startPage.shown = false;
    browse_.NodeClick(0);
    EXPECT_FALSE(shown_.startPage.shown) << "closed";
}

TEST_F(WindowsTest, ThePageStaysWhenThereIsNoOtherToShow) {
    browse_.NodeClick(10);  // the second author has no page of its own
    EXPECT_EQ(pageFile(), "(missing)");
    EXPECT_TRUE(shown_.page.navigated.isEmpty());

    clickTopic(101);
    const QByteArray page = pageFile();
    file_.execute(u"DELETE FROM tbl_Konu WHERE KonuID=102");
    clickTopic(102);
    EXPECT_EQ(pageFile(), page);
    EXPECT_EQ(shown_.title, u"İçerik Penceresi - Giriş ");
    EXPECT_EQ(shown_.page.navigated.size(), 1);

    ASSERT_TRUE(QDir(file_.filePath(u"OKU"_s)).removeRecursively());
    clickTopic(202);
    EXPECT_EQ(shown_.page.navigated.size(), 2);
    EXPECT_TRUE(shown_.page.notice.startsWith(u"Sayfa dosyası yazılamadı:"));
    EXPECT_EQ(shown_.title, u"İçerik Penceresi - Irmak Boyu ");
}

TEST_F(WindowsTest, BookIconsChangeWithTheirNodes) {
    browse_.expanded(10);  // the second author
    browse_.expanded(0);
    EXPECT_EQ(view_.images, (QMap<qsizetype, QString>{{10, u"Ac"_s}}));
    browse_.collapsed(10);
    EXPECT_EQ(view_.images[10], u"Lirovan");
}

TEST_F(WindowsTest, TopicsOpenWhateverTheirBooksTitle) {
    file_.author(3, u"Bir").author(4, u"İki").author(5, u"Üç");
    file_.book(61, 3, u"AYNI AD").book(62, 4, u"AYNI AD").book(63, 5, u"ÖNSÖZ<br>GİRİŞ");
    file_.book(64, 5, u"ALİ'NİN").book(65, 5, u"BOŞ");
    for (qint64 book = 61; book <= 64; ++book) file_.topic(book * 10, book, u"KONU", u"metin");
    browse_.load({});
    const struct {
        qint64 topic;
        QByteArray author;
    } cases[] = {{610, "Bir"}, {620, "\xDDki"}, {630, "\xDC\xE7"}, {640, "\xDC\xE7"}};
    for (const auto& c : cases) {
        clickTopic(c.topic);
        EXPECT_TRUE(pageFile().contains("<span>" + c.author + "</span>")) << c.topic;
    }
    browse_.NodeClick(static_cast<qsizetype>(browse_.nodes().size()) - 1);
    EXPECT_TRUE(shown_.startPage.shown && !shown_.page.shown) << "a book without topics is a book";
}
