// What the commands do to the windows, in which order, and what they show.
#include "shell/commands.h"

#include <gtest/gtest.h>

#include <QStringList>

#include "shell/command_states.h"
#include "support/fake_windows.h"
#include "support/scripted_dialogs.h"

using namespace Qt::StringLiterals;

using namespace lirovan;
using namespace lirovan::shell;

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
    mutable QStringList calls;
    bool browseMinimized = false, contentMinimized = false, pageLoaded = true;
    PrintedPage page;

    bool isBrowseMinimized() const override { return browseMinimized; }
    void restoreBrowse() override { calls << u"restoreBrowse"_s; }
    void showBrowse() override { calls << u"showBrowse"_s; }
    void hideBrowse() override { calls << u"hideBrowse"_s; }
    void showTab(browse::Tab tab) override { calls << u"tab%1"_s.arg(static_cast<int>(tab)); }
    void sortResults(QStringView key) override { calls << u"sort "_s + key.toString(); }
    bool isContentMinimized() const override { return contentMinimized; }
    void restoreContent() override { calls << u"restoreContent"_s; }
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
};

struct Case {
    QStringView trigger;
    QStringList calls;
    QStringView status = u"";
};

}  // namespace

TEST_F(CommandsTest, EveryButtonDoesWhatItsKeySays) {
    const Case cases[] = {
        {u"tlbtn_Kitap", {u"showBrowse"_s, u"tab0"_s}, u"Arama Penceresi - Kitaplar"},
        {u"tlbtn_Arama", {u"showBrowse"_s, u"tab1"_s}, u"Arama Penceresi - Arama"},
        {u"tlbtn_Icerik", {u"showContent"_s}, u"İçerik Penceresi"},
        {u"cut", {u"Ctrl+X"_s}},
        {u"copy", {u"focusView"_s, u"Ctrl+C"_s}},
        {u"paste", {u"notebook"_s, u"paste"_s}},
        {u"not", {u"notebook"_s}},
        {u"buyult", {u"size 1"_s}},
        {u"kucult", {u"size -1"_s}},
        {u"New", {u"newWindow"_s}},
        {u"Up", {u"previousHit"_s}},
        {u"Down", {u"nextHit"_s}},
        {u"CUT", {}},
        {u"bosluk", {}},
    };
    for (const Case& c : cases) {
        windows.calls.clear();
        frame.panels.clear();
        commands.button(c.trigger);
        EXPECT_EQ(windows.calls, c.calls) << c.trigger.toString().toStdString();
        EXPECT_EQ(frame.panels.value(1), c.status.toString()) << c.trigger.toString().toStdString();
    }
}

TEST_F(CommandsTest, EveryMenuItemDoesWhatItsNameSays) {
    const Case cases[] = {
        {u"mnu_NewWindow", {u"newWindow"_s}},
        {u"mnu_not", {u"notebook"_s}},
        {u"mnu_cik", {u"quit"_s}},
        {u"mnu_kes", {u"Ctrl+X"_s}},
        {u"mnu_Kes", {u"Ctrl+X"_s}},
        {u"mnu_Kopyala", {u"focusView"_s, u"Ctrl+C"_s}},
        {u"mnu_Yapistir", {u"notebook"_s, u"paste"_s}},
        {u"mnu_Kitap", {u"sort Kitap"_s}},
        {u"mnu_Konu", {u"sort Konu"_s}},
        {u"mnu_Oran", {u"sort Oran"_s}},
        {u"mnu_yBuyult", {u"zoom 1.2"_s}},
        {u"mnu_yBuyult", {u"zoom 1.4"_s}},
        {u"mnu_yNormal", {u"zoom 1"_s}},
        {u"mnu_YKucult", {u"zoom 0.8"_s}},
        {u"mnu_Yardimm", {u"help"_s}},
        {u"mnu_Hakkında", {u"about"_s}},
        {u"sep1", {}},
    };
    for (const Case& c : cases) {
        windows.calls.clear();
        commands.menu(c.trigger);
        EXPECT_EQ(windows.calls, c.calls) << c.trigger.toString().toStdString();
    }
}

TEST_F(CommandsTest, MinimizedWindowsAreRestoredAndNotLoadedAgain) {
    windows.browseMinimized = windows.contentMinimized = true;
    commands.button(u"tlbtn_Arama");
    commands.button(u"tlbtn_Icerik");
    EXPECT_EQ(windows.calls, QStringList({u"restoreBrowse"_s, u"tab1"_s, u"restoreContent"_s}));
    EXPECT_EQ(frame.panels.value(1), u"İçerik Penceresi"_s);
}

