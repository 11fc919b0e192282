#include "browse/page_toolbar.h"

namespace lirovan::browse {

namespace button = platform::button;
using platform::Twips;

namespace {

// What the toolbar's other buttons need of the main window's width, without and with those of a page.
constexpr Twips RoomWithoutPage{3910}, RoomWithPage{4600};

constexpr QStringView PageButtons[] = {button::Buyult, button::Kucult, button::Sep1, button::Sep2,
                                       button::Sep3,   button::Sep4,   button::New,  button::Up,
                                       button::Down,   button::Bosluk};

}  // namespace

void PageCommands::showPageCommands(ShownPage page) {
    shown_ = page;
    up_ = down_ = false;
    apply();
    if (pageShown) pageShown(page);
}

void PageCommands::setHitButton(QStringView key, bool enabled) {
    (key == button::Up ? up_ : down_) = enabled;
    apply();
}

void PageCommands::setBooksInFront(bool inFront) {
    booksInFront_ = inFront;
    apply();
}

void PageCommands::setWithheld(bool withheld) {
    withheld_ = withheld;
    apply();
}

void PageCommands::apply() {
    const bool visible = shown_ != ShownPage::None && !withheld_;
    const bool steps = shown_ == ShownPage::MarkedPage && !booksInFront_;
    frame_.setButtonEnabled(button::New, shown_ != ShownPage::None);
    frame_.setButtonEnabled(button::Up, steps && up_);
    frame_.setButtonEnabled(button::Down, steps && down_);
    for (const QStringView key : PageButtons) frame_.setButtonVisible(key, visible);
    frame_.setSpacerWidth(frame_.width() - (visible ? RoomWithPage : RoomWithoutPage));
}

}  // namespace lirovan::browse
