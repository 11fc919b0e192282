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
    bool pageLoaded = true;
    PrintedPage page;

    void showBrowse() override { calls << u"showBrowse"_s; }
    void hideBrowse() override { calls << u"hideBrowse"_s; }
    void showTab(browse::Tab tab) override { calls << u"tab%1"_s.arg(static_cast<int>(tab)); }
    void sortResults(QStringView key) override { calls << u"sort "_s + key.toString(); }
    void showContent() override { calls << u"showContent"_s; }
    void unloadContent() override { calls << u"unloadContent"_s; }
    void focusContentView() override { calls << u"focusView"_s; }
    void changeContentFontSize(int step) override {
        calls << u"size%1%2"_s.arg(step > 0 ? u"+"_s : QString()).arg(step);
    }
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

}  // namespace

TEST_F(CommandsTest, EveryButtonAndMenuItemDoesWhatItsNameSays) {
    const struct {
        void (Commands::*kind)(QStringView);
        QStringView trigger;
        QString calls;
        QString status = {};
    } cases[] = {
        {&Commands::button, u"tlbtn_Kitap", u"showBrowse tab0"_s, u"Arama Penceresi - Kitaplar"_s},
        {&Commands::button, u"tlbtn_Arama", u"showBrowse tab1"_s, u"Arama Penceresi - Arama"_s},
        {&Commands::button, u"tlbtn_Icerik", u"showContent"_s, u"İçerik Penceresi"_s},
        {&Commands::button, u"cut", u"Ctrl+X"_s},
        {&Commands::button, u"copy", u"focusView Ctrl+C"_s},
        {&Commands::button, u"paste", u"notebook paste"_s},
        {&Commands::button, u"not", u"notebook"_s},
        {&Commands::button, u"buyult", u"size+1"_s},
        {&Commands::button, u"kucult", u"size-1"_s},
        {&Commands::button, u"New", u"newWindow"_s},
        {&Commands::button, u"Up", u"previousHit"_s},
        {&Commands::button, u"Down", u"nextHit"_s},
        {&Commands::button, u"CUT", {}},
        {&Commands::button, u"bosluk", {}},
        {&Commands::menu, u"mnu_NewWindow", u"newWindow"_s},
        {&Commands::menu, u"mnu_not", u"notebook"_s},
        {&Commands::menu, u"mnu_cik", u"quit"_s},
        {&Commands::menu, u"mnu_kes", u"Ctrl+X"_s},
        {&Commands::menu, u"mnu_Kes", u"Ctrl+X"_s},
        {&Commands::menu, u"mnu_Kopyala", u"focusView Ctrl+C"_s},
        {&Commands::menu, u"mnu_Yapistir", u"notebook paste"_s},
        {&Commands::menu, u"mnu_Kitap", u"sort Kitap"_s},
        {&Commands::menu, u"mnu_Konu", u"sort Konu"_s},
        {&Commands::menu, u"mnu_Oran", u"sort Oran"_s},
        {&Commands::menu, u"mnu_yBuyult", u"zoom 1.2"_s},
        {&Commands::menu, u"mnu_yBuyult", u"zoom 1.4"_s},
        {&Commands::menu, u"mnu_yNormal", u"zoom 1"_s},
        {&Commands::menu, u"mnu_YKucult", u"zoom 0.8"_s},
        {&Commands::menu, u"mnu_Yardimm", u"help"_s},
        {&Commands::menu, u"mnu_Hakkında", u"about"_s},
        {&Commands::menu, u"sep1", {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.trigger.toString().toStdString());
        windows.calls.clear();
        frame.panels.clear();
        frame.setButtonEnabled(u"cut", true);
        (commands.*c.kind)(c.trigger);
        EXPECT_EQ(windows.calls.join(u' '), c.calls);
        EXPECT_EQ(frame.panels.value(1), c.status);
        EXPECT_EQ(frame.button(u"cut").enabled, c.trigger != u"cut" && c.trigger != u"copy");
    }
    for (int i = 0; i < 60; ++i) commands.menu(u"mnu_yBuyult");
    EXPECT_EQ(windows.calls.last(), u"zoom 5"_s) << "the most that a page view can show";
    for (int i = 0; i < 60; ++i) commands.menu(u"mnu_YKucult");
    EXPECT_EQ(windows.calls.last(), u"zoom 0.4"_s);
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
