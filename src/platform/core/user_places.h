// What belongs to a library folder that cannot be written: one folder a library among the user's own files,
// under "lirovan/kitapliklar" and a name made from the real path of the library's folder.
#pragma once

#include <QString>

#include "platform/core/paths.h"

namespace lirovan::platform {

/// For what is made anew at any time. Neither folder is created here.
QString cacheFolder(const AppFolder& library);
/// For what must stay.
QString userFolder(const AppFolder& library);

/// Whether rights, or a medium that is read-only, keep this program from writing to an existing file or
/// folder. A full disk does not count: it passes.
bool isWriteProtected(const QString& path);

}  // namespace lirovan::platform
