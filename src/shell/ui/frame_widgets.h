// The main window's side of the port that its child windows use: menus, Toolbar1, StatusBar1, the selector
// and the sizes. Page font size and hit navigation belong to the shared content window and are added by the
// class that knows it.
#pragma once

#include <QLabel>
#include <QObject>
#include <array>

#include "browse/book_selector.h"
#include "platform/core/main_frame.h"
#include "shell/ui/command_states.h"
#include "shell/ui/command_table.h"

class QAction;
class QMainWindow;
class QMdiArea;
class QMenu;

namespace lirovan::shell {

class MainMenu;
class MainToolBar;

class FrameWidgets : public QObject, public platform::MainFrame {
    Q_OBJECT

  public:
    /// Builds the bars of `window`, whose central widget is `area`.
    FrameWidgets(QMainWindow& window, QMdiArea& area);

    void setButtonVisible(QStringView key, bool visible) override { states_.setButtonVisible(key, visible); }
    void setButtonEnabled(QStringView key, bool enabled) override { states_.setButtonEnabled(key, enabled); }
    void setSpacerWidth(platform::Twips width) override;

    void setMenuChecked(QStringView item, bool checked) override { states_.setMenuChecked(item, checked); }
    bool isMenuChecked(QStringView item) const override { return states_.menu(item).checked; }
    void setMenuEnabled(QStringView item, bool enabled) override { states_.setMenuEnabled(item, enabled); }
    void setMenuVisible(QStringView item, bool visible) override { states_.setMenuVisible(item, visible); }
    void popUpMenu(QStringView item) override;

    void setPanelText(int panel, const QString& text) override;
    void setPanelVisible(int panel, bool visible) override;
    void showPassingText(const QString& text) override;

    void setProgressVisible(bool visible) override;
    void setProgressMaximum(int maximum) override;
    void setProgressValue(int value) override;
    void setToolTextVisible(bool visible) override;
    void setToolText(const QString& text) override;
    void setToolTextWidth(platform::Twips width) override;

    void setSelectorVisible(bool visible) override;
    platform::BookSelection selectedBooks() const override;
    /// The selector's rows; the first is chosen.
    void fillSelector(std::vector<browse::SelectorRow> rows);

    /// The work area's size and the room that the constants of the layout leave for the frame around it.
    platform::Twips width() const override;
    platform::Twips height() const override;
    void setBusyPointer(bool busy) override;
    void setCommandsLocked(bool locked) override { states_.setLocked(locked); }

    /// The items of mnu_yazi, for menus of the pages themselves.
    QList<QAction*> typeSizeItems() const;

    QMenu* menu(QStringView name) const;
    MainToolBar& toolBar() const { return *toolBar_; }

  Q_SIGNALS:
    void commandChosen(const CommandRow& row);

  private:
    void addStatusBar();
    QLabel* panel(int number) const;

    QMainWindow& window_;
    QMdiArea& area_;
    CommandStates states_;
    MainMenu* menu_ = nullptr;
    MainToolBar* toolBar_ = nullptr;
    std::array<QLabel*, 3> panels_{};
    std::vector<browse::SelectorRow> rows_;
};

}  // namespace lirovan::shell
