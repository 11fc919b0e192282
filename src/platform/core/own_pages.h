// The pages and pictures that the program brings for folders that have none of their own: a folder with
// nothing but a library in it looks whole.
#pragma once

#include <QString>

#include "platform/core/paths.h"

namespace lirovan::platform {

/// Which first page: an empty library's says how books get into it.
enum class FirstPage { Ordinary, OfEmptyLibrary };

/// The program's own content for a file of the folder, by its real path, as the name of a resource. Empty:
/// the program has none, it is the folder's to bring.
QString ownContent(const AppFolder& folder, const QString& path, FirstPage first);

/// The fragment that stands in every page, as a library holds it: look and context menu.
QString ownFragment();

}  // namespace lirovan::platform
