// Whether the library file has changed since it was last looked at. Asking costs two statements that read no
// row.
#pragma once

#include <optional>

#include "data/library.h"

namespace lirovan::search {

class LibraryChanges {
  public:
    /// `library` outlives this object.
    explicit LibraryChanges(const data::Library& library) : library_(library) {}

    /// True at the first call, and when any connection has changed the file, or another file has been opened
    /// in its place, since the last one.
    bool any();

  private:
    const data::Library& library_;
    // Held, so that a connection to a file in its place has another handle.
    platform::Database seen_;
    std::optional<qint64> byOthers_, byUs_;
};

}  // namespace lirovan::search
