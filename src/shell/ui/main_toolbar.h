// Toolbar1 of the main window: the buttons of the table, the book selector, the progress bar and its text.
#pragma once

#include <QHash>
#include <QToolBar>

#include "shell/ui/command_states.h"
#include "shell/ui/command_table.h"

class QComboBox;
class QLabel;
class QProgressBar;

namespace lirovan::shell {

class MainToolBar : public QToolBar {
    Q_OBJECT

  public:
    explicit MainToolBar(QWidget* parent = nullptr);

    void show(const CommandState& state);
    /// The width asked for is the spacer's most; it gives way when the buttons need the room.
    void setSpacerWidth(int pixels);

    void setSelectorVisible(bool visible);
    void setProgressVisible(bool visible);
    void setToolTextVisible(bool visible);
    void setToolTextWidth(int pixels);  ///< the label's least width

    QComboBox* selector() const { return cmb_Kitaplar; }
    QProgressBar* progress() const { return prg_gosterge; }
    QLabel* toolText() const { return lbl_tool; }

  Q_SIGNALS:
    void pressed(const CommandRow& row);

  private:
    void addButtons();
    QAction* addButton(const CommandRow& row);
    QAction* addSpacer();
    void addSelector();
    void addProgress();
    QAction* addStretch(QWidget* widget);

    QHash<QString, QAction*> actions_;  // by key
    QLabel* lbl_toolkitap = nullptr;
    QComboBox* cmb_Kitaplar = nullptr;
    QLabel* lbl_tool = nullptr;
    QProgressBar* prg_gosterge = nullptr;
    QWidget* spacer_ = nullptr;
    QAction* stretch_ = nullptr;  // takes the free room while the spacer is hidden
    QList<QAction*> selectorActions_;
    QAction* progressAction_ = nullptr;
    QAction* toolTextAction_ = nullptr;
};

}  // namespace lirovan::shell
