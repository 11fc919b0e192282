#include "browse/browse_window.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "support/fake_windows.h"
#include "support/library_file.h"

using namespace lirovan;
using namespace lirovan::browse;
using namespace Qt::StringLiterals;
using platform::Twips;
using platform::TwipsRect;

namespace {

class BrowseWindowTest : public testing::Test {
  protected:
    explicit BrowseWindowTest(test::LibraryFile file = test::smallLibrary()) : file_(std::move(file)) {
        window_.load({});
    }

    // The index of the topic's node.
    qsizetype nodeOf(qint64 topic) const {
        for (size_t i = 0; i < window_.nodes().size(); ++i)
            if (window_.nodes()[i].topic == data::TopicId{topic}) return static_cast<qsizetype>(i);
        return -1;
    }

    QString pageFile() const {
        QFile file(file_.filePath(u"OKU/oku.html"_s));
        return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()) : u"(none)"_s;
    }

    bool pageButtonsVisible() const {
        return frame_.button(u"New").visible && frame_.button(u"Up").visible &&
               frame_.button(u"buyult").visible;
    }

    test::LibraryFile file_;
    data::Library library_ = file_.open();
    test::FakeMainFrame frame_;
    test::FakeBrowseView view_;
    test::FakeContentView content_;
    SearchTabState search_;
    bool helpShown_ = false;
    BrowseWindow window_{
        {frame_, view_, content_, library_, file_.appFolder(), search_, [this] { return helpShown_; }}};
};

class TitlesTest : public BrowseWindowTest {
  protected:
    TitlesTest() : BrowseWindowTest(library()) {}
    static test::LibraryFile library() {
        test::LibraryFile file;
        file.author(1, u"Bir").author(2, u"İki").author(3, u"Üç");
        file.book(1, 1, u"AYNI AD")
            .book(2, 2, u"AYNI AD")
            .book(3, 3, u"ÖNSÖZ<br>GİRİŞ")
            .book(4, 3, u"ALİ'NİN")
            .book(5, 3, u"BOŞ");
        for (qint64 book = 1; book <= 4; ++book) file.topic(book * 10, book, u"KONU", u"metin");
        return file;
    }
};

}  // namespace

TEST_F(BrowseWindowTest, LoadsBesideTheMaximizedMainWindow) {
    EXPECT_TRUE(view_.mainMaximized);
    EXPECT_TRUE(frame_.isMenuChecked(u"mnu_Arama"));
    EXPECT_EQ(view_.rect.width, Twips{8000});  // 20000 / 2.5
    EXPECT_EQ(view_.tab, Tab::Books);
    EXPECT_EQ(window_.nodes().size(), 20U);
}

TEST_F(BrowseWindowTest, ResizesTogetherWithTheContentWindow) {
    view_.rect = {Twips{50}, Twips{60}, Twips{4815}, Twips{1}};
    frame_.setMenuChecked(u"mnu_Icerik", true);
    window_.resize();
    EXPECT_EQ(view_.rect, (TwipsRect{Twips{0}, Twips{0}, Twips{4815}, Twips{10470}}));
    EXPECT_EQ(content_.rect, (TwipsRect{Twips{4815}, Twips{0}, Twips{14975}, Twips{10470}}));

    content_.rect = {};
    frame_.setMenuChecked(u"mnu_Icerik", false);
    window_.resize();
    EXPECT_EQ(content_.rect, TwipsRect{});
    view_.minimized = true;
    view_.rect = {};
    window_.resize();
    EXPECT_EQ(view_.rect, TwipsRect{});
}

TEST_F(BrowseWindowTest, DisablesEditCommandsWhenActive) {
    window_.activate();
    EXPECT_EQ(frame_.panels[1], u"Arama Penceresi");
    for (const QStringView key : {u"cut", u"copy", u"paste", u"print"})
        EXPECT_FALSE(frame_.button(key).enabled);
    for (const QStringView item : {u"mnu_Kes", u"mnu_Kopyala", u"mnu_Yapistir"})
        EXPECT_FALSE(frame_.menu(item).enabled);
    EXPECT_FALSE(frame_.menu(u"mnu_Yazdir").visible);
    EXPECT_FALSE(frame_.menu(u"sep2").visible);
}

TEST_F(BrowseWindowTest, SwitchesTabs) {
    search_.showPanel3 = true;
    window_.selectTab(Tab::Search);
    EXPECT_EQ(frame_.panels[1], u"Arama Penceresi - Arama");
    EXPECT_TRUE(frame_.selectorVisible);
    EXPECT_TRUE(frame_.panelVisible[3]);
    EXPECT_FALSE(frame_.panelVisible[2]);
    EXPECT_TRUE(view_.searchFocused);

    window_.selectTab(Tab::Books);
    EXPECT_EQ(frame_.panels[1], u"Arama Penceresi - Kitaplar");
    EXPECT_FALSE(frame_.selectorVisible);
    EXPECT_FALSE(frame_.panelVisible[3]);
    EXPECT_FALSE(frame_.button(u"Up").enabled);
    EXPECT_EQ(view_.tab, Tab::Books);

    view_.searchFocused = false;
    helpShown_ = true;
    window_.selectTab(Tab::Search);
    EXPECT_FALSE(view_.searchFocused);
}

