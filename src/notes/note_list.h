// What the note list shows: its header, and a line for each note.
#pragma once

#include <QDate>
#include <QString>
#include <functional>
#include <vector>

#include "notes/note_choice.h"
#include "notes/notes_database.h"
#include "platform/core/main_frame.h"
#include "platform/core/result.h"
#include "platform/core/twips.h"

namespace lirovan::notes {

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

/// All notes in the order of the file, with their lines.
platform::Result<std::vector<ListedNote>> listedNotes(const NotesDatabase& notes,
                                                      const std::function<QString(QDate)>& shortDate);

/// Where the list stands when it opens.
struct ListPlace {
    platform::Twips left, top;
};
ListPlace listPlace(const platform::MainFrame& frame);

}  // namespace lirovan::notes
