// What a text document of the toolkit can carry. Its HTML reader takes time by the square of the depth, and
// its layout knows no place below 8.3 million pixels.
#pragma once

#include "platform/core/rtf/document.h"

namespace lirovan::platform::rtf {

/// Elements within elements; pages and word processors stay far below.
inline constexpr qsizetype MaxHtmlDepth = 200;
/// Paragraphs and line breaks. A line may be 32 pixels high.
inline constexpr qsizetype MaxLines = 250'000;

/// Joins the paragraphs from line `lines` on with blanks, into a few long ones. No text is left out.
void joinLinesBeyond(Document& document, qsizetype lines = MaxLines);

}  // namespace lirovan::platform::rtf
