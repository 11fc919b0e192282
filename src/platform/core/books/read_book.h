// Runs the book reader on one file and takes over what it hands out.
#pragma once

#include <QString>
#include <chrono>
#include <functional>

#include "platform/core/books/book_content.h"
#include "platform/core/result.h"

namespace lirovan::platform {

/// Called at least ten times a second, in the thread that reads. `total` 0: not known yet. Answers false to
/// cancel.
using BookProgress = std::function<bool(qint64 done, qint64 total)>;

struct BookReaderOptions {
    QString program;       ///< empty: the book reader beside this program
    bool pictures = true;  ///< false: pictures are counted, but neither read whole nor handed over
    /// A reader that says nothing for so long, or runs for so long in all, is ended.
    std::chrono::milliseconds silence = std::chrono::seconds(60), longest = std::chrono::minutes(10);
    qint64 memory =
        qint64(1) << 30;  ///< bytes of data that the reader may hold (where the system can say so)
};

/// The book in `file`, whole and checked, or why there is none: the reader's own sentence, or what became of
/// the reader. Any thread; no event loop is needed.
Result<BookContent> readBook(const QString& file, const BookReaderOptions& options = {},
                             const BookProgress& progress = {});

}  // namespace lirovan::platform
