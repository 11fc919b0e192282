// Every menu item and toolbar button of the main window: what it is called, how it starts and what it does.
// Menus, toolbar, tooltips and states are made from these rows. A new command is a row in
// ui/command_table.cpp and the function that the row names.
#pragma once

#include <QStringView>
#include <cstdint>
#include <span>

namespace lirovan::shell {

class ChildWindows;

/// How a row starts, and what it keeps while the program runs. Values are combined with `|`.
enum class RowState : std::uint8_t {
    Plain = 0,
    Hidden = 1,
    Disabled = 2,
    Checked = 4,   ///< has a check mark, set after start-up
    Lockable = 8,  ///< disabled while a search or summary runs: would change the page or start another run
    OfPage = 16,   ///< in a menu: disabled while the shared content window shows no page, as at the start
};
constexpr RowState operator|(RowState a, RowState b) {
    return RowState(std::uint8_t(a) | std::uint8_t(b));
}
constexpr bool has(RowState state, RowState part) {
    return (std::uint8_t(state) & std::uint8_t(part)) != 0;
}

/// A separator runs nothing; a spacer is a separator that takes the free room of its toolbar.
struct CommandRow {
    QStringView name;          ///< of the menu item or the button; empty for a plain separator
    QStringView caption = {};  ///< in a menu with its access key; of a button the tooltip
    QStringView key = {};      ///< "Ctrl+E", or several: "Ctrl++; Ctrl+="
    RowState state = RowState::Plain;
    void (*run)(ChildWindows&) = nullptr;
    QStringView opens = {};  ///< the pop-up menu, one of those above its own; such a row runs nothing

    bool isSeparator() const { return !run && opens.empty(); }
};

struct CommandBar {
    QStringView name;     ///< "mnu_AnaMenu"
    QStringView caption;  ///< empty: a pop-up menu that is not on the menu bar
    std::span<const CommandRow> rows;
};

/// Toolbar1, left to right.
std::span<const CommandRow> toolbarRows();

/// The menu bar, left to right, and the pop-up menus among them.
std::span<const CommandBar> menuBars();

/// The row of a button on Toolbar1.
const CommandRow& toolbarRow(QStringView button);

/// Texts that the commands put on panel 1 of the status bar.
namespace status {
inline constexpr QStringView Idle = u"Veskaran`nin Lirovan", Arama = u"Arama Penceresi",
                             Kitaplar = u"Arama Penceresi - Kitaplar", Bul = u"Arama Penceresi - Arama",
                             Icerik = u"İçerik Penceresi";
}  // namespace status

}  // namespace lirovan::shell
