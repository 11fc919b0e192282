// A note's text between the database and the edit box.
#pragma once

#include <QString>

#include "platform/core/rtf/document.h"
#include "platform/core/rtf/reader.h"

namespace lirovan::notes {

/// NotRTF of a text: canonical rich text, or a single space for no text at all.
QString storedRtf(const platform::rtf::Document& document);
/// The text of a NotRTF, whoever wrote it.
platform::rtf::Document textOf(const QString& notRtf, platform::rtf::ReadLimit limit = {});

/// What file systems bear of a title; may be empty. "Bir/iki." gives "Bir_iki".
QString fileTitle(const QString& title);

/// Texts are the same when they are stored the same way.
bool sameText(const platform::rtf::Document& a, const platform::rtf::Document& b);

}  // namespace lirovan::notes
