#include "browse/content_window.h"

#include <algorithm>

#include "browse/font_size.h"
#include "browse/page_file.h"
#include "browse/window_places.h"
#include "platform/core/page_access.h"

namespace lirovan::browse {

using namespace Qt::StringLiterals;
namespace button = platform::button;
namespace menu = platform::menu;

namespace {
constexpr int LeastFontSize = 4;
}

int steppedFontSize(int size, int step) {
    return step < 0 ? std::max(size + step, std::min(size, LeastFontSize)) : size + step;
}

void rewriteWithFontSize(platform::PageView& page, int oldSize, int newSize,
                         const platform::AppFolder* folder) {
    const platform::Reply<bool> changed = page.replaceInPlace(fontSizeChanges(oldSize, newSize));
    if (changed.outcome != platform::Outcome::Answered || changed.value == true) return;
    // A page that is still loading could not be rewritten.
    if (page.waitUntilComplete() == platform::Outcome::Gone) return;
    platform::Reply<QString> html = page.innerHtml();
    if (!html) return;
    QString text = std::move(*html.value);
    if (folder) text = withAbsoluteImages(std::move(text), *folder);
    page.rewrite(withFontSize(std::move(text), oldSize, newSize));
}

void contentActivated(platform::MainFrame& frame) {
    frame.setPanelText(1, ContentCaption.toString());
    frame.setButtonEnabled(button::Paste, true);
    frame.setButtonEnabled(button::Print, true);
    frame.setMenuEnabled(menu::Yapistir, true);
    frame.setMenuVisible(menu::Sep2, true);
    // With its separator: there is no other way from the menu to the print dialog.
    frame.setMenuVisible(menu::Yazdir, true);
}

void pageFocused(platform::MainFrame& frame, bool clipboardHasText) {
    frame.setMenuEnabled(menu::Kes, true);
    frame.setMenuEnabled(menu::Kopyala, true);
    if (!clipboardHasText) return;
    frame.setButtonEnabled(button::Paste, true);
    frame.setMenuEnabled(menu::Yapistir, true);
}

void ContentWindow::load(const platform::TwipsRect& browse, bool browseMinimized) {
    frame_.setMenuChecked(menu::Icerik, true);
    page_.showPageCommands(ShownPage::None);
    view_.setPlace(contentPlaceAtLoad(browse, browseMinimized, frame_.width(), frame_.height()));
    loadStartPage();
}

void ContentWindow::resize() {
    if (view_.isMinimized() || view_.isMaximized() || !(frame_.height() > ChromeHeight)) return;
    platform::TwipsRect place = view_.place();
    place.height = frame_.height() - ChromeHeight;
    view_.setPlace(place);
}

void ContentWindow::unload() {
    frame_.setMenuChecked(menu::Icerik, false);
    frame_.setPanelVisible(3, false);  // counts the hits of the page
    page_.showPageCommands(ShownPage::None);
}

void ContentWindow::rightClick() {
    frame_.popUpMenu(u"mnu_yazi");
}

void ContentWindow::pageFocused(bool clipboardHasText) {
    frame_.setButtonEnabled(button::Cut, true);
    frame_.setButtonEnabled(button::Copy, true);
    browse::pageFocused(frame_, clipboardHasText);
}

void ContentWindow::loadStartPage() {
    view_.wb_Icerik2().navigate(folder_.pageText(StartPageOfWindow));
}

void ContentWindow::pageLoaded() {
    const auto file = platform::PageAccess(folder_).file(view_.wb_Icerik().location());
    if (file != folder_.path(StartPage)) return;
    view_.setCaption(ContentCaption.toString());
    page_.showPageCommands(ShownPage::Topic);
}

void ContentWindow::ChangeFontSize(int step) {
    const int oldSize = frame_.fontSize(), newSize = steppedFontSize(oldSize, step);
    if (newSize == oldSize) return;
    frame_.FontSize(newSize);
    rewriteWithFontSize(view_.wb_Icerik(), oldSize, newSize, &folder_);
    frame_.ReOrderPos();
}

}  // namespace lirovan::browse
