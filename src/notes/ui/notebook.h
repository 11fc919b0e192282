// The notebook as the main window sees it: one window among its children, made when it is first asked for.
//
//     Notebook notebook(mdiArea, folder, frame, dialogs, printing, importer);
//     notebook.show();                    // the notebook command
//     notebook.pasteFromClipboard();      // paste: a passage into the notebook
//     if (!notebook.confirmClose()) ...   // before the main window closes: false keeps the program open
#pragma once

#include <QMdiArea>
#include <QObject>
#include <QPointer>

#include "notes/ui/frm_IcerikCopy.h"
#include "platform/core/main_frame.h"
#include "platform/core/paths.h"

namespace lirovan::notes {

class Notebook : public QObject {
    Q_OBJECT

  public:
    /// `importer` turns a notes file of another kind into one of ours, and shows how far it is.
    Notebook(QMdiArea& area, platform::AppFolder folder, const platform::MainFrame& frame,
             platform::Dialogs& dialogs, platform::Printing& printing, NotesDatabase::Importer importer,
             QObject* parent = nullptr);

    /// Shows the window, or brings it to the front, with the focus in its edit box.
    void show();
    /// Shows the window and puts the clipboard's text at the cursor, in place of a selection.
    void pasteFromClipboard();
    /// Closes the window if it is open, asking about unsaved text; false when it has to stay.
    bool confirmClose();

    /// Null while it is not open.
    frm_IcerikCopy* window() const { return window_; }

  Q_SIGNALS:
    /// A link in the note is followed.
    void linkWanted(const QString& address);

  private:
    bool isOpen() const;
    void showNoteList(NoteEditor& editor);

    QMdiArea& area_;
    platform::AppFolder folder_;
    const platform::MainFrame& frame_;
    platform::Dialogs& dialogs_;
    platform::Printing& printing_;
    NotesDatabase::Importer importer_;
    QPointer<frm_IcerikCopy> window_;
};

}  // namespace lirovan::notes
