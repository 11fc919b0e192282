// Texts of added books as the library has them.
#pragma once

#include <QHash>
#include <QString>
#include <optional>

#include "platform/core/books/book_content.h"

namespace lirovan::data {

/// A title or name as it is stored: one line, composed letters, no markup; titles go into pages as they are.
/// «Aşk & <Ölüm>» gives «Aşk & ‹Ölüm›».
QString storedTitle(QStringView title);

/// For every entry of an outline the entry to which a link to it leads: itself, or, of a level without text
/// and of an entry that is left out, the next topic below it; -1 where there is none.
std::vector<qint64> linkTargets(const platform::BookContent& book, const std::vector<bool>& left);

}  // namespace lirovan::data
