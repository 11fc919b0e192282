// Bytes of a document as UTF-8 text that the parsers take without further questions.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include "platform/core/result.h"

namespace lirovan::book_reader {

enum class SourceKind { Markup, Plain };

/// The code page of `bytes` is found by byte order mark, XML declaration, `meta` element, or by looking at
/// them: what is no UTF-8 is windows-1254. The result is UTF-8 without a mark; bytes without a meaning
/// become U+FFFD.
QByteArray toUtf8(const QByteArray& bytes, SourceKind kind);

/// Text whose lines end with "\n" alone; a page break ends a line too.
QString withPlainLineEnds(const QByteArray& utf8);

/// RTF in a form that every reader takes alike: bytes of the code page that it names, and Unicode characters,
/// become "\uN ?".
QByteArray plainRtf(const QByteArray& rtf);

/// Whether an element of the markup has so many attributes that a parser, which compares each with all
/// others, would take minutes.
bool hasEndlessElement(const QByteArray& markup);

/// XML or HTML without its document type, with character entities (those of XHTML, and plain ones that the
/// document declares) resolved; an ampersand that begins none is escaped. Entities that name files or other
/// entities are refused.
platform::Result<QByteArray> withoutEntities(const QByteArray& utf8);

}  // namespace lirovan::book_reader
