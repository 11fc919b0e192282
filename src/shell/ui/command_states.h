// What is visible, enabled and checked among the toolbar buttons and menu items. Windows change it through
// the main window; the widgets only show it.
//
// Unknown names are ignored.
#pragma once

#include <QString>
#include <QStringView>
#include <functional>
#include <vector>

namespace lirovan::shell {

struct CommandState {
    QString name;
    bool visible = true;
    bool enabled = true;
    bool checked = false;
    bool lockable = false;  ///< disabled while a search or summary runs
};

class CommandStates {
  public:
    /// The state after start-up.
    CommandStates();

    /// Called after every change with the state as it is to be shown (enabled false while locked).
    std::function<void(const CommandState&)> buttonChanged;
    std::function<void(const CommandState&)> menuChanged;

    void setButtonVisible(QStringView key, bool visible);
    void setButtonEnabled(QStringView key, bool enabled);
    void setMenuVisible(QStringView item, bool visible);
    void setMenuEnabled(QStringView item, bool enabled);
    void setMenuChecked(QStringView item, bool checked);
    /// While locked, whatever would change the page or start another run is shown disabled; the states set
    /// meanwhile count when the lock ends.
    void setLocked(bool locked);

    /// As shown. An unknown name gives a state that is neither visible nor enabled.
    CommandState button(QStringView key) const;
    CommandState menu(QStringView item) const;

  private:
    CommandState shown(const CommandState& state) const;
    template <class Change>
    void changeButton(QStringView key, Change change);
    template <class Change>
    void changeMenu(QStringView item, Change change);

    std::vector<CommandState> buttons_;
    std::vector<CommandState> menus_;
    bool locked_ = false;
};

}  // namespace lirovan::shell
