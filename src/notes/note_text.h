// A note's text between the database and the edit box.
#pragma once

#include <QString>

#include "platform/core/rtf/document.h"

namespace lirovan::notes {

/// NotRTF of a text: canonical rich text, or a single space for no text at all.
QString storedRtf(const platform::rtf::Document& document);
/// The text of a NotRTF, whoever wrote it.
platform::rtf::Document textOf(const QString& notRtf);

/// Texts are the same when they are stored the same way.
bool sameText(const platform::rtf::Document& a, const platform::rtf::Document& b);

}  // namespace lirovan::notes
