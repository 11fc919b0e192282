#include "notes/ui/note_commands.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <span>

#include "notes/ui/note_editor.h"
#include "platform/ui/icons.h"

namespace lirovan::notes {

using namespace Qt::StringLiterals;

/// A row without a command is a separator.
struct NoteRow {
    QStringView name = {};  ///< of the menu item or the button, whose icon it names too
    NoteCommand command = NoteCommand::None;
    QStringView caption = {};  ///< in a menu with its access key; of a button the tooltip
    QStringView key = {};      ///< of a button only where no item has it
    void (*run)(NoteEditor&) = nullptr;
};

namespace {

using enum NoteCommand;
using E = NoteEditor;

constexpr NoteRow Toolbar[] = {
    {u"new", New, u"Yeni", {}, [](E& e) { e.newNote(); }},
    {u"open", Open, u"Aç", {}, [](E& e) { e.open(); }},
    {u"save", Save, u"Kaydet", {}, [](E& e) { e.save(); }},
    {},
    {u"cut", Cut, u"Kes", {}, [](E& e) { e.cut(); }},
    {u"copy", Copy, u"Kopyala", {}, [](E& e) { e.copy(); }},
    {u"paste", Paste, u"Yapıştır", {}, [](E& e) { e.paste(); }},
    {},
    {u"print", PrintDirectly, u"Yazdır", {}, [](E& e) { e.printDirectly(); }},
    {},
    {u"bold", Bold, u"Kalın", u"Ctrl+B", [](E& e) { e.toggle(Bold); }},
    {u"italic", Italic, u"İtalik", u"Ctrl+I", [](E& e) { e.toggle(Italic); }},
    {u"underline", Underline, u"Altı Çizili", u"Ctrl+U", [](E& e) { e.toggle(Underline); }},
    {},
    {u"kirmizi", Red, u"Kırmızı", {}, [](E& e) { e.toggleColor(Red); }},
    {u"mavi", Blue, u"Mavi", {}, [](E& e) { e.toggleColor(Blue); }},
    {u"yesil", Green, u"Yeşil", {}, [](E& e) { e.toggleColor(Green); }},
    {u"siyah", Black, u"Siyah", {}, [](E& e) { e.toggleColor(Black); }},
};

constexpr NoteRow Dosya[] = {
    {u"mnu_Yeni", New, u"Ye&ni", u"Ctrl+N", [](E& e) { e.newNote(); }},
    {u"mnu_ac", Open, u"&Aç", u"Ctrl+O", [](E& e) { e.open(); }},
    {u"mnu_Kaydet", Save, u"Kayde&t", u"Ctrl+S", [](E& e) { e.save(); }},
    {},
    {u"mnu_Yazdir", PrintWithDialog, u"Ya&zdır...", u"Ctrl+P", [](E& e) { e.printWithDialog(); }},
    {},
    {u"mnu_cikis", Close, u"&Çıkış", {}, [](E& e) { e.closeWindow(); }},
};

constexpr NoteRow Yazi[] = {
    {u"mnu_yBuyult", LargerType, u"Yazı Boyutunu Büyült", {}, [](E& e) { e.stepFontSize(+1); }},
    {u"mnu_yNormal", NormalType, u"Normal Yazı Boyutu", {}, [](E& e) { e.stepFontSize(0); }},
    {u"mnu_yKucult", SmallerType, u"Yazı Boyutunu Küçült", {}, [](E& e) { e.stepFontSize(-1); }},
};

constexpr NoteRow Duzen[] = {
    {u"mnu_Kes", Cut, u"Ke&s", u"Ctrl+X", [](E& e) { e.cut(); }},
    {u"mnu_Kopyala", Copy, u"&Kopyala", u"Ctrl+C", [](E& e) { e.copy(); }},
    {u"mnu_Yapistir", Paste, u"&Yapıştır", u"Ctrl+V", [](E& e) { e.paste(); }},
};

/// A menu without a caption pops up.
struct NoteMenu {
    QStringView name;
    QStringView caption;
    std::span<const NoteRow> rows;
};

constexpr NoteMenu Menus[] = {
    {u"mnu_Dosya", u"Do&sya", Dosya}, {u"mnu_yazi", {}, Yazi}, {u"mnu_Duzen", u"&Düzen", Duzen}};

}  // namespace

// The main window has items with the same keys; within this window its own come first (see
// frm_IcerikCopy::event()).
void NoteActions::add(QMainWindow& window, QAction& action, const NoteRow& row) {
    action.setObjectName(row.name.toString());
    action.setShortcutContext(Qt::WidgetWithChildrenShortcut);
    action.setShortcut(QKeySequence(row.key.toString()));
    window.addAction(&action);
    actions_.insert(row.command, &action);
}

void NoteActions::make(QMainWindow& window, NoteEditor& editor) {
    window.menuBar()->setNativeMenuBar(false);
    for (const NoteMenu& bar : Menus) {
        QMenu* menu = bar.caption.isEmpty() ? sizes_ = new QMenu(&window)
                                            : window.menuBar()->addMenu(bar.caption.toString());
        menu->setObjectName(bar.name.toString());
        for (const NoteRow& row : bar.rows) {
            QAction* action = row.run ? menu->addAction(row.caption.toString()) : menu->addSeparator();
            if (!row.run) continue;
            add(window, *action, row);
            QObject::connect(action, &QAction::triggered, &window, [&editor, &row] { row.run(editor); });
        }
    }
    QToolBar* toolbar = window.addToolBar(u"Araç Çubuğu"_s);
    toolbar->setObjectName(u"Toolbar1"_s);
    toolbar->setMovable(false);
    toolbar->setContextMenuPolicy(Qt::PreventContextMenu);
    toolbar->setIconSize({20, 20});
    for (const NoteRow& row : Toolbar) {
        QAction* action = row.run ? toolbar->addAction(platform::icon(row.name), row.caption.toString())
                                  : toolbar->addSeparator();
        if (!row.run) continue;
        add(window, *action, row);
        action->setCheckable(row.command >= Bold);
        if (!row.key.isEmpty()) action->setToolTip(u"%1 (%2)"_s.arg(row.caption, row.key));
        QObject::connect(action, &QAction::triggered, &window, [&editor, &row] {
            row.run(editor);
            editor.refreshState();
        });
        QWidget* widget = toolbar->widgetForAction(action);
        widget->setObjectName(row.name.toString());
        widget->setAccessibleName(row.caption.toString());
        widget->setFocusPolicy(Qt::TabFocus);
    }
    for (const NoteCommand command : {Cut, Copy, Paste}) setEnabled(command, false);
}

void NoteActions::setEnabled(NoteCommand command, bool enabled) {
    for (QAction* action : actions_.values(command)) action->setEnabled(enabled);
}

void NoteActions::setPressed(NoteCommand command, bool pressed) {
    for (QAction* action : actions_.values(command)) action->setChecked(pressed);
}

void NoteActions::popUpSizes(QPoint place) {
    sizes_->popup(place);
}

}  // namespace lirovan::notes
