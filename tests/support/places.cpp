#include "support/places.h"

namespace lirovan::test {

// No other source is told these places, so that what a compiler cache holds serves every checkout.
QString builtProgram(const QString& name) {
    return QStringLiteral(LIROVAN_BIN_DIR "/") + name;
}

QString projectFile(const QString& path) {
    return QStringLiteral(LIROVAN_SOURCE_DIR "/") + path;
}

}  // namespace lirovan::test
