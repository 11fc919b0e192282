// What the commands do to the windows, and what is enabled while they run.
#include "shell/commands.h"

#include <gtest/gtest.h>

#include "shell/command_states.h"
#include "support/fake_windows.h"
#include "support/scripted_dialogs.h"

using namespace lirovan;
using namespace lirovan::shell;
using namespace Qt::StringLiterals;

namespace {

class PrintedPage : public test::FakePageView {
  public:
    bool printerWorks = true;
    std::optional<platform::PrintTarget> printed;
    void print(const platform::PrintTarget& target, std::function<void(bool)> finished) override {
        printed = target;
        finished(printerWorks);
    }
};

// Writes down every call as one word, with its argument.
class RecordingWindows : public Windows {
  public:
    QStringList calls;
    bool pageLoaded = true;
    PrintedPage page;

    void showBrowse() override { calls << u"showBrowse"_s; }
    void hideBrowse() override { calls << u"hideBrowse"_s; }
    void showTab(browse::Tab tab) override { calls << u"tab%1"_s.arg(static_cast<int>(tab)); }
    void sortResults(QStringView key) override { calls << u"sort "_s + key.toString(); }
    void showContent() override { calls << u"showContent"_s; }
    void unloadContent() override { calls << u"unloadContent"_s; }
    void focusContentView() override { calls << u"focusView"_s; }
    void changeContentFontSize(int step) override { calls << u"size %1"_s.arg(step); }
    platform::PageView* shownPage() override { return pageLoaded ? &page : nullptr; }
    void openInNewWindow() override { calls << u"newWindow"_s; }
    void previousHit() override { calls << u"previousHit"_s; }
    void nextHit() override { calls << u"nextHit"_s; }
    void setActiveZoom(double factor) override { calls << u"zoom %1"_s.arg(factor); }
    void sendCut() override { calls << u"Ctrl+X"_s; }
    void sendCopy() override { calls << u"Ctrl+C"_s; }
    void showNotebook() override { calls << u"notebook"_s; }
    void pasteIntoNotebook() override { calls << u"paste"_s; }
    void showHelp() override { calls << u"help"_s; }
    void showAbout() override { calls << u"about"_s; }
    void quit() override { calls << u"quit"_s; }
};

class ScriptedPrinting : public platform::Printing {
  public:
    std::optional<platform::PrintTarget> system, chosen;
    std::optional<bool> selectionOffered;
    std::optional<platform::PrintTarget> defaultPrinter() override { return system; }
    std::optional<platform::PrintTarget> ask(bool hasSelection) override {
        selectionOffered = hasSelection;
        return chosen;
    }
};

class CommandsTest : public testing::Test {
  protected:
    test::FakeMainFrame frame;
    RecordingWindows windows;
    test::ScriptedDialogs dialogs;
    ScriptedPrinting printing;
    Commands commands{frame, windows, dialogs, printing};

    /// Chooses the menu item or presses the button of this name; gives what was done.
    QString run(QStringView name) {
        windows.calls.clear();
        if (name.startsWith(u"mnu_") || name.startsWith(u"sep"))
            commands.menu(name);
        else
            commands.button(name);
        return windows.calls.join(u' ');
    }
};

}  // namespace

