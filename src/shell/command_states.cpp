#include "shell/command_states.h"

#include <algorithm>
#include <array>

#include "platform/core/main_frame.h"
#include "shell/command_table.h"
#include "text/comparison.h"

namespace lirovan::shell {

namespace {

namespace button = platform::button;

// What would change the page that a running search or summary is about to replace, or would start another
// run.
constexpr std::array LockedButtons = {button::Buyult, button::Kucult, button::New,
                                      button::Up,     button::Down,   button::Icerik};
constexpr std::array<QStringView, 7> LockedItems = {u"mnu_Icerik", u"mnu_NewWindow", u"mnu_Konu",
                                                    u"mnu_Kitap",  u"mnu_yBuyult",   u"mnu_yNormal",
                                                    u"mnu_YKucult"};

/// The state of this name, or null.
template <class States, class Same>
auto* findIn(States& states, QStringView name, Same same) {
    const auto found = std::find_if(states.begin(), states.end(),
                                    [&](const CommandState& state) { return same(state.name, name); });
    return found == states.end() ? nullptr : &*found;
}

bool sameKey(QStringView a, QStringView b) {
    return a == b;
}

bool sameItem(QStringView a, QStringView b) {
    return text::equal(a, b, text::Comparison::CaseInsensitive);
}

template <class Names>
bool contains(const Names& names, QStringView name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

CommandStates::CommandStates() {
    for (const ToolButton& entry : toolbarTable()) {
        if (!entry.key.empty())
            buttons_.push_back({entry.key.toString(), entry.visible, entry.enabled, false,
                                contains(LockedButtons, entry.key)});
    }
    for (const Menu& bar : menuTable()) {
        for (const MenuItem& item : bar.items)
            menus_.push_back(
                {item.name.toString(), item.visible, true, item.checkable, contains(LockedItems, item.name)});
    }
}

template <class Change>
void CommandStates::changeButton(QStringView key, Change change) {
    CommandState* state = findIn(buttons_, key, sameKey);
    if (!state) return;
    change(*state);
    if (buttonChanged) buttonChanged(shown(*state));
}

template <class Change>
void CommandStates::changeMenu(QStringView item, Change change) {
    CommandState* state = findIn(menus_, item, sameItem);
    if (!state) return;
    change(*state);
    if (menuChanged) menuChanged(shown(*state));
}

void CommandStates::setButtonVisible(QStringView key, bool visible) {
    changeButton(key, [visible](CommandState& state) { state.visible = visible; });
}

void CommandStates::setButtonEnabled(QStringView key, bool enabled) {
    changeButton(key, [enabled](CommandState& state) { state.enabled = enabled; });
}

void CommandStates::setMenuVisible(QStringView item, bool visible) {
    changeMenu(item, [visible](CommandState& state) { state.visible = visible; });
}

void CommandStates::setMenuEnabled(QStringView item, bool enabled) {
    changeMenu(item, [enabled](CommandState& state) { state.enabled = enabled; });
}

void CommandStates::setMenuChecked(QStringView item, bool checked) {
    changeMenu(item, [checked](CommandState& state) { state.checked = checked; });
}

void CommandStates::setLocked(bool locked) {
    if (locked_ == locked) return;
    locked_ = locked;
    for (const CommandState& state : buttons_) {
        if (state.lockable && buttonChanged) buttonChanged(shown(state));
    }
    for (const CommandState& state : menus_) {
        if (state.lockable && menuChanged) menuChanged(shown(state));
    }
}

CommandState CommandStates::button(QStringView key) const {
    const CommandState* state = findIn(buttons_, key, sameKey);
    return state ? shown(*state) : CommandState{{}, false, false};
}

CommandState CommandStates::menu(QStringView item) const {
    const CommandState* state = findIn(menus_, item, sameItem);
    return state ? shown(*state) : CommandState{{}, false, false};
}

CommandState CommandStates::shown(const CommandState& state) const {
    CommandState result = state;
    if (locked_ && state.lockable) result.enabled = false;
    return result;
}

}  // namespace lirovan::shell
