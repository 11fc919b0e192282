#include "platform/core/version.h"

namespace lirovan::platform {

QString version() {
    return QStringLiteral(LIROVAN_VERSION);
}

}  // namespace lirovan::platform
