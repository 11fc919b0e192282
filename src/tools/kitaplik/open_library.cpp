#include "tools/kitaplik/open_library.h"

namespace lirovan::tools {

platform::Result<OpenLibrary> openLibrary(const QString& path) {
    platform::Result<platform::ReadableDatabase> file =
        platform::Importer().openForReading(path, platform::LayoutKind::Library);
    if (!file) return file.error();
    data::Library library = data::Library::ofDatabase(file->database);
    return OpenLibrary{std::move(*file), std::move(library)};
}

}  // namespace lirovan::tools
