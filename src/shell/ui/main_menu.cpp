#include "shell/ui/main_menu.h"

#include <QMenu>
#include <QMenuBar>

#include "shell/ui/command_table.h"

namespace lirovan::shell {

MainMenu::MainMenu(QMenuBar* bar) : QObject(bar) {
    for (const CommandBar& entry : menuBars()) {
        auto* menu = new QMenu(entry.caption.toString(), bar);
        menu->setObjectName(entry.name.toString());
        menus_.append(menu);
        for (const CommandRow& row : entry.rows) addRow(*menu, row);
        if (!entry.caption.empty()) bar->addMenu(menu);
    }
}

void MainMenu::addRow(QMenu& menu, const CommandRow& row) {
    QAction* action = row.isSeparator()   ? menu.addSeparator()
                      : row.opens.empty() ? menu.addAction(row.caption.toString())
                                          : menu.addMenu(popUp(row.opens));
    if (!row.opens.empty()) action->setText(row.caption.toString());
    action->setObjectName(row.name.toString());
    action->setCheckable(has(row.state, RowState::Checked));
    action->setChecked(action->isCheckable());
    action->setVisible(!has(row.state, RowState::Hidden));
    action->setEnabled(!has(row.state, RowState::Disabled | RowState::OfPage));
    if (!row.key.empty()) action->setShortcuts(QKeySequence::listFromString(row.key.toString()));
    actions_.insert(row.name.toString(), action);
    if (!row.run) return;
    connect(action, &QAction::triggered, this, [this, &row, action] {
        // The command itself decides about its check mark.
        if (action->isCheckable()) action->setChecked(!action->isChecked());
        Q_EMIT chosen(row);
    });
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
        if (menu->objectName() == name) return menu;
    }
    return nullptr;
}

}  // namespace lirovan::shell
