#include "data/book_pictures.h"

#include "data/book_tables.h"

namespace lirovan::data {

platform::Result<std::optional<Picture>> picture(const platform::Database& database, qint64 number) {
    std::optional<Picture> found;
    const platform::Result<bool> tables = hasBookTables(database);
    if (!tables) return tables.error();
    if (!*tables) return found;
    const platform::Result<void> read = forEachRow(
        database, u"SELECT Bicim, Resim FROM tbl_Resim WHERE ResimID=?",
        [&found](const platform::Statement& row) {
            found = Picture{row.text(0).toUtf8(), row.bytes(1)};
        },
        number);
    if (!read) return read.error();
    return found;
}

}  // namespace lirovan::data
