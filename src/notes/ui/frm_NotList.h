// frm_NotList — the modal list of notes. What it shows and does is NoteList's matter.
#pragma once

#include <QDialog>

#include "notes/ui/note_list.h"

class QCheckBox;
class QComboBox;
class QLayout;
class QLineEdit;
class QListWidget;
class QMenu;

namespace lirovan::notes {

class frm_NotList : public QDialog, private NoteListWindow {
    Q_OBJECT

  public:
    frm_NotList(NoteEditor& editor, platform::Dialogs& dialogs, QWidget* parent = nullptr);

    /// Fills the list and shows it until it is closed.
    void run();
    const std::optional<NoteWish>& openedBy() const { return list_.openedBy(); }

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QLayout* searchRow();
    void choose();
    void setLines(const std::vector<NoteLine>& lines) override;
    int selectedLine() const override;
    void closeWindow() override { accept(); }

    QLineEdit* search_;
    QCheckBox* wholeWord_;
    QCheckBox* allWords_;
    QComboBox* order_;
    QListWidget* lst_Notlar;
    QMenu* PopUp;
    NoteList list_;
};

}  // namespace lirovan::notes
