// The lines of the book reader as values. What book_protocol.h does not allow is an error: the program that
// wrote it read foreign bytes.
#pragma once

#include <QByteArray>
#include <QString>
#include <variant>
#include <vector>

#include "platform/core/result.h"

namespace lirovan::platform {

struct BookProgressLine {
    qint64 done = 0, total = 0;
};
struct BookAuthor {
    QString name, role;
};
/// What the source says of the book.
struct BookHead {
    QString title, subtitle, series;
    std::vector<BookAuthor> authors;
    QString language, identifier, digest, format;
    bool fromHeadings = false;
};
struct BookPictureLine {
    qint64 number = 0;
    QString name, type;
    QByteArray bytes;
};
struct BookTopicLine {
    qint64 number = 0, parent = -1, depth = 0;
    QString title, text;
    qint64 words = 0;
};
struct BookSkippedLine {
    QString name, reason;
};
struct BookFailureLine {
    QString message;
};
struct BookDoneLine {
    qint64 topics = 0, pictures = 0;
};
using BookLine = std::variant<BookProgressLine, BookHead, BookPictureLine, BookTopicLine, BookSkippedLine,
                              BookFailureLine, BookDoneLine>;

/// One line, without its line end: its form, types, ranges, lengths; that a topic text holds nothing but what
/// may stand there and a picture is one. What depends on other lines (numbers without gaps, links that lead
/// somewhere) is left to the caller. The message says what is wrong, for a developer as much as for a user.
Result<BookLine> parseBookLine(const QByteArray& line);

}  // namespace lirovan::platform
