// The reader's own file of one library: session and bookmarks. A SQLite file beside the notes, "okur.vq";
// notes and library know nothing of it.
//
// Its application id is "LOKR" and its user version the layout's number. A file with a later number was
// written by a newer program and is left alone.
#pragma once

#include <QString>
#include <QStringView>

#include "platform/core/database.h"
#include "platform/core/paths.h"
#include "platform/core/result.h"

namespace lirovan::desk {

/// Beside the notes of the library's folder, or in the user's folder that stands in for one that cannot be
/// written; see notes/notes_place.h. There it begins with what the library's folder holds.
QString readerFilePath(const platform::AppFolder& library);

/// Opens the file to read and to write; it is made, with its folder, where it is missing. What is committed
/// to it survives a power cut.
platform::Result<platform::Database> openReaderFile(const QString& path);

/// The same for reading alone. Nothing is made; a file that is not there is an error.
platform::Result<platform::Database> readReaderFile(const QString& path);

/// Whether the file is there and is no database, or one with damaged pages.
bool isDamagedReaderFile(const QString& path);
/// Renames a file that cannot be read, so that another one can be made in its place, and answers the new
/// name.
platform::Result<QString> setReaderFileAside(const QString& path);

}  // namespace lirovan::desk
