// A document from rich text (RTF), whoever wrote it.
//
// Nothing is an error: what is not understood is passed over, what is cut off ends where it ends, and what is
// not rich text at all is taken as plain text. Time and memory are linear in the size of the input, at any
// depth of nesting. Lists and tables come as text (bullets and numbers as they were shown, cells separated by
// tabs, a row a paragraph); pictures, headers, footers, notes for the program and hidden text are left out.
#pragma once

#include <QByteArrayView>
#include <QStringView>
#include <limits>

#include "platform/core/rtf/document.h"

namespace lirovan::platform::rtf {

struct ReadLimit {
    /// Reading stops once that many characters are there: enough for the beginning of a text.
    qsizetype characters = std::numeric_limits<qsizetype>::max();
    /// Without: how characters look is not worked out, for who wants the text alone.
    bool formats = true;
};

/// read("{\\rtf1\\ansicpg1254 a\\b \\'f0\\par}") is one paragraph: "a", and "ğ" in bold.
Document read(QByteArrayView rtf, ReadLimit limit = {});

/// Rich text that went through a text column. Its 8-bit bytes were read there as windows-1254.
Document read(QStringView rtf, ReadLimit limit = {});

/// A paragraph for each line of the text, whatever that looks like.
Document plainDocument(QStringView text, ReadLimit limit = {});

/// Does the text begin as rich text does?
bool isRtf(QByteArrayView text);

}  // namespace lirovan::platform::rtf
