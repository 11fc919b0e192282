// Rich text (RTF) from a document.
//
// The writing is canonical: one document has one text, and read(write(d)) written again gives the same bytes,
// so that two notes are the same exactly when their texts are. Pure ASCII; Turkish letters as bytes of
// windows-1254
// ("\'f0"), everything else as "\u" with "?" for programs that do not know it.
#pragma once

#include <QByteArray>

#include "platform/core/rtf/document.h"

namespace lirovan::platform::rtf {

enum class Ending {
    Closed,  ///< every paragraph ends with \par: whole documents
    Inline   ///< the last one does not: a passage that goes into a line of other text
};

QByteArray write(const Document& document, Ending ending = Ending::Closed);

}  // namespace lirovan::platform::rtf
