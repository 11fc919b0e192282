// frm_IcerikCopy — the notebook's window: menus, Toolbar1 (note_commands), the edit box. What they do is
// NoteEditor's matter.
#pragma once

#include <QElapsedTimer>
#include <QMainWindow>
#include <QTimer>
#include <functional>

#include "notes/ui/note_box.h"
#include "notes/ui/note_commands.h"
#include "notes/ui/note_editor.h"
#include "notes/ui/note_find_bar.h"

namespace lirovan::notes {

class frm_IcerikCopy : public QMainWindow {
    Q_OBJECT

  public:
    struct Surroundings {
        platform::Dialogs& dialogs;
        platform::Printing& printing;
        NoteEditor::OpenNotes openNotes;
        std::function<void(NoteEditor&)> showNoteList;  ///< runs frm_NotList until it is closed
    };

    frm_IcerikCopy(Surroundings surroundings, QWidget* parent = nullptr);

    NoteEditor& editor() { return editor_; }
    NoteBox& box() { return *txt_Icerik; }
    NoteFindBar& findBar() { return *findBar_; }

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void makeFindBar();
    void watchTheBox();
    QAction* itemFor(const QKeyEvent& event) const;
    void keepDraft();
    void showDraftState();

    NoteBox* txt_Icerik;
    NoteBox* txt_Icerik2;  // never shown
    NoteActions actions_;
    NoteFindBar* findBar_;
    NoteEditor editor_;
    QTimer draftTimer_, draftDoneTimer_;
    QElapsedTimer unkept_;  // since the first change that is in no draft
    bool draftIsSlow_ = false;
};

}  // namespace lirovan::notes
