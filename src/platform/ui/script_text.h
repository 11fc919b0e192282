// Texts on their way into a page.
#pragma once

#include <QString>

#include "platform/core/page_access.h"

namespace lirovan::platform {

/// `text` as a JavaScript string literal: quotes, control characters and lone surrogates escaped.
QString scriptText(QStringView text);

/// Page markup whose picture addresses "<folder>\OKU\..." the engine can follow: a folder whose name holds a
/// character that means something in an address or in markup (#, ?, %, &, the colon of a drive) is written as
/// an address there.
QString readableAddresses(QString html, const PageAccess& access);

}  // namespace lirovan::platform
