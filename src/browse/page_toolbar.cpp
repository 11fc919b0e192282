#include "browse/page_toolbar.h"

namespace lirovan::browse {

namespace button = platform::button;
using platform::MainFrame;
using platform::Twips;

namespace {

// What the toolbar's other buttons need of the main window's width, by how many of them are shown.
constexpr Twips RoomWithoutPage{3910}, RoomWithTopic{4590}, RoomWithPage{4600};

constexpr QStringView FontSizeGroup[] = {button::Buyult, button::Kucult, button::Sep1,  button::Sep2,
                                         button::Sep3,   button::Sep4,   button::Bosluk};
constexpr QStringView PageGroup[] = {button::New, button::Up, button::Down};

template <class Keys>
void setVisible(MainFrame& frame, const Keys& keys, bool visible) {
    for (const QStringView key : keys) frame.setButtonVisible(key, visible);
}

}  // namespace

void hidePageButtons(MainFrame& frame) {
    setVisible(frame, PageGroup, false);
    setVisible(frame, FontSizeGroup, false);
    frame.setButtonEnabled(button::Up, false);
    frame.setButtonEnabled(button::Down, false);
    frame.setSpacerWidth(frame.width() - RoomWithoutPage);
    frame.setButtonEnabled(button::New, false);
}

void showTopicButtons(MainFrame& frame) {
    frame.setButtonEnabled(button::New, true);
    setVisible(frame, FontSizeGroup, true);
    frame.setSpacerWidth(frame.width() - RoomWithTopic);
}

void showPageButtons(MainFrame& frame) {
    setVisible(frame, FontSizeGroup, true);
    frame.setSpacerWidth(frame.width() - RoomWithPage);
    setVisible(frame, PageGroup, true);
}

}  // namespace lirovan::browse
