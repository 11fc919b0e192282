// Where the notes of a library are kept: in its folder, or, where that cannot be written, in a folder of the
// user's own that stands in for it.
//
// What the library's folder holds when the user's place is made goes there too; notes that others add to the
// library's folder afterwards follow at the next opening. Notes that were once kept in the user's place stay
// there, even when the library's folder can be written again, so that no note is left behind.
#pragma once

#include "notes/notes_database.h"
#include "platform/core/paths.h"
#include "platform/core/result.h"

namespace lirovan::notes {

struct NotesPlace {
    platform::AppFolder library;
    platform::AppFolder home;  ///< holds NotesFolder; the library's folder itself or the user's place

    bool isUsers() const { return home.text() != library.text(); }
};

/// Nothing is written here.
NotesPlace notesPlace(const platform::AppFolder& library);

/// Makes the user's place with copies of the notes file and the drafts in the library's folder. True when it
/// was not there before; the library's own folder is left to NotesDatabase.
platform::Result<bool> preparePlace(const NotesPlace& place);

/// To be told once.
QString placeNotice(const NotesPlace& place);

/// NotesDatabase::open() at the place, prepared.
platform::Result<NotesDatabase> openNotes(const NotesPlace& place,
                                          const NotesDatabase::Importer& importer = {});

}  // namespace lirovan::notes
