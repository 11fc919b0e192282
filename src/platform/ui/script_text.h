// Texts on their way into a page.
#pragma once

#include <QString>

#include "platform/core/paths.h"

namespace lirovan::platform {

/// `text` as a JavaScript string literal: quotes, control characters and lone surrogates escaped.
QString scriptText(QStringView text);

/// Page markup whose picture addresses "<folder>\OKU\..." the engine can follow: a folder whose name holds a
/// character that means something in an address (#, ?, %) is written as a file address there.
QString readableAddresses(QString html, const AppFolder& folder);

}  // namespace lirovan::platform
