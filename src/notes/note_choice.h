// Which notes the note list shows and in which order: all of them, or those that a query finds.
#pragma once

#include <QHash>
#include <QString>
#include <optional>
#include <vector>

#include "notes/note_search.h"

namespace lirovan::notes {

enum class NoteOrder {
    Kept,   ///< as the notes file has them
    Date,   ///< newest first
    Title,  ///< as a Turkish list
    Hits    ///< most first
};

/// A note of the list.
struct ListedNote {
    NoteId id;
    QString date, title;  ///< as stored
    QString line;         ///< what the list shows
};

/// Hits by note of those that a query finds; nothing: no query, so all notes are shown.
using NoteHits = std::optional<QHash<qint64, qint64>>;

NoteHits hitsByNote(const std::vector<SearchableNote>& notes, const QString& query,
                    const search::SearchOptions& options);

/// The notes to be shown; of equal ones the earlier first. A found note's line ends with its hits.
std::vector<ListedNote> chosenNotes(const std::vector<ListedNote>& all, const NoteHits& hits,
                                    NoteOrder order);

/// The hits of a query in a text by position, none within another. A query without words has none.
std::vector<NoteHit> hitsInText(const QString& text, const QString& query,
                                const search::SearchOptions& options);

/// "3 / 12", "12 isabet" with no current one (-1), "bulunamadı".
QString hitState(qint64 current, qint64 all);

}  // namespace lirovan::notes
