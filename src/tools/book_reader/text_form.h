// The form that texts have in a library, so that its search finds every word: composed letters, no invisible
// characters, plain quotes, apostrophes and blanks.
#pragma once

#include <QByteArray>
#include <QString>

namespace lirovan::book_reader {

/// Whether search takes the character for part of a word.
bool isWordCharacter(char32_t character);
/// Soft hyphens, zero-width blanks and the like: nothing that is read.
bool isInvisible(char16_t unit);
bool isBlank(char16_t unit);

/// Plain text in the library's form: NFC, ligatures and typographic signs resolved. Blanks become U+0020 and,
/// unless `keepLines`, runs of them one.
QString inTextForm(QString text, bool keepLines = false);

/// Text as it stands between tags: "&amp;", "&lt;", "&gt;", "&quot;".
QByteArray escaped(const QString& text);

/// Runs of letters, digits and "_".
qint64 countWords(QStringView text);

}  // namespace lirovan::book_reader
