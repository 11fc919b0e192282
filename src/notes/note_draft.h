// A copy of the text that is not saved yet, beside the notes file, so that a power cut or a crash does not
// take it away. It exists only while there is something to lose.
#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

#include "notes/notes_database.h"
#include "platform/core/paths.h"
#include "platform/core/rtf/document.h"

namespace lirovan::notes {

/// A text on its way into a note.
struct Unsaved {
    NoteId note;         ///< 0: a new one
    QString title;       ///< of a saved note
    QByteArray version;  ///< of the NotRTF that the text is to replace
    platform::rtf::Document text;
};

class NoteDraft {
  public:
    NoteDraft() = default;  ///< keeps nothing

    /// The draft of an application folder. Each of several programs on one folder keeps one of its own. Where
    /// none can be kept now, keep() tries again.
    static NoteDraft in(const platform::AppFolder& folder);

    /// Tells two states of a note apart.
    static QByteArray version(const QString& notRtf);

    /// What was left here by a program that is gone, or was set aside: one after the other, each until
    /// clear(). A running program's draft stays its own.
    std::optional<Unsaved> left() const;
    /// Writes in the background, since a text may be megabytes long. `replaces` is the NotRTF that
    /// Unsaved::version stands for, which is worked out there.
    void keep(Unsaved text, const QString& replaces) const;
    /// Why the text last given could not be kept, fit to be shown; empty: it was. Nothing while it is
    /// written.
    std::optional<QString> failure() const;
    bool clear() const;  ///< false when it could not be removed
    /// Makes room for another text: what was kept stays until left() has given it and clear() was called.
    /// False when nothing is kept, or when the last text could not be written.
    bool setAside() const;

  private:
    struct State;
    std::shared_ptr<State> state_;
};

}  // namespace lirovan::notes
