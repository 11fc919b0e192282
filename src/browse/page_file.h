// The page file that the content window shows: one file, overwritten by every page.
#pragma once

#include <QByteArray>
#include <QStringView>

#include "platform/core/paths.h"
#include "platform/core/result.h"

namespace lirovan::browse {

/// Texts relative to the application folder.
inline constexpr QStringView PageFile = u"\\OKU\\oku.html";
inline constexpr QStringView StartPage = u"\\OKU\\VQ.htm";          ///< as the pages name it
inline constexpr QStringView StartPageOfWindow = u"\\OKU\\VQ.HTM";  ///< the same file, as the windows open it

/// Writes `page` (without the final line end) to PageFile in windows-1254; where that file cannot be written
/// (folder missing or not writable, disk full), to "oku.html" in the user's cache folder for this library.
/// When both fail, the old page stays as it was.
/// Answers the bytes.
platform::Result<QByteArray> writePage(const platform::AppFolder& folder, QStringView page);

}  // namespace lirovan::browse
