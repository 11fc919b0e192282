// What the user does, each a small thing by mouse or keyboard on what the main window shows.
#include <QAbstractScrollArea>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QMenuBar>
#include <QStyleOptionTitleBar>
#include <QTextEdit>
#include <QToolButton>
#include <QTreeView>

#include "platform/ui/web_view.h"
#include "soak/user_input.h"
#include "soak/world.h"

namespace lirovan::soak {

using namespace Qt::StringLiterals;

namespace {

/// Clicks the usable control of this name, if there is one.
void press(World& world, const QString& name) {
    if (const QWidget* control = world.usable(name)) click(*control);
}

void pressKey(World& world, const QString& name) {
    key(world.window(), name);
}

/// Clicks one of the tool buttons that `pane` shows.
void pressAny(World& world, const QWidget& pane) {
    QList<QToolButton*> buttons = pane.findChildren<QToolButton*>();
    buttons.removeIf([](const QWidget* button) { return !button->isVisible() || !button->isEnabled(); });
    if (buttons.isEmpty()) return;
    const QToolButton& button = *world.any(buttons);
    world.details += button.objectName();
    click(button);
}

/// Presses 1 to `most` of these keys.
void keys(World& world, const QWidget& at, int most, const QString& which) {
    for (int n = 1 + world.below(most); n > 0; --n) key(at, world.anyOf(which));
}

/// Clicks the close button in the title bar of a child window.
void pressClose(const QMdiSubWindow& child) {
    QStyleOptionTitleBar bar;
    bar.initFrom(&child);
    bar.rect.setHeight(child.style()->pixelMetric(QStyle::PM_TitleBarHeight, &bar, &child));
    bar.titleBarFlags = child.windowFlags();
    bar.subControls = QStyle::SC_All;
    const QStyle& style = *child.style();
    click(child,
          style.subControlRect(QStyle::CC_TitleBar, &bar, QStyle::SC_TitleBarCloseButton, &child).center());
}

// Each gets one of its words in the table at the end.

/// A key, a control, or one of a few more things that can be done at any moment.
void doAnything(World& world, const QString& deed) {
    const auto children = world.children();
    if (deed == u"stop")
        press(world, world.anyOf(u"cmdDur cmd_Stop"_s));
    else if (deed == u"click")
        click(world.window(), world.somewhere(world.window()));
    else if (deed == u"close-child" && !children.isEmpty())
        pressClose(*world.any(children));
    else if (deed == u"close-program")
        world.window().close();
    else if (deed.startsWith(u"Ctrl+") || deed == u"Return")
        pressKey(world, deed);
    else
        press(world, deed);
}

void onMainWindow(World& world, const QString& deed) {
    shell::KitaplarMDI& window = world.window();
    if (deed == u"minimise") window.showMinimized();
    if (deed == u"minimise") world.later(20, [&window] { window.showNormal(); });
    if (deed == u"maximise") window.showMaximized();
    if (deed != u"resize") return;
    window.showNormal();
    window.resize(480 + world.below(800), 320 + world.below(500));
}

void onChildWindow(World& world, const QString& deed) {
    const auto children = world.children();
    if (children.isEmpty()) return;
    QMdiSubWindow& child = *world.any(children);
    const QPoint at = world.somewhere(*world.find<QMdiArea>(u"workArea"_s));
    world.details = child.objectName();
    if (deed == u"minimise") child.showMinimized();
    if (deed == u"maximise") child.showMaximized();
    if (deed == u"close") pressClose(child);
    if (deed == u"resize") child.resize(at.x() + 100, at.y() + 80);
    if (deed == u"move") drag(child, {60, 10}, at);
    if (deed == u"restore") child.showNormal();
}

/// Opens a chance node of the tree with what is above it, and clicks it once its tab is in front.
void clickNode(World& world, const QString& name) {
    press(world, name == u"tvw_Kitaplar" ? u"tlbtn_Kitap"_s : u"tlbtn_Arama"_s);
    auto* hidden = world.find<QTreeView>(name);
    if (!hidden) return;
    QModelIndex at;
    for (int depth = 0; depth < 4; ++depth) {
        const int rows = hidden->model()->rowCount(at);
        if (rows == 0 || (depth > 1 && world.oneIn(8))) break;
        if (at.isValid()) hidden->expand(at);
        at = hidden->model()->index(world.below(rows), 0, at);
    }
    world.details = at.data().toString().left(30);
    world.later(1, [&world, name, node = QPersistentModelIndex(at)] {
        auto* tree = world.usable<QTreeView>(name);
        if (!tree || !node.isValid() || node.model() != tree->model()) return;
        tree->scrollTo(node);
        click(*tree->viewport(), tree->visualRect(node).intersected(tree->viewport()->rect()).center());
    });
}

void moveInTree(World& world, const QString& name) {
    auto* tree = world.usable<QTreeView>(name);
    if (!tree) return;
    if (world.oneIn(3)) return doubleClick(*tree->viewport(), world.somewhere(*tree->viewport()));
    tree->setFocus();
    keys(world, *tree, 8, u"Down Up Left Right Home End PgDown PgUp *"_s);
    if (world.oneIn(2)) key(*tree, u"Return"_s);
}

void sortAgain(World& world, const QString& name) {
    auto* tree = world.usable<QTreeView>(name);
    if (tree) click(*tree->viewport(), world.somewhere(*tree->viewport()), Qt::RightButton);
}

void search(World& world, const QString& how) {
    static const QStringList Words =
        u"su|dağ|kervan|Kuran|kör kuyu|deniz|ve|İ|ı|yıldız|ki|\"su ve|100%_|a|bahçe'nin|&<b>||zzqqxx|taş|"
        "  gece   ay |â|...?|el yol|ra|anlat"_s.split(u'|');
    press(world, u"tlbtn_Arama"_s);
    for (const QString& option : {u"chk_BKD"_s, u"chk_TMK"_s, u"chk_HPI"_s, u"chk_FindWith"_s, u"chk_Ses"_s})
        if (auto* box = world.find<QCheckBox>(option); box && world.oneIn(4)) {
            box->setChecked(!box->isChecked());
            world.details += option + u' ';
        }
    // Results pile up without it, as they should; here they would be taken for a leak.
    if (auto* clear = world.find<QCheckBox>(u"chk_ClearResult"_s)) clear->setChecked(!world.oneIn(5));
    QString text = world.any(Words);
    while (world.oneIn(3)) text += u' ' + world.any(Words);
    world.details += text;
    world.later(0, [&world, text, how] {
        QWidget* box = world.usable(u"txt_Bul"_s);
        if (!box) return;
        box->setFocus();
        for (const QString& each : {u"Home"_s, u"Shift+End"_s, u"Del"_s}) key(*box, each);
        type(*box, text);
        doAnything(world, how);
    });
}

void chooseBooks(World& world, const QString& name) {
    QWidget* selector = world.usable(name);
    if (!selector) return;
    selector->setFocus();
    keys(world, *selector, 4, u"Down Up Home PgDown"_s);
}

void rebuildVariants(World& world, const QString& button) {
    press(world, u"tlbtn_Arama"_s);
    world.later(20, [&world, button] { press(world, button); });
}

void pressPageButton(World& world, const QString& button) {
    for (int n = world.below(4); n >= 0; --n) press(world, button);
}

void inPage(World& world, const QString& deed) {
    QList<platform::WebView*> pages = world.window().findChildren<platform::WebView*>();
    pages.removeIf([](const QWidget* page) { return !page->isVisible(); });
    if (pages.isEmpty()) return;
    const QWidget& page = *world.any(pages);
    const QPoint at = world.somewhere(page);
    if (deed == u"click" || deed == u"keys") click(page, at);
    if (deed == u"keys") keys(world, page, 1, u"PgDown End Home Tab"_s);
    if (deed == u"right-click") click(page, at, Qt::RightButton);
    if (deed == u"select") drag(page, at, world.somewhere(page));
    if (deed == u"select") key(page, u"Ctrl+C"_s);
    // The margin around the page is the window's own surface.
    const QWidget& around = *page.parentWidget();
    if (deed == u"zoom") click(around, {1, around.height() / 2}, Qt::RightButton);
}

void openWindow(World& world, const QString& how) {
    if (world.window().windows().extraWindows().open().size() <= 4) doAnything(world, how);
}

void onExtraWindow(World& world, const QString& deed) {
    const auto open = world.window().windows().extraWindows().open();
    if (open.empty()) return;
    shell::frm_IcerikN& chosen = *world.any(open);
    chosen.bringForward();
    deed == u"close" ? pressClose(chosen) : pressAny(world, chosen);
}

void takeNotes(World& world, const QString& deed) {
    auto* box = world.find<QTextEdit>(u"txt_Icerik"_s);
    if (!box || !box->isVisible()) return key(world.window(), u"Ctrl+N"_s);
    auto& notebook = *world.find<QMdiSubWindow>(u"notebookFrame"_s);
    world.find<QMdiArea>(u"workArea"_s)->setActiveSubWindow(&notebook);
    box->setFocus();
    const QWidget& text = *box->viewport();
    if (deed == u"command") key(*box, u"Ctrl+"_s + world.anyOf(u"S N O V X P"_s));
    if (deed == u"select") keys(world, *box, 12, u"Shift+Left"_s);
    if (deed == u"select" || deed == u"button") pressAny(world, notebook);
    if (deed == u"sizes") click(text, world.somewhere(text), Qt::RightButton);
    if (deed == u"close" && world.oneIn(3)) return pressClose(notebook);
    if (deed != u"close" && deed != u"write") return;
    type(*box, u"Su akar, taş kalır. "_s.left(1 + world.below(20)));
    if (world.oneIn(4)) key(*box, u"Return"_s);
}

// The windows about a run's hits; a few of each at most.
void studyHits(World& world, const QString& deed) {
    const bool list = world.oneIn(2);
    QList<QMdiSubWindow*> open =
        world.window().findChildren<QMdiSubWindow*>(list ? u"contextFrame"_s : u"distributionFrame"_s);
    open.removeIf([](const QWidget* window) { return !window->isVisible(); });
    if (open.isEmpty() || (deed == u"open" && open.size() < 3))
        return key(world.window(), list ? u"Ctrl+Shift+B"_s : u"Ctrl+Shift+G"_s);
    QMdiSubWindow& frame = *world.any(open);
    world.find<QMdiArea>(u"workArea"_s)->setActiveSubWindow(&frame);
    auto* rows = frame.findChild<QAbstractScrollArea*>(list ? u"lines"_s : u"strips"_s);
    if (deed == u"close") return pressClose(frame);
    if (deed == u"choose")
        for (QComboBox* box : frame.findChildren<QComboBox*>()) keys(world, *box, 2, u"Down Up End Home"_s);
    if (!rows || !rows->isVisible()) return;
    rows->setFocus();
    if (deed == u"keys") keys(world, *rows, 6, u"Down Up Left Right PgDown End Home Esc"_s);
    if (deed == u"keys" && world.oneIn(2)) key(*rows, u"Return"_s);
    if (deed == u"click") click(*rows->viewport(), world.somewhere(*rows->viewport()));
}

// What the menu "Okuma" leads to: keys of its items, a look of the page, the strip that finds on it.
void readOn(World& world, const QString& deed) {
    if (deed == u"look") {
        const QString name = world.anyOf(
            u"mnu_Beyaz mnu_Sepya mnu_Gece mnu_Masaustu mnu_Tirnakli mnu_SatirDar "
            "mnu_SatirTam mnu_AralikCok mnu_AralikNormal"_s);
        world.details = name;
        if (auto* action = world.find<QAction>(name); action && action->isEnabled()) action->trigger();
    } else if (deed == u"find") {
        pressKey(world, u"Ctrl+F"_s);
        world.later(5, [&world] {
            if (world.oneIn(2)) type(world.window(), world.anyOf(u"su ve ak zzq"_s));
            keys(world, world.window(), 4, u"Return Return Shift+Return Esc"_s);
        });
    } else {
        pressKey(world, deed);
    }
}

void openMenu(World& world, const QString&) {
    const QMenuBar& bar = *world.any(world.window().findChildren<QMenuBar*>());
    const auto menus = bar.actions();
    if (bar.isVisible() && !menus.isEmpty()) click(bar, bar.actionGeometry(world.any(menus)).center());
}

struct Action {
    QString name;
    int weight;     ///< how often among the others
    int meanwhile;  ///< once in so many times something else is done while it goes on; 0: never
    void (*act)(World&, const QString& deed);
    QString deeds;
};

const Action Actions[] = {
    {u"open a topic"_s, 14, 6, clickNode, u"tvw_Kitaplar"_s},
    {u"move in a tree"_s, 8, 0, moveInTree, u"tvw_Kitaplar tvw_Kitaplar_Bul"_s},
    {u"search"_s, 14, 3, search, u"Return cmd_Bul"_s},
    {u"open a found node"_s, 16, 3, clickNode, u"tvw_Kitaplar_Bul"_s},
    {u"sort again"_s, 4, 4, sortAgain, u"tvw_Kitaplar_Bul"_s},
    {u"choose books"_s, 3, 0, chooseBooks, u"cmb_Kitaplar"_s},
    {u"page button"_s, 12, 6, pressPageButton, u"Up Down Down buyult kucult copy print"_s},
    {u"in a page"_s, 7, 0, inPage, u"right-click select zoom keys click"_s},
    {u"new window"_s, 4, 3, openWindow, u"New Ctrl+E"_s},
    {u"extra window"_s, 6, 9, onExtraWindow, u"close button button"_s},
    {u"note"_s, 10, 0, takeNotes, u"command select button sizes close write"_s},
    {u"child window"_s, 7, 0, onChildWindow, u"minimise maximise close resize move restore restore"_s},
    {u"main window"_s, 4, 0, onMainWindow, u"minimise maximise resize resize"_s},
    {u"shortcut"_s, 7, 10, pressKey,
     u"Ctrl+A Ctrl+I Ctrl+Y Ctrl+C Ctrl+V Ctrl+X Ctrl+Tab F6 Shift+F6 Alt+- Esc Tab Space Ctrl+F4"_s},
    {u"hits"_s, 6, 6, studyHits, u"open keys keys click click choose close"_s},
    {u"read on"_s, 10, 6, readOn,
     u"Alt+Left Alt+Left Alt+Right Ctrl+PgUp Ctrl+PgDown F3 F3 Shift+F3 Ctrl+D Ctrl+Shift+D Ctrl+K "
     "Ctrl+Shift+K Ctrl+Shift+C Ctrl++ Ctrl+- Ctrl+0 look look find find"_s},
    {u"menu"_s, 4, 0, openMenu, {}},
    {u"main button"_s, 6, 0, doAnything, u"tlbtn_Kitap tlbtn_Arama tlbtn_Icerik paste not"_s},
    {u"rebuild variants"_s, 1, 2, rebuildVariants, u"cmd_KelimeKontOlustur"_s},
    {u"close the program"_s, 1, 0, doAnything, u"close-program"_s},
};

/// What is done at some moment of a search, a summary or a page's loading; the program is seldom closed.
const QString Meanwhile =
    (u"stop tlbtn_Kitap tlbtn_Icerik buyult Ctrl+E Ctrl+A Ctrl+I Ctrl+N click resize close-child "_s)
        .repeated(4) +
    u"close-program"_s;

}  // namespace

QString act(World& world, QRandomGenerator& order, quint32 seed, int number) {
    QList<const Action*> drawn;  // each as often as it weighs
    for (const Action& each : Actions) drawn << QList<const Action*>(each.weight, &each);
    const Action& action = *drawn[order.bounded(int(drawn.size()))];
    world.beginAction(seed, number, action.name);
    const QString deed = world.anyOf(action.deeds);
    action.act(world, deed);
    const QString done = QStringList{QString::number(number), action.name, deed, world.details}.join(u' ');
    if (action.meanwhile == 0 || !world.oneIn(action.meanwhile)) return done;
    const int ms = world.below(60);
    const QString other = world.anyOf(Meanwhile);
    world.later(
        ms, [&world, other] { other == u"resize" ? onMainWindow(world, other) : doAnything(world, other); });
    return done + u", and %1 after %2 ms"_s.arg(other).arg(ms);
}

}  // namespace lirovan::soak
