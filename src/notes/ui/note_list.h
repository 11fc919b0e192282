// The note list's decisions: its lines, and opening and deleting a note. frm_NotList is the window.
#pragma once

#include <QDate>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "notes/note_choice.h"
#include "notes/ui/note_editor.h"
#include "platform/core/dialogs.h"
#include "platform/core/main_frame.h"
#include "platform/core/twips.h"

namespace lirovan::notes {

struct NoteLine {
    QString text;
    NoteId id;  ///< 0: the header
};

/// What the list is asked for.
struct NoteWish {
    QString query;
    search::SearchOptions options;
    NoteOrder order = NoteOrder::Kept;
};

/// "Not Tarihi   Başlık                   Not"
QString listHeader();

/// Date, title and the beginning of the text: "14.03.2008   Alışveriş                Süt, ekmek..."; the
/// title is cut to 20 characters and fills 25, the text is cut to 50. `rtf` may be the beginning of a NotRTF.
QString listLine(const Note& note, const std::function<QString(QDate)>& shortDate);

/// Where the list stands when it opens.
struct ListPlace {
    platform::Twips left, top;
};
ListPlace listPlace(const platform::MainFrame& frame);

class NoteListWindow {
  public:
    virtual ~NoteListWindow() = default;
    virtual void setLines(const std::vector<NoteLine>& lines) = 0;
    virtual int selectedLine() const = 0;  ///< -1: none
    virtual void closeWindow() = 0;
};

class NoteList {
  public:
    NoteList(NoteListWindow& window, NoteEditor& editor, platform::Dialogs& dialogs,
             std::function<QString(QDate)> shortDate)
        : window_(window), editor_(editor), dialogs_(dialogs), shortDate_(std::move(shortDate)) {}

    /// Fills the list; tells when there is no note, or why there is none to be seen.
    void load();
    /// Fills the list: the header, and a line for each note.
    platform::Result<void> notlistele();

    /// Shows the notes that a query finds, or all, in an order; tells where the notes cannot be read.
    void choose(NoteWish wish);
    /// The query that the opened note was found by; nothing where none was opened, or without a query.
    const std::optional<NoteWish>& openedBy() const { return openedBy_; }

    void doubleClickOrEnter() { openSelected(); }
    void mnu_Ac();
    void mnu_Sil();

  private:
    NoteId selected() const;
    platform::Result<void> deleteNote(NoteId id);
    void openSelected();

    NoteListWindow& window_;
    NoteEditor& editor_;
    platform::Dialogs& dialogs_;
    std::function<QString(QDate)> shortDate_;
    std::vector<NoteLine> lines_;
    void showChosen();

    std::vector<ListedNote> all_;
    std::optional<std::vector<SearchableNote>> searchable_;  // read at the first query
    NoteWish wish_;
    NoteHits hits_;
    std::optional<NoteWish> openedBy_;
};

}  // namespace lirovan::notes
