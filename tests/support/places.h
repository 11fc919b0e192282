// Where the tests find the programs that were built, and the project's own files.
#pragma once

#include <QString>

namespace lirovan::test {

QString builtProgram(const QString& name);
QString projectFile(const QString& path);

}  // namespace lirovan::test
