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
    BrowseWindow browse_{{frame_, view_, shown_, library_, file_.appFolder(), search_, {}}};
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
    view_.rect = rect(1, 2, 3, 4);
    browse_.resize();
    EXPECT_EQ(view_.rect, rect(1, 2, 3, 4));
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
    browse_.NodeClick(10);  // the second author has no page of its own
    EXPECT_EQ(pageFile(), "(missing)");
    EXPECT_TRUE(shown_.page.navigated.isEmpty());

    clickTopic(101);
    const QByteArray page = pageFile();
    EXPECT_EQ(shown_.page.navigated, QStringList{file_.folder() + u"\\OKU\\oku.html"_s});
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
    browse_.NodeClick(static_cast<qsizetype>(browse_.nodes().size()) - 1);
    EXPECT_TRUE(shown_.startPage.shown && !shown_.page.shown) << "a book without topics is a book";
}
