#include "platform/core/replaced_database.h"

#include <sqlite3.h>

namespace lirovan::platform {

bool hasLostItsName(const Database& database) {
    int moved = 0;
    return database.isOpen() &&
           sqlite3_file_control(database.handle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK &&
           moved != 0;
}

}  // namespace lirovan::platform
