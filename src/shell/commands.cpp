#include "shell/commands.h"

#include <algorithm>

#include "shell/command_table.h"
#include "shell/page_printing.h"
#include "text/comparison.h"

using namespace Qt::StringLiterals;

namespace lirovan::shell {

namespace button_key = platform::button;
namespace item_name = platform::menu;

namespace {

constexpr int NormalPoints = 10;
constexpr int PointStep = 2;
// The page view zooms between a quarter and five times.
constexpr int LeastPoints = 4;
constexpr int MostPoints = 50;

}  // namespace

void Commands::button(QStringView key) {
    if (key == button_key::Kitap) {
        showBrowseTab(browse::Tab::Books, status::Kitaplar);
    } else if (key == button_key::Arama) {
        showBrowseTab(browse::Tab::Search, status::Bul);
    } else if (key == button_key::Icerik) {
        windows_.showContent();
        setStatus(status::Icerik);
    } else if (key == button_key::Cut) {
        cut();
        frame_.setButtonEnabled(button_key::Cut, false);
    } else if (key == button_key::Copy) {
        copy();
        frame_.setButtonEnabled(button_key::Cut, false);
    } else if (key == button_key::Paste) {
        paste();
    } else if (key == button_key::Not) {
        windows_.showNotebook();
    } else if (key == button_key::Print) {
        printWith(false);
    } else if (key == button_key::Buyult) {
        windows_.changeContentFontSize(+1);
    } else if (key == button_key::Kucult) {
        windows_.changeContentFontSize(-1);
    } else if (key == button_key::New) {
        windows_.openInNewWindow();
    } else if (key == button_key::Up) {
        windows_.previousHit();
    } else if (key == button_key::Down) {
        windows_.nextHit();
    }
}

void Commands::menu(QStringView item) {
    const auto is = [item](QStringView name) {
        return text::equal(item, name, text::Comparison::CaseInsensitive);
    };
    if (is(item_name::Arama)) {
        toggleBrowse();
    } else if (is(item_name::Icerik)) {
        toggleContent();
    } else if (is(u"mnu_NewWindow")) {
        windows_.openInNewWindow();
    } else if (is(u"mnu_not")) {
        windows_.showNotebook();
    } else if (is(item_name::Yazdir)) {
        printWith(true);
    } else if (is(u"mnu_cik")) {
        windows_.quit();
    } else if (is(item_name::Kes)) {
        cut();
    } else if (is(item_name::Kopyala)) {
        copy();
    } else if (is(item_name::Yapistir)) {
        paste();
    } else if (is(u"mnu_Kitap")) {
        windows_.sortResults(u"Kitap");
    } else if (is(u"mnu_Konu")) {
        windows_.sortResults(u"Konu");
    } else if (is(u"mnu_Oran")) {
        windows_.sortResults(u"Oran");
    } else if (is(u"mnu_yBuyult")) {
        setPointSize(pointSize_ + PointStep);
    } else if (is(u"mnu_yNormal")) {
        setPointSize(NormalPoints);
    } else if (is(u"mnu_YKucult")) {
        setPointSize(pointSize_ - PointStep);
    } else if (is(u"mnu_Yardimm")) {
        windows_.showHelp();
    } else if (is(u"mnu_Hakkında")) {
        windows_.showAbout();
    }
}

void Commands::toggleBrowse() {
    if (frame_.isMenuChecked(item_name::Arama)) {
        windows_.hideBrowse();
        setStatus(status::Idle);
        return;
    }
    windows_.showBrowse();
    windows_.showTab(browse::Tab::Books);
    setStatus(status::Arama);
}

void Commands::toggleContent() {
    if (frame_.isMenuChecked(item_name::Icerik)) {
        windows_.unloadContent();
        setStatus(status::Idle);
        return;
    }
    windows_.showContent();
    setStatus(status::Icerik);
}

void Commands::showBrowseTab(browse::Tab tab, QStringView status) {
    windows_.showBrowse();
    windows_.showTab(tab);
    setStatus(status);
}

void Commands::cut() {
    windows_.sendCut();
}

void Commands::copy() {
    windows_.focusContentView();
    windows_.sendCopy();
}

void Commands::paste() {
    windows_.showNotebook();
    windows_.pasteIntoNotebook();
}

void Commands::printWith(bool dialog) {
    platform::PageView* page = windows_.shownPage();
    if (!page) return;
    if (dialog)
        printWithDialog(*page, printing_, dialogs_);
    else
        printDirectly(*page, printing_, dialogs_);
}

void Commands::setPointSize(int points) {
    pointSize_ = std::clamp(points, LeastPoints, MostPoints);
    windows_.setActiveZoom(static_cast<double>(pointSize_) / NormalPoints);
}

void Commands::setStatus(QStringView text) {
    frame_.setPanelText(1, text.toString());
}

}  // namespace lirovan::shell
