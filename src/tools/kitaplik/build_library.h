// A library made from a folder with a manifest and one HTML file a topic.
#pragma once

#include <QString>

#include "platform/core/result.h"

namespace lirovan::tools {

/// Reads `folder`/kitaplik.json and the files it names, and writes the library `target`, its word-variant
/// table filled. An existing library is replaced in one step, any other file refused; on any failure it stays
/// as it was and nothing new is left. Messages name the file or entry.
platform::Result<void> buildLibrary(const QString& folder, const QString& target);

}  // namespace lirovan::tools
