// The version of the programs. It is written once, in the project's CMakeLists.txt.
#pragma once

#include <QString>

namespace lirovan::platform {

/// Four numbers: "5.1.1.5".
QString version();

}  // namespace lirovan::platform
