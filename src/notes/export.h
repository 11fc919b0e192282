// Every note as files that other programs open.
#pragma once

#include <QString>

#include "notes/notes_database.h"
#include "platform/core/result.h"

namespace lirovan::notes {

/// Writes each note as three files into `folder`, which is created where it is missing: "7 Başlık.rtf",
/// ".html" and
/// ".txt" (UTF-8), with the note's key and what file systems bear of its title. RTF is in canonical form.
/// Gives the number of notes. Nothing else in the folder is touched.
platform::Result<int> exportNotes(const NotesDatabase& notes, const QString& folder);

}  // namespace lirovan::notes
