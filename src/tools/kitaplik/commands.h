// The groups of sub-commands. main() puts them together; a new group is one file and one line there.
#pragma once

#include <vector>

#include "tools/kitaplik/command.h"

namespace lirovan::tools {

std::vector<Command> makingCommands();    ///< olustur, aktar
std::vector<Command> checkingCommands();  ///< denetle
std::vector<Command> bookCommands();      ///< ekle, cikar
std::vector<Command> noteCommands();      ///< not-aktar, not-ara
std::vector<Command> readingCommands();   ///< agac, secici, konu
std::vector<Command> searchCommands();    ///< ara, vurgula, ozet, kelimeler

}  // namespace lirovan::tools
