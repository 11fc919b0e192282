// A note on paper.
#pragma once

#include "notes/ui/note_box.h"
#include "platform/core/printing.h"

namespace lirovan::notes {

/// Prints the box's selection, where the target wants one and there is one, or its whole text; false when the
/// printer is of no use.
bool printNote(const NoteBox& box, const QString& title, const platform::PrintTarget& target);

}  // namespace lirovan::notes
