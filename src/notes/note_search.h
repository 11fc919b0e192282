// Searching the notes by the rules of the library's search: words, folding, circumflex forms, whole words.
//
// A note is plain text: "<", ">" and quotation marks are what they are, and a word at the very beginning or
// end is whole. Circumflex forms are those that the notes themselves hold.
#pragma once

#include <QString>
#include <string>
#include <vector>

#include "notes/notes_database.h"
#include "platform/core/result.h"
#include "search/runs/search_run.h"
#include "text/variant_builder.h"

namespace lirovan::notes {

/// A note made ready to be searched.
struct SearchableNote {
    NoteId id;
    QString date, title;                      ///< as stored
    std::string text;                         ///< plain text for the search, framed and without markup signs
    std::vector<text::WordVariant> variants;  ///< its words with circumflexes
};

/// All notes in the order of their keys. Reading the rich text takes most of the time of a search, so who
/// searches again keeps them.
platform::Result<std::vector<SearchableNote>> searchableNotes(const NotesDatabase& notes);
SearchableNote searchable(const Note& note);
/// Any plain text, as a note that has no date and no title.
SearchableNote searchableText(NoteId id, const QString& text);

struct NoteHit {
    qint64 position;  ///< 1-based, UTF-16 units of the note's plain text
    qint32 length;
};

struct FoundNote {
    const SearchableNote* note;
    std::vector<NoteHit> hits;  ///< word after word, each from top to bottom
};

/// The notes that match, in their order. A query without words finds none; a single letter is looked for as a
/// whole word.
std::vector<FoundNote> findNotes(const std::vector<SearchableNote>& notes, const QString& query,
                                 const search::SearchOptions& options);

}  // namespace lirovan::notes
