// The menu bar and pop-up menus of the main window, built from their table.
#pragma once

#include <QHash>
#include <QObject>
#include <QStringView>

#include "shell/ui/command_states.h"
#include "shell/ui/command_table.h"

class QAction;
class QMenu;
class QMenuBar;

namespace lirovan::shell {

class MainMenu : public QObject {
    Q_OBJECT

  public:
    explicit MainMenu(QMenuBar* bar);

    void show(const CommandState& state);
    /// A pop-up menu by name; null for an unknown name.
    QMenu* popUp(QStringView name) const;

  Q_SIGNALS:
    void chosen(const CommandRow& row);

  private:
    void addRow(QMenu& menu, const CommandRow& row);

    QHash<QString, QAction*> actions_;  // by item name as the table has it
    QList<QMenu*> menus_;
};

}  // namespace lirovan::shell
