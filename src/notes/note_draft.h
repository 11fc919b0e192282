// A copy of the text that is not saved yet, beside the notes file, so that a power cut or a crash does not
// take it away. It exists only while there is something to lose.
#pragma once

#include <QLockFile>
#include <QString>
#include <memory>
#include <optional>

#include "notes/notes_database.h"
#include "platform/core/paths.h"

namespace lirovan::notes {

class NoteDraft {
  public:
    NoteDraft() = default;  ///< keeps nothing

    /// The draft of an application folder. One program at a time keeps it; a second one, or one that may not
    /// write there, goes without.
    static NoteDraft in(const platform::AppFolder& folder);

    /// What an earlier run left; `date` is not used.
    std::optional<Note> left() const;
    void keep(const Note& note) const;
    void clear() const;

  private:
    QString path_;
    std::shared_ptr<QLockFile> lock_;
};

}  // namespace lirovan::notes