TEST_F(CommandsTest, EveryButtonAndMenuItemDoesWhatItsNameSays) {
    const QString cases =
        u"tlbtn_Kitap: showBrowse tab0; tlbtn_Arama: showBrowse tab1; tlbtn_Icerik: showContent; "
        "cut: Ctrl+X; copy: focusView Ctrl+C; paste: notebook paste; not: notebook; "
        "buyult: size 1; kucult: size -1; New: newWindow; Up: previousHit; Down: nextHit; CUT: ; bosluk: ; "
        "mnu_NewWindow: newWindow; mnu_not: notebook; mnu_cik: quit; mnu_kes: Ctrl+X; mnu_Kes: Ctrl+X; "
        "mnu_Kopyala: focusView Ctrl+C; mnu_Yapistir: notebook paste; "
        "mnu_Kitap: sort Kitap; mnu_Konu: sort Konu; mnu_Oran: sort Oran; "
        "mnu_yBuyult: zoom 1.2; mnu_yBuyult: zoom 1.4; mnu_yNormal: zoom 1; mnu_YKucult: zoom 0.8; "
        "mnu_Yardimm: help; mnu_Hakkında: about; mnu_Arama: showBrowse tab0; mnu_Arama: hideBrowse; "
        "mnu_Icerik: showContent; mnu_Icerik: unloadContent; sep1: "_s;
    for (const QString& each : cases.split(u"; "_s)) {
        const QString name = each.section(u':', 0, 0);
        frame.setButtonEnabled(u"cut", true);
        EXPECT_EQ(name + u": "_s + run(name), each);
        EXPECT_EQ(frame.button(u"cut").enabled, name != u"cut" && name != u"copy");
    }
    for (int i = 0; i < 60; ++i) run(u"mnu_yBuyult");
    EXPECT_EQ(run(u"mnu_yBuyult"), u"zoom 5") << "the most that a page view can show";
    for (int i = 0; i < 60; ++i) run(u"mnu_YKucult");
    EXPECT_EQ(run(u"mnu_YKucult"), u"zoom 0.4");
}

TEST_F(CommandsTest, PrintsThePageOrItsSelectionAndReportsOnlyAFailureBehindTheDialog) {
    auto& printed = windows.page.printed;
    run(u"print");
    EXPECT_FALSE(printed) << "no printer";
    printing.system = platform::PrintTarget{};
    run(u"print");
    ASSERT_TRUE(printed);
    EXPECT_EQ(printed->range, platform::PrintRange::Page);
    windows.page.selection = u"seçim"_s;
    run(u"print");
    EXPECT_EQ(printed->range, platform::PrintRange::Selection);
    EXPECT_FALSE(printing.selectionOffered) << "no dialog";

    printed.reset();
    run(u"mnu_yazdir");
    EXPECT_EQ(printing.selectionOffered, true);
    EXPECT_FALSE(printed) << "cancelled";
    printing.chosen = platform::PrintTarget{};
    run(u"mnu_yazdir");
    EXPECT_TRUE(printed);
    EXPECT_TRUE(dialogs.messages.empty());
    windows.page.printerWorks = false;
    run(u"mnu_yazdir");
    ASSERT_EQ(dialogs.messages.size(), 1U);
    EXPECT_EQ(dialogs.messages[0].text, u"Yazıcı algılanamadı!"_s);

    printed.reset();
    windows.pageLoaded = false;
    run(u"print");
    EXPECT_FALSE(printed);
}

TEST(CommandStatesTest, ALockDisablesWhatWouldChangeThePageAndGivesBackWhatWasSetMeanwhile) {
    CommandStates states;
    states.setButtonEnabled(u"New", true);
    states.setLocked(true);
    EXPECT_FALSE(states.button(u"New").enabled || states.button(u"buyult").enabled ||
                 states.menu(u"mnu_Konu").enabled);
    EXPECT_TRUE(states.button(u"not").enabled) << "notes can be taken meanwhile";
    states.setButtonEnabled(u"Down", true);
    EXPECT_FALSE(states.button(u"Down").enabled);
    states.setLocked(false);
    EXPECT_TRUE(states.button(u"New").enabled && states.button(u"Down").enabled);
    EXPECT_FALSE(states.button(u"Up").enabled);
}

TEST(CommandStatesTest, MenuItemsAreFoundInAnySpellingAndUnknownNamesAreIgnored) {
    CommandStates states;
    QStringList changes;
    states.menuChanged = [&](const CommandState& state) { changes << state.name; };
    states.setMenuEnabled(u"mnu_Kes", false);
    states.setMenuVisible(u"mnu_Yazdir", true);
    states.setMenuVisible(u"mnu_yok", true);
    EXPECT_EQ(changes, QStringList({u"mnu_kes"_s, u"mnu_yazdir"_s}));
    states.setButtonVisible(u"sep1", true);
    EXPECT_FALSE(states.button(u"Sep1").visible) << "toolbar keys are exact";
}