TEST_F(CommandsTest, WindowItemsToggleAndKeepTheirCheckMark) {
    frame.setMenuChecked(u"mnu_Arama", true);
    frame.setMenuChecked(u"mnu_Icerik", true);
    commands.menu(u"mnu_Arama");
    EXPECT_FALSE(frame.isMenuChecked(u"mnu_Arama"));
    EXPECT_EQ(frame.panels.value(1), u"Veskaran`nin Lirovan"_s);
    commands.menu(u"mnu_Arama");
    EXPECT_TRUE(frame.isMenuChecked(u"mnu_Arama"));
    EXPECT_EQ(frame.panels.value(1), u"Arama Penceresi"_s);
    commands.menu(u"mnu_Icerik");
    EXPECT_FALSE(frame.isMenuChecked(u"mnu_Icerik"));
    commands.menu(u"mnu_Icerik");
    EXPECT_TRUE(frame.isMenuChecked(u"mnu_Icerik"));
    EXPECT_EQ(windows.calls, QStringList({u"hideBrowse"_s, u"showBrowse"_s, u"tab0"_s, u"unloadContent"_s,
                                          u"showContent"_s}));
}

TEST_F(CommandsTest, CopyingFromTheToolbarDisablesCut) {
    commands.menu(u"mnu_Kopyala");
    EXPECT_TRUE(frame.button(u"cut").enabled);
    commands.button(u"copy");
    EXPECT_FALSE(frame.button(u"cut").enabled);
}

TEST_F(CommandsTest, ZoomStaysWithinWhatAPageViewCanShow) {
    for (int i = 0; i < 60; ++i) commands.menu(u"mnu_yBuyult");
    EXPECT_EQ(commands.pointSize(), 50);
    for (int i = 0; i < 60; ++i) commands.menu(u"mnu_YKucult");
    EXPECT_EQ(commands.pointSize(), 4);
}

TEST_F(CommandsTest, TheDialogOffersTheSelectionAndOnlyAFailedPrintIsReported) {
    windows.page.selection = u"seçim"_s;
    commands.menu(u"mnu_yazdir");  // cancelled
    EXPECT_EQ(printing.selectionOffered, true);
    EXPECT_FALSE(windows.page.printed);
    EXPECT_TRUE(dialogs.messages.empty());

    printing.chosen = platform::PrintTarget{};
    commands.menu(u"mnu_yazdir");
    EXPECT_TRUE(windows.page.printed);
    EXPECT_TRUE(dialogs.messages.empty());

    windows.page.printerWorks = false;
    commands.menu(u"mnu_yazdir");
    ASSERT_EQ(dialogs.messages.size(), 1U);
    EXPECT_EQ(dialogs.messages[0].text, u"Yazıcı algılanamadı!"_s);
    EXPECT_EQ(dialogs.messages[0].title, u"Yazıcı Hatası"_s);
    EXPECT_EQ(dialogs.messages[0].icon, platform::Icon::Critical);
}

TEST_F(CommandsTest, DirectPrintingNeedsAPrinterAndPrefersTheSelection) {
    commands.button(u"print");
    EXPECT_FALSE(windows.page.printed);
    printing.system = platform::PrintTarget{};
    commands.button(u"print");
    ASSERT_TRUE(windows.page.printed);
    EXPECT_EQ(windows.page.printed->range, platform::PrintRange::Page);
    windows.page.selection = u"seçim"_s;
    commands.button(u"print");
    EXPECT_EQ(windows.page.printed->range, platform::PrintRange::Selection);
    EXPECT_FALSE(printing.selectionOffered) << "no dialog";
    windows.pageLoaded = false;
    windows.page.printed.reset();
    commands.button(u"print");
    EXPECT_FALSE(windows.page.printed);
}

TEST(CommandStatesTest, ALockDisablesWhatWouldChangeThePageAndGivesBackWhatWasSetMeanwhile) {
    CommandStates states;
    states.setButtonEnabled(u"New", true);
    states.setLocked(true);
    EXPECT_FALSE(states.button(u"New").enabled);
    EXPECT_FALSE(states.button(u"buyult").enabled);
    EXPECT_FALSE(states.menu(u"mnu_Konu").enabled);
    EXPECT_TRUE(states.button(u"not").enabled) << "notes can be taken meanwhile";
    states.setButtonEnabled(u"Down", true);
    EXPECT_FALSE(states.button(u"Down").enabled);
    states.setLocked(false);
    EXPECT_TRUE(states.button(u"New").enabled);
    EXPECT_TRUE(states.button(u"Down").enabled);
    EXPECT_FALSE(states.button(u"Up").enabled);
}

TEST(CommandStatesTest, MenuItemsAreFoundInAnySpellingAndUnknownNamesAreIgnored) {
    CommandStates states;
    QStringList changes;
    states.menuChanged = [&](const CommandState& state) { changes << state.name; };
    states.setMenuEnabled(u"mnu_Kes", false);
    states.setMenuVisible(u"mnu_Yazdir", true);
    states.setMenuVisible(u"mnu_yok", true);
    states.setButtonVisible(u"sep1", true);
    EXPECT_EQ(changes, QStringList({u"mnu_kes"_s, u"mnu_yazdir"_s}));
    EXPECT_FALSE(states.button(u"Sep1").visible) << "toolbar keys are exact";
}
