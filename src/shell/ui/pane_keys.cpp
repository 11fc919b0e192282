#include "shell/ui/pane_keys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMdiSubWindow>
#include <QShortcut>

namespace lirovan::shell {

namespace {

bool isIn(const QWidget* widget, const QWidget* inside) {
    return widget && inside && (widget == inside || inside->isAncestorOf(widget));
}

/// The first control of a toolbar that takes the focus; false when it has none at present.
bool focusFirst(const QToolBar& bar) {
    for (QAction* action : bar.actions()) {
        QWidget* widget = bar.widgetForAction(action);
        if (!widget || !widget->isVisible() || !widget->isEnabled() ||
            !(widget->focusPolicy() & Qt::TabFocus))
            continue;
        widget->setFocus(Qt::ShortcutFocusReason);
        return true;
    }
    return false;
}

}  // namespace

PaneKeys::PaneKeys(QMainWindow& window, QMdiArea& area, QToolBar& mainBar)
    : QObject(&window), area_(area), mainBar_(mainBar) {
    const auto on = [this, &window](QKeyCombination keys, auto act) {
        connect(new QShortcut(keys, &window), &QShortcut::activated, this, act);
    };
    on(Qt::Key_F6, [this] { move(+1); });
    on(Qt::SHIFT | Qt::Key_F6, [this] { move(-1); });
    on(Qt::ALT | Qt::Key_Minus, [this] {
        if (QMdiSubWindow* child = area_.activeSubWindow()) child->showSystemMenu();
    });
    // Beside the toolkit's Ctrl+W, which is in the window's own menu.
    on(Qt::CTRL | Qt::Key_F4, [this] { area_.closeActiveSubWindow(); });
    window.installEventFilter(this);
}

QList<QToolBar*> PaneKeys::bars() const {
    QList<QToolBar*> bars;
    if (const QMdiSubWindow* child = area_.activeSubWindow()) bars = child->findChildren<QToolBar*>();
    bars << &mainBar_;
    bars.removeIf([](const QToolBar* bar) { return !bar->isVisible(); });
    return bars;
}

qsizetype PaneKeys::current(const QList<QToolBar*>& bars) {
    const QWidget* focused = QApplication::focusWidget();
    for (qsizetype i = 0; i < bars.size(); ++i)
        if (isIn(focused, bars[i])) return i;
    return -1;
}

void PaneKeys::move(int step) {
    const QList<QToolBar*> ring = bars();
    const qsizetype from = current(ring);
    if (from < 0) left_ = QApplication::focusWidget();
    // The ring's extra place is the child window, -1.
    const qsizetype places = ring.size() + 1;
    for (qsizetype place = (from + 1 + step + places) % places; place > 0;
         place = (place + step + places) % places)
        if (focusFirst(*ring[place - 1])) return;
    leaveBars();
}

void PaneKeys::leaveBars() {
    QMdiSubWindow* child = area_.activeSubWindow();
    if (left_ && left_->isVisible() && (!child || isIn(left_, child)))
        left_->setFocus(Qt::ShortcutFocusReason);
    else if (child && child->widget())
        child->widget()->setFocus(Qt::ShortcutFocusReason);
}

// Reached only by a key press that nothing inside the window has taken.
bool PaneKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape &&
        current(bars()) >= 0) {
        leaveBars();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace lirovan::shell
