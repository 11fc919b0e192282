// Opening a library for the sub-commands that read one.
#pragma once

#include "data/library.h"
#include "platform/core/import/importer.h"
#include "platform/core/result.h"

namespace lirovan::tools {

/// An open library; where the file was not in our layout, the temporary copy behind it lives as long.
struct OpenLibrary {
    platform::ReadableDatabase file;
    data::Library library;
};

/// Opens any library file for reading: one in our layout as it is, a Jet or plain SQLite file by way of a
/// temporary import. The file itself is never changed.
platform::Result<OpenLibrary> openLibrary(const QString& path);

}  // namespace lirovan::tools
