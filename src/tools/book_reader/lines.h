// Writes the lines of platform/core/books/book_protocol.h.
#pragma once

#include <QByteArray>
#include <cstdio>

#include "platform/core/json_line.h"
#include "tools/book_reader/package.h"

namespace lirovan::book_reader {

class Lines {
  public:
    explicit Lines(std::FILE* channel) : channel_(channel) {}

    void progress(qint64 done, qint64 total);
    void book(const Package& package, const QByteArray& hash, bool fromHeadings);
    void picture(int number, const QString& name, const QString& type, const QByteArray& bytes);
    /// `text` is UTF-8.
    void topic(int number, int parent, int depth, const QString& title, const QByteArray& text, qint64 words);
    void skipped(const QString& name, const QString& reason);
    void failure(const QString& message);
    void done(int topics, int pictures);
    /// Whether everything was taken; a reader that went away ends the work.
    bool good() const { return good_; }

  private:
    void write(const QByteArray& line);

    std::FILE* channel_;
    bool good_ = true;
};

}  // namespace lirovan::book_reader
