// Every menu item and button of the notebook: what it is called, how it starts and what it does. Menus,
// Toolbar1 and their states are made from the rows in ui/note_commands.cpp. A new command is a row and the
// function that the row names.
#pragma once

#include <QMap>
#include <QPoint>

class QAction;
class QMainWindow;
class QMenu;

namespace lirovan::notes {

class NoteEditor;
struct NoteRow;

enum class NoteCommand {
    None,
    New,
    Open,
    Save,
    PrintDirectly,
    PrintWithDialog,
    Close,
    Cut,
    Copy,
    Paste,
    LargerType,
    NormalType,
    SmallerType,
    Bold,  // from here on the buttons have two states
    Italic,
    Underline,
    Red,
    Blue,
    Green,
    Black,
};

class NoteActions {
  public:
    /// Makes the menus and Toolbar1 of `window`, which run the commands of `editor`.
    void make(QMainWindow& window, NoteEditor& editor);

    void setEnabled(NoteCommand command, bool enabled);  ///< item and button
    void setPressed(NoteCommand command, bool pressed);
    void popUpSizes(QPoint place);  ///< mnu_yazi, on the screen

  private:
    void add(QMainWindow& window, QAction& action, const NoteRow& row);

    QMultiMap<NoteCommand, QAction*> actions_;
    QMenu* sizes_ = nullptr;
};

}  // namespace lirovan::notes
