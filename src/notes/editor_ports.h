// What the note editor needs of its window: an edit box, toolbar and menus, the clipboard. Ports: the widgets
// in ui/ implement them, tests fake them.
#pragma once

#include <QPoint>
#include <QString>
#include <QStringView>
#include <optional>

#include "platform/core/printing.h"
#include "platform/core/rtf/document.h"
#include "platform/core/twips.h"

namespace lirovan::notes {

/// Keys of the editor's Toolbar1, in order; separators stand after "save" and between the groups.
namespace key {
inline constexpr QStringView New = u"new", Open = u"open", Save = u"save", Cut = u"cut", Copy = u"copy",
                             Paste = u"paste", Print = u"print", Bold = u"bold", Italic = u"italic",
                             Underline = u"underline", Kirmizi = u"kirmizi", Mavi = u"mavi", Yesil = u"yesil",
                             Siyah = u"siyah";
}  // namespace key

/// Menu items of the editor.
namespace item {
inline constexpr QStringView Yeni = u"mnu_Yeni", Ac = u"mnu_ac", Kaydet = u"mnu_Kaydet",
                             Yazdir = u"mnu_Yazdir", Cikis = u"mnu_cikis", Buyult = u"mnu_yBuyult",
                             Normal = u"mnu_yNormal", Kucult = u"mnu_yKucult", Kes = u"mnu_Kes",
                             Kopyala = u"mnu_Kopyala", Yapistir = u"mnu_Yapistir";
}  // namespace item

enum class Style { Bold, Italic, Underline };

/// A rich edit box: txt_Icerik, and the scratch box txt_Icerik2.
class RichBox {
  public:
    virtual ~RichBox() = default;
    virtual QString plainText() const = 0;
    virtual platform::rtf::Document document() const = 0;
    virtual void setDocument(const platform::rtf::Document& document) = 0;
    /// Shows a NotRTF and gives its text as the box holds it. Nothing when that was stopped: all is as it
    /// was.
    virtual std::optional<platform::rtf::Document> load(const QString& notRtf) = 0;

    /// The cursor goes behind the last letter, and into view.
    virtual void moveToEnd() = 0;
    virtual bool hasSelection() const = 0;
    virtual platform::rtf::Document selection() const = 0;
    virtual void replaceSelection(const platform::rtf::Document& document) = 0;
    /// The clipboard's text in place of the selection; without any text the selection stays.
    virtual void paste() = 0;

    // Of the selection, or of what would be typed at the cursor. Nothing: mixed.
    virtual std::optional<bool> style(Style style) const = 0;
    virtual void setStyle(Style style, bool on) = 0;
    virtual std::optional<platform::rtf::Rgb> color() const = 0;  ///< the box's own text colour is black
    virtual void setColor(platform::rtf::Rgb color) = 0;

    /// Size of the box's font in points. Setting it changes all text.
    virtual double fontSize() const = 0;
    virtual void setFontSize(double points) = 0;
    virtual void setFocus() = 0;
};

class EditorWindow {
  public:
    virtual ~EditorWindow() = default;
    virtual void setCaption(const QString& caption) = 0;
    /// Where on the screen a point of the window lies, counted from its top left corner.
    virtual QPoint onScreen(platform::Twips x, platform::Twips y) const = 0;
    virtual void setButtonPressed(QStringView key, bool pressed) = 0;
    virtual void setButtonEnabled(QStringView key, bool enabled) = 0;
    virtual void setItemEnabled(QStringView item, bool enabled) = 0;
    virtual void popUpSizes() = 0;    ///< mnu_yazi where it was asked for
    virtual void showNoteList() = 0;  ///< frm_NotList, modal
    virtual void closeWindow() = 0;   ///< runs the closing step
    /// Prints the edit box's selection or its whole text; false when the printer is of no use.
    virtual bool print(const platform::PrintTarget& target) = 0;
};

class NoteClipboard {
  public:
    virtual ~NoteClipboard() = default;
    virtual void put(const platform::rtf::Document& document) = 0;
    virtual bool hasText() const = 0;  ///< in any form
};

}  // namespace lirovan::notes
