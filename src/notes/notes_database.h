// The notes file "\Notlar\notlar.vq": one row a note, every change one durable transaction.
//
// Several programs may have the file open; a change that meets another program's is told, never overwritten.
#pragma once

#include <QDate>
#include <QString>
#include <compare>
#include <functional>
#include <limits>
#include <optional>
#include <vector>

#include "platform/core/database.h"
#include "platform/core/paths.h"
#include "platform/core/result.h"

namespace lirovan::notes {

/// tbl_Notlar.NotID; 0: a note that was never saved.
struct NoteId {
    qint64 value = 0;
    friend constexpr auto operator<=>(NoteId, NoteId) = default;
};

struct Note {
    NoteId id;
    QString date;   ///< NotTarihi as stored: "2008-03-14", "2008-03-14T21:05:00", or empty
    QString title;  ///< NotBaslik as typed
    QString rtf;    ///< NotRTF as stored; in a list of notes only its beginning
};

/// What became of a change to a row.
enum class Change {
    Done,
    Gone,     ///< there is no such row any more
    Conflict  ///< another program has changed the row meanwhile; it was left as it is
};

inline constexpr QStringView NotesFolder = u"\\Notlar";
inline constexpr QStringView NotesFile = u"\\Notlar\\notlar.vq";

class NotesDatabase {
  public:
    /// Turns a file of another kind at this path into one of ours, or does nothing to one of ours.
    using Importer = std::function<platform::Result<void>(const QString& path)>;

    NotesDatabase() = default;  ///< closed; every use is an error, none is a crash

    /// Opens the notes of an application folder. Folder and file are created where they are missing;
    /// `importer` sees an existing file first.
    static platform::Result<NotesDatabase> open(const platform::AppFolder& folder,
                                                const Importer& importer = {});
    static platform::Result<NotesDatabase> openFile(const QString& path);
    /// Over a connection to a notes file that is open already.
    explicit NotesDatabase(platform::Database database) : database_(std::move(database)) {}

    bool isOpen() const { return database_.isOpen(); }
    void close() { database_.close(); }
    const platform::Database& database() const { return database_; }

    /// Inserts a row and gives its key.
    platform::Result<NoteId> add(const QString& title, const QString& rtf, QDate date) const;
    platform::Result<std::optional<Note>> find(NoteId id) const;
    /// Sets NotRTF of the row if it still holds `expected`.
    platform::Result<Change> replaceRtf(NoteId id, const QString& expected, const QString& rtf) const;
    platform::Result<void> remove(NoteId id) const;

    /// All notes in the order of their keys, with at most `rtfCharacters` of NotRTF each.
    platform::Result<std::vector<Note>> list(int rtfCharacters) const;
    /// Place of a note in the file.
    using Row = qint64;
    static constexpr Row BeforeFirst = std::numeric_limits<Row>::min();
    /// The next notes behind `row` with all of their text, up to the one with which they have `rtfUnits`
    /// units of NotRTF, in the order of their keys; none: there are no more. `row` becomes that of the last
    /// one.
    platform::Result<std::vector<Note>> nextNotes(Row& row, qsizetype rtfUnits) const;

  private:
    platform::Database database_;
};

}  // namespace lirovan::notes
