#include "soak/actions.h"

#include <QCheckBox>
#include <QComboBox>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QStyleOptionTitleBar>
#include <QTextEdit>
#include <QToolButton>
#include <QTreeView>

#include "platform/ui/web_view.h"
#include "soak/user_input.h"

namespace lirovan::soak {

using namespace Qt::StringLiterals;

namespace {

template <class List>
auto& any(World& world, List& list) {
    return list[world.chance().bounded(int(std::size(list)))];
}

bool oneIn(World& world, int n) {
    return world.chance().bounded(n) == 0;
}

QPoint somewhere(World& world, const QWidget& widget) {
    return {world.chance().bounded(qMax(1, widget.width())),
            world.chance().bounded(qMax(1, widget.height()))};
}

/// Clicks the visible control of this name, if there is one.
QString press(World& world, const QString& name) {
    QWidget* control = world.usable(name);
    if (!control) return name + u": not there"_s;
    click(*control);
    return name;
}

/// Clicks the close button in the title bar of a child window.
void pressClose(const QMdiSubWindow& child) {
    QStyleOptionTitleBar bar;
    bar.initFrom(&child);
    bar.rect.setHeight(child.style()->pixelMetric(QStyle::PM_TitleBarHeight, &bar, &child));
    bar.titleBarFlags = child.windowFlags();
    bar.subControls = QStyle::SC_All;
    click(child, child.style()
                     ->subControlRect(QStyle::CC_TitleBar, &bar, QStyle::SC_TitleBarCloseButton, &child)
                     .center());
}

// ---- While something goes on ----

/// Something that the user does at some moment of a search, a summary or a page's loading.
QString meanwhile(World& world) {
    const int ms = world.chance().bounded(60);
    struct Deed {
        QString name;
        std::function<void()> act;
    };
    const Deed deeds[] = {
        {u"stop"_s, [&world] { press(world, oneIn(world, 2) ? u"cmdDur"_s : u"cmd_Stop"_s); }},
        {u"books"_s, [&world] { press(world, u"tlbtn_Kitap"_s); }},
        {u"page"_s, [&world] { press(world, u"tlbtn_Icerik"_s); }},
        {u"type size"_s, [&world] { press(world, u"buyult"_s); }},
        {u"new window"_s, [&world] { key(world.window(), Qt::Key_E, Qt::ControlModifier); }},
        {u"hide browse window"_s, [&world] { key(world.window(), Qt::Key_A, Qt::ControlModifier); }},
        {u"unload page"_s, [&world] { key(world.window(), Qt::Key_I, Qt::ControlModifier); }},
        {u"notebook"_s, [&world] { key(world.window(), Qt::Key_N, Qt::ControlModifier); }},
        {u"click"_s, [&world] { click(world.window(), somewhere(world, world.window())); }},
        {u"resize"_s,
         [&world] {
             world.window().showNormal();
             world.window().resize(500 + world.chance().bounded(500), 350 + world.chance().bounded(400));
         }},
        {u"close child"_s,
         [&world] {
             const auto children = world.children();
             if (!children.isEmpty()) pressClose(*any(world, children));
         }},
        {u"close program"_s,
         [&world] {
             if (oneIn(world, 4)) world.window().close();
         }},
    };
    const Deed& deed = any(world, deeds);
    world.later(ms, deed.act);
    return u" and "_s + deed.name + u" after "_s + QString::number(ms) + u" ms"_s;
}

QString perhapsMeanwhile(World& world, int oneInN) {
    return oneIn(world, oneInN) ? meanwhile(world) : QString();
}

// ---- Trees ----

/// A node at a chance place of the tree, what is above it opened.
QModelIndex anyNode(World& world, QTreeView& tree) {
    QModelIndex at;
    for (int depth = 0; depth < 4; ++depth) {
        const int rows = tree.model()->rowCount(at);
        if (rows == 0 || (depth > 1 && oneIn(world, 8))) break;
        if (at.isValid()) tree.expand(at);
        at = tree.model()->index(world.chance().bounded(rows), 0, at);
    }
    return at;
}

/// Brings the tab `tab` to the front and clicks a node of its tree.
QString clickNode(World& world, const QString& name, const QString& tab) {
    auto* hidden = world.find<QTreeView>(name);
    if (!hidden) return press(world, tab);
    const QPersistentModelIndex node(anyNode(world, *hidden));
    press(world, tab);
    if (!node.isValid()) return u"empty"_s;
    world.later(1, [&world, name, node] {
        auto* tree = qobject_cast<QTreeView*>(world.usable(name));
        if (!tree || !node.isValid() || node.model() != tree->model()) return;
        tree->scrollTo(node);
        click(*tree->viewport(), tree->visualRect(node).intersected(tree->viewport()->rect()).center());
    });
    return node.data().toString().left(30);
}

QString openTopic(World& world) {
    return clickNode(world, u"tvw_Kitaplar"_s, u"tlbtn_Kitap"_s) + perhapsMeanwhile(world, 6);
}

QString openFound(World& world) {
    return clickNode(world, u"tvw_Kitaplar_Bul"_s, u"tlbtn_Arama"_s) + perhapsMeanwhile(world, 3);
}

QString moveInTree(World& world) {
    const QString name = oneIn(world, 2) ? u"tvw_Kitaplar"_s : u"tvw_Kitaplar_Bul"_s;
    auto* tree = qobject_cast<QTreeView*>(world.usable(name));
    if (!tree) return u"no tree"_s;
    if (oneIn(world, 3)) {
        doubleClick(*tree->viewport(), somewhere(world, *tree->viewport()));
        return name + u" double click"_s;
    }
    tree->setFocus();
    constexpr Qt::Key Keys[] = {Qt::Key_Down, Qt::Key_Up,       Qt::Key_Left,   Qt::Key_Right,   Qt::Key_Home,
                                Qt::Key_End,  Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Asterisk};
    for (int n = 1 + world.chance().bounded(8); n > 0; --n) key(*tree, any(world, Keys));
    if (oneIn(world, 2)) key(*tree, Qt::Key_Return);
    return name + u" by keys"_s;
}

// ---- Searching ----

QString query(World& world) {
    static const QString Words[] = {u"su"_s,    u"dağ"_s,     u"kervan"_s, u"Kuran"_s, u"kör kuyu"_s,
                                    u"deniz"_s, u"ve"_s,      u"İ"_s,      u"ı"_s,     u"yıldız"_s,
                                    u"ki"_s,    u"\"su ve"_s, u"100%_"_s,  u"a"_s,     u"bahçe'nin"_s,
                                    u"&<b>"_s,  u""_s,        u"zzqqxx"_s, u"taş"_s,   u"  gece   ay "_s,
                                    u"â"_s,     u"...?"_s,    u"el yol"_s, u"ra"_s,    u"anlat"_s};
    QString text = any(world, Words);
    while (oneIn(world, 3)) text += u' ' + any(world, Words);
    return text;
}

QString search(World& world) {
    press(world, u"tlbtn_Arama"_s);
    QString said;
    for (const QString& option : {u"chk_BKD"_s, u"chk_TMK"_s, u"chk_HPI"_s, u"chk_FindWith"_s})
        if (auto* box = world.find<QCheckBox>(option); box && oneIn(world, 4)) {
            box->setChecked(!box->isChecked());
            said += option + u' ';
        }
    // Results pile up without it, as they should; here they would be taken for a leak.
    if (auto* clear = world.find<QCheckBox>(u"chk_ClearResult"_s)) clear->setChecked(!oneIn(world, 5));
    const QString text = query(world);
    world.later(0, [&world, text, byKey = oneIn(world, 2)] {
        QWidget* box = world.usable(u"txt_Bul"_s);
        if (!box) return;
        box->setFocus();
        key(*box, Qt::Key_Home);
        key(*box, Qt::Key_End, Qt::ShiftModifier);
        key(*box, Qt::Key_Delete);
        type(*box, text);
        if (byKey)
            key(*box, Qt::Key_Return);
        else
            press(world, u"cmd_Bul"_s);
    });
    return said + u'"' + text + u'"' + perhapsMeanwhile(world, 3);
}

QString sortAgain(World& world) {
    auto* tree = qobject_cast<QTreeView*>(world.usable(u"tvw_Kitaplar_Bul"_s));
    if (!tree) return u"no tree"_s;
    click(*tree->viewport(), somewhere(world, *tree->viewport()), Qt::RightButton);
    return perhapsMeanwhile(world, 4);
}

QString chooseBooks(World& world) {
    auto* selector = qobject_cast<QComboBox*>(world.usable(u"cmb_Kitaplar"_s));
    if (!selector) return u"no selector"_s;
    selector->setFocus();
    constexpr Qt::Key Keys[] = {Qt::Key_Down, Qt::Key_Up, Qt::Key_Home, Qt::Key_PageDown};
    for (int n = 1 + world.chance().bounded(4); n > 0; --n) key(*selector, any(world, Keys));
    return {};
}

// ---- Pages ----

QString pageButton(World& world) {
    const QString keys[] = {u"Up"_s, u"Down"_s, u"Down"_s, u"buyult"_s, u"kucult"_s, u"copy"_s, u"print"_s};
    const QString chosen = any(world, keys);
    for (int n = world.chance().bounded(4); n >= 0; --n) press(world, chosen);
    return chosen + perhapsMeanwhile(world, 6);
}

QString inPage(World& world) {
    QList<platform::WebView*> pages = world.window().findChildren<platform::WebView*>();
    pages.removeIf([](const QWidget* page) { return !page->isVisible(); });
    if (pages.isEmpty()) return u"no page"_s;
    const platform::WebView& page = *any(world, pages);
    switch (world.chance().bounded(5)) {
        case 0:
            click(page, somewhere(world, page), Qt::RightButton);
            return u"right click"_s;
        case 1:
            drag(page, somewhere(world, page), somewhere(world, page));
            key(page, Qt::Key_C, Qt::ControlModifier);
            return u"select and copy"_s;
        case 2:
            // The margin around the page is the window's own surface.
            click(*page.parentWidget(), {1, page.parentWidget()->height() / 2}, Qt::RightButton);
            return u"zoom menu"_s;
        case 3: {
            click(page, somewhere(world, page));
            constexpr Qt::Key Keys[] = {Qt::Key_PageDown, Qt::Key_End, Qt::Key_Home, Qt::Key_Tab};
            key(page, any(world, Keys));
            return u"keys"_s;
        }
        default:
            click(page, somewhere(world, page));
            return u"click"_s;
    }
}

QString newWindow(World& world) {
    if (world.window().windows().extraWindows().open().size() > 4) return u"enough"_s;
    if (oneIn(world, 2))
        press(world, u"New"_s);
    else
        key(world.window(), Qt::Key_E, Qt::ControlModifier);
    return perhapsMeanwhile(world, 3);
}

QString extraWindow(World& world) {
    const auto open = world.window().windows().extraWindows().open();
    if (open.empty()) return u"none"_s;
    shell::frm_IcerikN* chosen = any(world, open);
    if (oneIn(world, 3)) {
        chosen->bringForward();
        pressClose(*chosen);
        return u"close"_s;
    }
    chosen->bringForward();
    QList<QToolButton*> buttons = chosen->findChildren<QToolButton*>();
    buttons.removeIf([](const QWidget* button) { return !button->isVisible() || !button->isEnabled(); });
    if (buttons.isEmpty()) return u"no button"_s;
    const QToolButton* button = any(world, buttons);
    click(*button);
    return button->objectName() + perhapsMeanwhile(world, 6);
}

// ---- Notebook ----

QString note(World& world) {
    auto* box = world.find<QTextEdit>(u"txt_Icerik"_s);
    if (!box || !box->isVisible()) {
        key(world.window(), Qt::Key_N, Qt::ControlModifier);
        return u"open"_s;
    }
    QWidget* editor = box->window();
    for (QWidget* at = box; at; at = at->parentWidget())
        if (at->objectName() == u"frm_IcerikCopy") editor = at;
    if (auto* child = qobject_cast<QMdiSubWindow*>(editor->parentWidget()))
        world.find<QMdiArea>(u"workArea"_s)->setActiveSubWindow(child);
    box->setFocus();
    constexpr Qt::Key Commands[] = {Qt::Key_S, Qt::Key_N, Qt::Key_O, Qt::Key_V, Qt::Key_X, Qt::Key_P};
    switch (world.chance().bounded(6)) {
        case 0:
            key(*box, any(world, Commands), Qt::ControlModifier);
            return u"command"_s;
        case 1:
            for (int n = world.chance().bounded(12); n > 0; --n) key(*box, Qt::Key_Left, Qt::ShiftModifier);
            [[fallthrough]];
        case 2: {
            QList<QToolButton*> buttons = editor->findChildren<QToolButton*>();
            buttons.removeIf([](const QWidget* each) { return !each->isVisible() || !each->isEnabled(); });
            if (!buttons.isEmpty()) click(*any(world, buttons));
            return u"button"_s;
        }
        case 3:
            click(*box->viewport(), somewhere(world, *box->viewport()), Qt::RightButton);
            return u"sizes"_s;
        case 4:
            if (oneIn(world, 3)) {
                pressClose(*qobject_cast<QMdiSubWindow*>(editor->parentWidget()));
                return u"close"_s;
            }
            [[fallthrough]];
        default:
            type(*box, u"Su akar, taş kalır. "_s.left(1 + world.chance().bounded(20)));
            if (oneIn(world, 4)) key(*box, Qt::Key_Return);
            return u"write"_s;
    }
}

// ---- Windows and menus ----

QString childWindow(World& world) {
    const auto children = world.children();
    if (children.isEmpty()) return u"none"_s;
    QMdiSubWindow& child = *any(world, children);
    const auto& area = *world.find<QMdiArea>(u"workArea"_s);
    QString deed;
    switch (world.chance().bounded(7)) {
        case 0:
            child.showMinimized();
            deed = u"minimise"_s;
            break;
        case 1:
            child.showMaximized();
            deed = u"maximise"_s;
            break;
        case 2:
            pressClose(child);
            deed = u"close"_s;
            break;
        case 3:
            child.resize(somewhere(world, area).x() + 100, somewhere(world, area).y() + 80);
            deed = u"resize"_s;
            break;
        case 4:
            drag(child, {60, 10}, somewhere(world, area));
            deed = u"move"_s;
            break;
        default:
            child.showNormal();
            deed = u"restore"_s;
    }
    return deed + u' ' + child.objectName();
}

QString mainWindow(World& world) {
    shell::KitaplarMDI& window = world.window();
    switch (world.chance().bounded(4)) {
        case 0:
            window.showMinimized();
            world.later(20, [&window] { window.showNormal(); });
            return u"minimise"_s;
        case 1:
            window.showMaximized();
            return u"maximise"_s;
        default:
            window.showNormal();
            window.resize(480 + world.chance().bounded(800), 320 + world.chance().bounded(500));
            return u"resize"_s;
    }
}

QString shortcut(World& world) {
    struct Chord {
        Qt::Key code;
        Qt::KeyboardModifiers modifiers;
    };
    constexpr Chord Chords[] = {{Qt::Key_A, Qt::ControlModifier},
                                {Qt::Key_I, Qt::ControlModifier},
                                {Qt::Key_Y, Qt::ControlModifier},
                                {Qt::Key_C, Qt::ControlModifier},
                                {Qt::Key_V, Qt::ControlModifier},
                                {Qt::Key_X, Qt::ControlModifier},
                                {Qt::Key_Tab, Qt::ControlModifier},
                                {Qt::Key_F6, {}},
                                {Qt::Key_F6, Qt::ShiftModifier},
                                {Qt::Key_Minus, Qt::AltModifier},
                                {Qt::Key_Escape, {}},
                                {Qt::Key_Tab, {}},
                                {Qt::Key_Space, {}},
                                {Qt::Key_F4, Qt::ControlModifier}};
    const Chord chord = any(world, Chords);
    key(world.window(), chord.code, chord.modifiers);
    return QKeySequence(chord.code | chord.modifiers).toString() + perhapsMeanwhile(world, 10);
}

QString menu(World& world) {
    const auto bars = world.window().findChildren<QMenuBar*>();
    const QMenuBar& bar = *any(world, bars);
    const auto menus = bar.actions();
    if (!bar.isVisible() || menus.isEmpty()) return u"none"_s;
    QAction* chosen = any(world, menus);
    click(bar, bar.actionGeometry(chosen).center());
    return chosen->text();
}

QString mainButton(World& world) {
    const QString keys[] = {u"tlbtn_Kitap"_s, u"tlbtn_Arama"_s, u"tlbtn_Icerik"_s, u"paste"_s, u"not"_s};
    return press(world, any(world, keys));
}

QString rebuild(World& world) {
    press(world, u"tlbtn_Arama"_s);
    world.later(20, [&world] { press(world, u"cmd_KelimeKontOlustur"_s); });
    return perhapsMeanwhile(world, 2);
}

QString closeProgram(World& world) {
    world.window().close();
    return {};
}

}  // namespace

const std::vector<Action>& actions() {
    static const std::vector<Action> All = {
        {u"open a topic"_s, 14, openTopic},
        {u"move in a tree"_s, 8, moveInTree},
        {u"search"_s, 14, search},
        {u"open a found node"_s, 16, openFound},
        {u"sort again"_s, 4, sortAgain},
        {u"choose books"_s, 3, chooseBooks},
        {u"page button"_s, 12, pageButton},
        {u"in a page"_s, 7, inPage},
        {u"new window"_s, 4, newWindow},
        {u"extra window"_s, 6, extraWindow},
        {u"note"_s, 10, note},
        {u"child window"_s, 7, childWindow},
        {u"main window"_s, 4, mainWindow},
        {u"shortcut"_s, 7, shortcut},
        {u"menu"_s, 4, menu},
        {u"main button"_s, 6, mainButton},
        {u"rebuild variants"_s, 1, rebuild},
        {u"close the program"_s, 1, closeProgram},
    };
    return All;
}

}  // namespace lirovan::soak
