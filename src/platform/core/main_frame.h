// What the child windows may do to the main window. KitaplarMDI implements it; tests fake it. Nothing below
// the shell knows the main window itself.
#pragma once

#include <QString>
#include <QStringView>

#include "platform/core/twips.h"

namespace lirovan::platform {

/// Keys of the main toolbar's buttons. Sep1 to Sep4 and the spacer "bosluk" are addressed like buttons.
namespace button {
inline constexpr QStringView Kitap = u"tlbtn_Kitap", Arama = u"tlbtn_Arama", Icerik = u"tlbtn_Icerik",
                             Cut = u"cut", Copy = u"copy", Paste = u"paste", Sep1 = u"Sep1", Not = u"not",
                             Sep2 = u"Sep2", Print = u"print", Bosluk = u"bosluk", Buyult = u"buyult",
                             Kucult = u"kucult", Sep3 = u"Sep3", New = u"New", Sep4 = u"Sep4", Up = u"Up",
                             Down = u"Down";
}  // namespace button

/// Menu items that other windows check, enable or show.
namespace menu {
inline constexpr QStringView Arama = u"mnu_Arama", Icerik = u"mnu_Icerik", Kes = u"mnu_kes",
                             Kopyala = u"mnu_Kopyala", Yapistir = u"mnu_Yapistir", Yazdir = u"mnu_yazdir",
                             Sep2 = u"sep2";
}  // namespace menu

/// What the book selector cmb_Kitaplar says to search.
struct BookSelection {
    QString text;         ///< the row's text, "<Lirovan>" for all books
    qint64 authorId = 0;  ///< 0: all authors
    qint64 bookId = 0;    ///< 0: all books of the author
};

class MainFrame {
  public:
    virtual ~MainFrame() = default;

    // Toolbar1
    virtual void setButtonVisible(QStringView key, bool visible) = 0;
    virtual void setButtonEnabled(QStringView key, bool enabled) = 0;
    virtual void setSpacerWidth(Twips width) = 0;  ///< of "bosluk"

    // Menus
    virtual void setMenuChecked(QStringView item, bool checked) = 0;
    virtual bool isMenuChecked(QStringView item) const = 0;
    virtual void setMenuEnabled(QStringView item, bool enabled) = 0;
    virtual void setMenuVisible(QStringView item, bool visible) = 0;
    /// Opens mnu_yazi or mnu_listele as a pop-up at the mouse.
    virtual void popUpMenu(QStringView item) = 0;

    // StatusBar1, panels 1 to 3
    virtual void setPanelText(int panel, const QString& text) = 0;
    virtual void setPanelVisible(int panel, bool visible) = 0;

    /// Shows a text in place of the panels, for a while or until one of them changes.
    virtual void showPassingText(const QString& text) = 0;

    // prg_gosterge and lbl_tool beside it. The main window places them; a width of lbl_tool is its least
    // width.
    virtual void setProgressVisible(bool visible) = 0;
    virtual void setProgressMaximum(int maximum) = 0;
    virtual void setProgressValue(int value) = 0;  ///< cut to the maximum
    virtual void setToolTextVisible(bool visible) = 0;
    virtual void setToolText(const QString& text) = 0;
    virtual void setToolTextWidth(Twips width) = 0;

    // lbl_toolkitap and cmb_Kitaplar
    virtual void setSelectorVisible(bool visible) = 0;
    virtual BookSelection selectedBooks() const = 0;

    // The window itself
    virtual Twips width() const = 0;
    virtual Twips height() const = 0;
    virtual void setBusyPointer(bool busy) = 0;
    /// While set, every command that would change the page or start another run is disabled.
    virtual void setCommandsLocked(bool locked) = 0;

    // Page font size in pixels, and hit navigation of the shared content window
    virtual int fontSize() const = 0;
    virtual void FontSize(int pixels) = 0;
    virtual void ReOrderPos() = 0;
    virtual void SetPosZero() = 0;
};

}  // namespace lirovan::platform
