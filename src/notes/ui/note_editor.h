// Which note is in the notebook's edit box, when it is saved and who is asked, and what the commands do
// (note_commands says which there are). frm_IcerikCopy is the window.
//
// Text in the box is never lost to a failure: where a note cannot be written the box keeps it, the window
// stays open, and the user may put it into a file.
#pragma once

#include <QString>
#include <functional>

#include "notes/note_draft.h"
#include "notes/notes_database.h"
#include "notes/ui/note_box.h"
#include "notes/ui/note_commands.h"
#include "platform/core/dialogs.h"
#include "platform/core/main_frame.h"
#include "platform/core/printing.h"
#include "platform/core/twips.h"

namespace lirovan::notes {

/// Where the window stands in the main window's work area when it opens.
platform::TwipsRect editorPlace(const platform::MainFrame& frame);

class NoteEditor {
  public:
    using OpenNotes = std::function<platform::Result<NotesDatabase>()>;

    struct Parts {
        QWidget& window;
        NoteBox& box;      ///< txt_Icerik
        NoteBox& scratch;  ///< txt_Icerik2
        NoteActions& actions;
        platform::Dialogs& dialogs;
        platform::Printing& printing;
        OpenNotes openNotes;
        std::function<void(NoteEditor&)> showNoteList;  ///< runs frm_NotList until it is closed
    };
    explicit NoteEditor(Parts parts) : parts_(std::move(parts)) {}

    /// The window has opened: opens NotBaglanti, and offers what an earlier run could not save.
    void load(NoteDraft draft = {});

    // Save, the offer to save, New and Open
    void save();
    void NotuKaydetSor();
    void newNote();
    void open();
    /// The closing step: false when the window has to stay open.
    bool close();

    // The text
    void cut();
    void copy();
    void paste() { parts_.box.paste(); }
    void printWithDialog();
    void printDirectly();
    void toggle(NoteCommand style);
    void toggleColor(NoteCommand color);  ///< a second time: back to black; black itself turns red
    void stepFontSize(int direction);     ///< 0: the normal size
    void closeWindow();                   ///< runs the closing step

    // What happens in the edit box
    void selectionChanged();
    void rightButtonDown();
    void clipboardChanged();
    void refreshState();  ///< of the buttons for style and colour
    /// Puts the unsaved text, if there is any, beside the notes file; called a moment after a change.
    void keepDraft();
    const NoteDraft& draft() const { return draft_; }

    // For the note list
    const NotesDatabase& NotBaglanti() const { return NotBaglanti_; }
    /// Opens NotBaglanti where it is not open yet.
    platform::Result<void> connect();
    NoteId currentNote() const { return txt_invisible_; }
    /// Shows a stored note in place of the present text, after a question where that is the text of a note
    /// deleted from the list. A text that was to be saved and got no title is set aside for the next time
    /// that the window opens.
    void show(const Note& note);
    /// The open note's row was deleted: its text becomes a new, unsaved note.
    void rowDeleted();

  private:
    bool offerDraft(const Unsaved& left);
    bool setTextAside();
    bool put(const Note& note);  ///< false when opening it was stopped
    void becomeNew();
    void saveNew();
    void saveExisting();
    bool insertAs(const QString& title);
    void write(const Note& stored, const platform::rtf::Document& text);
    void wasStored(const platform::rtf::Document& text, const QString& rtf);
    void fail(const platform::Error& error);
    bool ensureOpen();
    bool differs(const platform::rtf::Document& text, const QString& notRtf);
    bool differsFromRow();

    void pressOnly(NoteCommand color);

    Parts parts_;
    NotesDatabase NotBaglanti_;
    NoteDraft draft_;

    NoteId txt_invisible_;            // key of the note in the box
    QString NotBasligi_;              // its title
    QString storedRtf_;               // NotRTF when it was last read or written here; empty for a new note
    platform::rtf::Document stored_;  // the same as the box gives it back
    bool KayitIptal_ = false;         // a save was given up: the window stays
    bool saveFailed_ = false;         // ... because the file could not be written
    bool unasked_ = false;            // the text came from a note that was deleted; nobody was asked since
    bool pasteEnabled_ = false;
};

}  // namespace lirovan::notes
