// A document as a page of HTML, for other programs.
#pragma once

#include <QString>

#include "platform/core/rtf/document.h"

namespace lirovan::platform::rtf {

/// A whole page in UTF-8; `title` goes into its head.
QString toHtml(const Document& document, const QString& title = {});

}  // namespace lirovan::platform::rtf
