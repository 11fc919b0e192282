#include "browse/content_window.h"

#include <gtest/gtest.h>

#include "browse/window_places.h"
#include "support/fake_windows.h"

using namespace lirovan;
using namespace lirovan::browse;
using namespace Qt::StringLiterals;
using platform::Twips;
using platform::TwipsRect;

namespace {

constexpr TwipsRect Browse{Twips{0}, Twips{30}, Twips{8000}, Twips{10470}};

class ContentWindowTest : public testing::Test {
  protected:
    test::FakeMainFrame frame_;
    test::FakeContentView view_;
    ContentWindow window_{frame_, view_, platform::AppFolder(u"/l"_s)};
};

}  // namespace

TEST_F(ContentWindowTest, LoadsBesideTheBrowseWindowWithTheStartPage) {
    window_.load(Browse, false);
    EXPECT_EQ(view_.rect, (TwipsRect{Twips{8000}, Twips{30}, Twips{11790}, Twips{10470}}));
    EXPECT_EQ(view_.startPage.location(), u"/l\\OKU\\VQ.HTM");
    EXPECT_TRUE(frame_.isMenuChecked(u"mnu_Icerik"));
    window_.load(Browse, true);
    EXPECT_EQ(view_.rect, (TwipsRect{Twips{8010}, Twips{0}, Twips{11790}, Twips{10470}}));
    window_.unload();
    EXPECT_FALSE(frame_.isMenuChecked(u"mnu_Icerik"));
}

TEST_F(ContentWindowTest, FollowsTheMainWindowsHeightInTheNormalStateOnly) {
    const TwipsRect start{Twips{1}, Twips{2}, Twips{3}, Twips{4}};
    struct {
        bool minimized, maximized;
        double mainHeight, expected;
    } const cases[] = {{false, false, 12000, 10470},
                       {true, false, 12000, 4},
                       {false, true, 12000, 4},
                       {false, false, 1530, 4}};
    for (const auto& one : cases) {
        view_.rect = start;
        view_.minimized = one.minimized;
        view_.maximized = one.maximized;
        frame_.mainHeight = Twips{one.mainHeight};
        window_.resize();
        EXPECT_EQ(view_.rect.height, Twips{one.expected});
        EXPECT_EQ(view_.rect.width, start.width);
    }
}

TEST_F(ContentWindowTest, EnablesCommandsWithActivationAndFocus) {
    for (const QStringView key : {u"cut", u"copy", u"paste", u"print"}) frame_.setButtonEnabled(key, false);
    for (const QStringView item : {u"mnu_Kes", u"mnu_Kopyala", u"mnu_Yapistir"})
        frame_.setMenuEnabled(item, false);

    window_.pageFocused(false);
    EXPECT_TRUE(frame_.button(u"cut").enabled && frame_.button(u"copy").enabled);
    EXPECT_TRUE(frame_.menu(u"mnu_kes").enabled && frame_.menu(u"mnu_kopyala").enabled);
    EXPECT_FALSE(frame_.button(u"paste").enabled || frame_.menu(u"mnu_yapistir").enabled);
    window_.pageFocused(true);
    EXPECT_TRUE(frame_.button(u"paste").enabled && frame_.menu(u"mnu_yapistir").enabled);

    frame_.setMenuVisible(u"sep2", false);
    window_.activate();
    EXPECT_EQ(frame_.panels[1], u"İçerik Penceresi");
    EXPECT_TRUE(frame_.button(u"print").enabled && frame_.menu(u"sep2").visible);

    window_.rightClick();
    EXPECT_EQ(frame_.poppedUp, u"mnu_yazi");
}

TEST_F(ContentWindowTest, RewritesThePageInAnotherSize) {
    frame_.pixels = 16;
    view_.page.html = u"<HEAD><TITLE>t</TITLE></HEAD><IMG src=\"print.gif\">"_s;
    window_.ChangeFontSize(1);
    EXPECT_EQ(frame_.pixels, 17);
    EXPECT_EQ(view_.page.html,
              u"<HEAD><TITLE>t</TITLE><style>td {font-size: 17px;font-family: Arial;}</style></HEAD>"
              "<IMG src=\"/l\\OKU\\print.gif\">");
    EXPECT_EQ(frame_.reorders, 1);

    const QString before = view_.page.html;
    view_.page.outcome = platform::Outcome::TimedOut;
    window_.ChangeFontSize(-1);
    EXPECT_EQ(frame_.pixels, 16);
    EXPECT_EQ(view_.page.html, before);
}

TEST(ExtraWindow, StandsWhereTheSharedOneWouldOrInTheMiddle) {
    const TwipsRect beside = extraPlaceAtLoad(Browse, false, Twips{20000}, Twips{12000});
    EXPECT_EQ(beside, (TwipsRect{Twips{8000}, Twips{30}, Twips{11830}, Twips{10470}}));
    const TwipsRect middle = extraPlaceAtLoad(Browse, true, Twips{20000}, Twips{12000});
    EXPECT_DOUBLE_EQ(middle.left.value, 20000 / 2.53);
    EXPECT_DOUBLE_EQ(middle.width.value, 20000 / 1.69);
}