TEST_F(BrowseWindowTest, StaysOpenWhileASearchRuns) {
    search_ = {true, true, true};
    EXPECT_FALSE(window_.unload());
    EXPECT_TRUE(frame_.isMenuChecked(u"mnu_Arama"));
    EXPECT_TRUE(search_.showPanel2);

    search_.running = false;
    EXPECT_TRUE(window_.unload());
    EXPECT_FALSE(frame_.isMenuChecked(u"mnu_Arama"));
    EXPECT_FALSE(search_.showPanel2 || search_.showPanel3 || frame_.selectorVisible);
}

TEST_F(BrowseWindowTest, ShowsTheTopicThatIsClicked) {
    const qsizetype node = nodeOf(101);
    window_.NodeClick(node);
    EXPECT_TRUE(pageFile().startsWith(u"<html><title>  G\u00DDR\u00DD\u00DE  </title>"));
    EXPECT_EQ(content_.title, u"İçerik Penceresi - Giriş ");
    EXPECT_EQ(content_.page.navigated, QStringList{file_.folder() + u"\\OKU\\oku.html"_s});
    EXPECT_TRUE(content_.page.shown && !content_.startPage.shown);
    EXPECT_EQ(content_.shows, 1);
    EXPECT_EQ(view_.images, (QMap<qsizetype, QString>{{node, u"Incele"_s}}));
    EXPECT_EQ(frame_.pixels, 16);
    EXPECT_TRUE(pageButtonsVisible());
    EXPECT_TRUE(frame_.button(u"New").enabled);
    EXPECT_FALSE(frame_.button(u"Up").enabled || frame_.button(u"Down").enabled);
    EXPECT_EQ(frame_.spacer, Twips{15400});

    window_.NodeClick(node);
    EXPECT_EQ(content_.page.navigated.size(), 2);
    EXPECT_EQ(window_.nodes()[static_cast<size_t>(node)].image, u"Incele");
}

TEST_F(BrowseWindowTest, ShowsTheStartPageForTheFirstAuthorAndBooks) {
    for (const qsizetype node : {0, 1}) {
        window_.NodeClick(nodeOf(101));
        window_.NodeClick(node);
        EXPECT_TRUE(content_.startPage.shown && !content_.page.shown) << node;
        EXPECT_FALSE(frame_.button(u"New").visible || frame_.button(u"buyult").visible) << node;
        EXPECT_EQ(frame_.spacer, Twips{16090}) << node;
    }
    content_.loaded = content_.startPage.shown = false;
    window_.NodeClick(0);
    EXPECT_FALSE(content_.startPage.shown);
}

TEST_F(BrowseWindowTest, ShowsNoPageForAnAuthorBehindTheFirst) {
    window_.NodeClick(10);
    EXPECT_EQ(pageFile(), u"(none)");
    EXPECT_TRUE(content_.page.navigated.isEmpty());
    EXPECT_TRUE(pageButtonsVisible());
}

TEST_F(BrowseWindowTest, KeepsThePageWhenTheTopicHasNoText) {
    window_.NodeClick(nodeOf(101));
    const QString page = pageFile();
    file_.execute(u"DELETE FROM tbl_Konu WHERE KonuID=102");
    window_.NodeClick(nodeOf(102));
    EXPECT_EQ(pageFile(), page);
    EXPECT_EQ(content_.title, u"İçerik Penceresi - Giriş ");
    EXPECT_EQ(content_.page.navigated.size(), 1);
}

TEST_F(BrowseWindowTest, SaysOverTheOldPageThatTheNewOneCannotBeWritten) {
    ASSERT_TRUE(QDir(file_.folder()).rmdir(u"OKU"_s));
    window_.NodeClick(nodeOf(101));
    EXPECT_EQ(content_.page.navigated.size(), 1);
    EXPECT_TRUE(content_.page.notice.startsWith(u"Sayfa dosyası yazılamadı:"));
    EXPECT_EQ(content_.title, u"İçerik Penceresi - Giriş ");
}

TEST_F(BrowseWindowTest, LeavesThePageAloneWhileASearchRuns) {
    search_.running = true;
    window_.NodeClick(nodeOf(101));
    EXPECT_EQ(pageFile(), u"(none)");
    EXPECT_EQ(frame_.pixels, 12);
}

TEST_F(BrowseWindowTest, ChangesBookIconsWithTheirNodes) {
    window_.expanded(10);  // the second author
    window_.expanded(0);
    EXPECT_EQ(view_.images, (QMap<qsizetype, QString>{{10, u"Ac"_s}}));
    window_.collapsed(10);
    EXPECT_EQ(view_.images[10], u"Lirovan");
}

TEST_F(TitlesTest, OpensTopicsWhateverTheirBooksTitle) {
    struct {
        qint64 topic;
        QStringView author;
    } const cases[] = {{10, u"Bir"}, {20, u"\u00DDki"}, {30, u"\u00DC\u00E7"}, {40, u"\u00DC\u00E7"}};
    for (const auto& one : cases) {
        window_.NodeClick(nodeOf(one.topic));
        EXPECT_TRUE(pageFile().contains(u"<span>%1</span>"_s.arg(one.author))) << one.topic;
    }
    window_.NodeClick(static_cast<qsizetype>(window_.nodes().size()) - 1);
    EXPECT_TRUE(content_.startPage.shown) << "a book without topics is a book";
}
