// frm_NotList — the modal list of notes: searching them, opening and deleting one.
#pragma once

#include <QDialog>

#include "notes/note_list.h"
#include "notes/ui/note_editor.h"
#include "platform/core/dialogs.h"

class QCheckBox;
class QComboBox;
class QLayout;
class QLineEdit;
class QListWidget;
class QMenu;

namespace lirovan::notes {

class frm_NotList : public QDialog {
    Q_OBJECT

  public:
    frm_NotList(NoteEditor& editor, platform::Dialogs& dialogs, QWidget* parent = nullptr);

    /// Fills the list and shows it until it is closed.
    void run();
    /// Fills the list; tells when there is no note, or why there is none to be seen.
    void load();
    /// Fills the list: the header, and a line for each note.
    platform::Result<void> notlistele();
    /// The query that the opened note was found by; nothing where none was opened, or without a query.
    const std::optional<NoteWish>& openedBy() const { return openedBy_; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QLayout* searchRow();
    /// Shows the notes that are asked for; tells where they cannot be searched.
    void choose();
    void showChosen();
    NoteId selected() const;  ///< 0: none, or the header
    void openSelected();
    void mnu_Ac();
    void mnu_Sil();
    platform::Result<void> deleteNote(NoteId id);

    NoteEditor& editor_;
    platform::Dialogs& dialogs_;
    std::vector<ListedNote> all_, shown_;
    std::optional<std::vector<SearchableNote>> searchable_;  // read at the first query
    NoteWish wish_;
    NoteHits hits_;
    std::optional<NoteWish> openedBy_;

    QLineEdit* search_;
    QCheckBox* wholeWord_;
    QCheckBox* allWords_;
    QComboBox* order_;
    QListWidget* lst_Notlar;
    QMenu* PopUp;
};

}  // namespace lirovan::notes
