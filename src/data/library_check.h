// What is wrong with a library: for those who make one.
#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>
#include <optional>

#include "platform/core/database.h"
#include "platform/core/result.h"

namespace lirovan::data {

/// Every fault of a library file, a line each, in Turkish and with the id of the row; empty when there is
/// none.
/// - the database itself is damaged, a table or column is missing (then nothing else is looked at);
/// - an id is given twice; a book has no author, a heading no book or no text, a text no heading;
/// - a text is empty, holds bytes that are no characters, or its markup is not closed;
/// - what belongs to added books leads nowhere or is left over (book_check.h).
/// Fails when the library cannot be read to the end.
platform::Result<QStringList> checkLibrary(const platform::Database& database);

/// The first fault of a topic's markup: a tag without its ">", a comment without its end, an element that
/// must be closed and is not, or an end without a beginning. <P>, <LI>, <TR>, <TD> and the like need no end.
/// "<B>a" gives «<b> kapanmamış».
std::optional<QString> markupFault(QStringView html);

}  // namespace lirovan::data
