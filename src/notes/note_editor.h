// The notebook's decisions: which note is in the edit box, when it is saved and who is asked, what the
// buttons and menu items do. Written against ports; frm_IcerikCopy is the window.
//
// Text in the box is never lost to a failure: where a note cannot be written the box keeps it, the window
// stays open, and the user may put it into a file.
#pragma once

#include <QDate>
#include <QString>
#include <functional>

#include "notes/editor_ports.h"
#include "notes/note_draft.h"
#include "notes/notes_database.h"
#include "platform/core/dialogs.h"
#include "platform/core/main_frame.h"
#include "platform/core/twips.h"

namespace lirovan::notes {

/// Where the window stands in the main window's work area when it opens.
platform::TwipsRect editorPlace(const platform::MainFrame& frame);

class NoteEditor {
  public:
    using OpenNotes = std::function<platform::Result<NotesDatabase>()>;

    struct Parts {
        EditorWindow& window;
        RichBox& box;      ///< txt_Icerik
        RichBox& scratch;  ///< txt_Icerik2
        NoteClipboard& clipboard;
        platform::Dialogs& dialogs;
        platform::Printing& printing;
    };

    NoteEditor(Parts parts, OpenNotes openNotes, std::function<QDate()> today = QDate::currentDate);

    /// The window has opened: opens NotBaglanti, and offers what an earlier run could not save.
    void load(NoteDraft draft = {});

    void menu(QStringView item);
    void button(QStringView key);

    // Save, the offer to save, New and Open
    void save();
    void NotuKaydetSor();
    void newNote();
    void open();
    /// The closing step: false when the window has to stay open.
    bool close();

    // What happens in the edit box
    void selectionChanged();
    void rightButtonDown();
    void inputHappened() { refreshState(); }
    void clipboardChanged();
    void paste() { parts_.box.paste(); }
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

    bool KayitIptal() const { return KayitIptal_; }

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

    void cut();
    void copy();
    void printWithDialog();
    void printDirectly();
    void toggle(Style style, QStringView key);
    void toggleColor(QStringView key);
    void pressOnly(QStringView colorKey);
    void refreshState();
    void setFontSize(double points);

    Parts parts_;
    OpenNotes openNotes_;
    std::function<QDate()> today_;
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
