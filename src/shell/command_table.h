// Every menu item and toolbar button of the main window as data: names, captions, shortcuts, tooltips and the
// state after start-up. The window is built from these tables; what a command does is in commands.h.
#pragma once

#include <QStringView>
#include <span>

namespace lirovan::shell {

enum class ButtonStyle { Button, Separator, Spacer };

struct ToolButton {
    QStringView key;      ///< empty for the plain separator
    QStringView tooltip;  ///< empty: the button shows none
    QStringView name;     ///< read out by screen readers; shown when the button does not fit on the toolbar
    ButtonStyle style = ButtonStyle::Button;
    bool visible = true;  ///< after start-up
    bool enabled = true;  ///< after start-up
};

struct MenuItem {
    QStringView name;
    QStringView caption;  ///< with its access key behind an ampersand; empty for a separator
    QStringView shortcut = {};
    bool visible = true;
    bool checkable = false;  ///< such an item starts checked

    bool isSeparator() const { return caption.empty(); }
};

struct Menu {
    QStringView name;
    QStringView caption;  ///< empty: a pop-up menu that is not on the menu bar
    std::span<const MenuItem> items;
};

/// Toolbar1, left to right.
std::span<const ToolButton> toolbarTable();

/// The menu bar, left to right, and the pop-up menus among them.
std::span<const Menu> menuTable();

/// Texts that the commands put on panel 1 of the status bar.
namespace status {
inline constexpr QStringView Idle = u"Veskaran`nin Lirovan", Arama = u"Arama Penceresi",
                             Kitaplar = u"Arama Penceresi - Kitaplar", Bul = u"Arama Penceresi - Arama",
                             Icerik = u"İçerik Penceresi";
}  // namespace status

}  // namespace lirovan::shell
