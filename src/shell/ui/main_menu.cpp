#include "shell/ui/main_menu.h"

#include <QMenu>
#include <QMenuBar>

#include "shell/command_table.h"
#include "text/comparison.h"

namespace lirovan::shell {

MainMenu::MainMenu(QMenuBar* bar) : QObject(bar) {
    for (const Menu& entry : menuTable()) {
        auto* menu = new QMenu(entry.caption.toString(), bar);
        menu->setObjectName(entry.name.toString());
        menus_.append(menu);
        for (const MenuItem& item : entry.items) {
            const QString name = item.name.toString();
            QAction* action =
                item.isSeparator() ? menu->addSeparator() : menu->addAction(item.caption.toString());
            action->setObjectName(name);
            action->setCheckable(item.checkable);
            action->setChecked(item.checkable);
            action->setVisible(item.visible);
            if (!item.shortcut.empty()) action->setShortcut(QKeySequence(item.shortcut.toString()));
            connect(action, &QAction::triggered, this, [this, name, action] {
                // The command itself decides about its check mark.
                if (action->isCheckable()) action->setChecked(!action->isChecked());
                Q_EMIT chosen(name);
            });
            actions_.insert(name, action);
        }
        if (!entry.caption.empty()) bar->addMenu(menu);
    }
}

void MainMenu::show(const CommandState& state) {
    QAction* action = actions_.value(state.name);
    if (!action) return;
    action->setVisible(state.visible);
    action->setEnabled(state.enabled);
    action->setChecked(state.checked);
}

QMenu* MainMenu::popUp(QStringView name) const {
    for (QMenu* menu : menus_) {
        if (text::equal(menu->objectName(), name, text::Comparison::CaseInsensitive)) return menu;
    }
    return nullptr;
}

}  // namespace lirovan::shell
