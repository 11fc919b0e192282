// The pictures of added books.
#pragma once

#include <QByteArray>
#include <optional>

#include "platform/core/database.h"
#include "platform/core/result.h"

namespace lirovan::data {

struct Picture {
    QByteArray type;  ///< "image/png"
    QByteArray bytes;
};

/// Nothing where the library has no picture of that number.
platform::Result<std::optional<Picture>> picture(const platform::Database& database, qint64 number);

}  // namespace lirovan::data
