// A list of hits as a file.
#pragma once

#include <QString>
#include <vector>

#include "search/study/hit_lines.h"

namespace lirovan::search {

enum class HitFormat {
    Csv,   ///< UTF-8 with its mark, semicolons between the columns, as Turkish spreadsheets read it
    Html,  ///< a table
    Text   ///< words one below the other
};

/// By the file's suffix; Text where it says nothing.
HitFormat formatOf(const QString& path);

/// What a save dialog offers.
inline constexpr QStringView HitFilter = u"Tablo, CSV (*.csv);;Web sayfası (*.html);;Düz metin (*.txt)";

/// Writes the lines of `hits` in that order, under `title`. False: `progress` ended it, and there is no file.
platform::Result<bool> saveHits(HitLines& lines, const std::vector<quint32>& hits, const QString& title,
                                const QString& path, const HitProgress& progress);

}  // namespace lirovan::search
