// Reads a book whose files and reading order are known, and hands it over line by line.
#pragma once

#include "tools/book_reader/files.h"
#include "tools/book_reader/lines.h"
#include "tools/book_reader/package.h"

namespace lirovan::book_reader {

struct Source {
    Package package;
    std::unique_ptr<Files> files;
};

/// `hash`: of the source, in hex digits. Without `withPictures` pictures keep their numbers but get no lines.
Result<void> handOver(Source& source, const QByteArray& hash, bool withPictures, Lines& lines);

}  // namespace lirovan::book_reader
