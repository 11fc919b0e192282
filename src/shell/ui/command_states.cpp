#include "shell/ui/command_states.h"

#include <algorithm>

#include "shell/ui/command_table.h"

namespace lirovan::shell {

namespace {

/// The state of this name, or null.
template <class States>
auto* findIn(States& states, QStringView name) {
    const auto found = std::find_if(states.begin(), states.end(),
                                    [&](const CommandState& state) { return state.name == name; });
    return found == states.end() ? nullptr : &*found;
}

CommandState stateAtStart(const CommandRow& row) {
    return {row.name.toString(), !has(row.state, RowState::Hidden),
            !has(row.state, RowState::Disabled | RowState::OfPage), has(row.state, RowState::Checked),
            has(row.state, RowState::Lockable)};
}

}  // namespace

CommandStates::CommandStates() {
    for (const CommandRow& row : toolbarRows())
        if (!row.name.empty()) buttons_.push_back(stateAtStart(row));
    for (const CommandBar& bar : menuBars())
        for (const CommandRow& row : bar.rows) menus_.push_back(stateAtStart(row));
}

template <class Change>
void CommandStates::changeButton(QStringView key, Change change) {
    CommandState* state = findIn(buttons_, key);
    if (!state) return;
    change(*state);
    if (buttonChanged) buttonChanged(shown(*state));
}

template <class Change>
void CommandStates::changeMenu(QStringView item, Change change) {
    CommandState* state = findIn(menus_, item);
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
    const CommandState* state = findIn(buttons_, key);
    return state ? shown(*state) : CommandState{{}, false, false};
}

CommandState CommandStates::menu(QStringView item) const {
    const CommandState* state = findIn(menus_, item);
    return state ? shown(*state) : CommandState{{}, false, false};
}

CommandState CommandStates::shown(const CommandState& state) const {
    CommandState result = state;
    if (locked_ && state.lockable) result.enabled = false;
    return result;
}

}  // namespace lirovan::shell
