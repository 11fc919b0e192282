// Opens whatever a reader may call a book, as documents in reading order.
#pragma once

#include "tools/book_reader/book.h"

namespace lirovan::book_reader {

/// `path`: a file, or a folder with an index.html. Its format is told by its content where that is possible,
/// else by its name.
Result<Source> openSource(const QString& path);

/// SHA-256 of the file, or of the index of a folder, in hex digits.
Result<QByteArray> sourceHash(const QString& path);

/// One HTML document made from other text; `name` is its name, `base` the files around it (may be null).
Source singleDocument(const QString& name, QByteArray html, std::unique_ptr<Files> base);

/// Markdown and plain text as HTML documents with title and author where the text names them.
struct PlainBook {
    QByteArray html;
    QString title, author, language;
};
PlainBook fromMarkdown(const QByteArray& bytes);
PlainBook fromPlainText(const QByteArray& bytes);

/// DOCX, ODT, FB2, RTF as HTML, through pandoc in its sandbox. `format`: pandoc's word for it.
Result<QByteArray> throughPandoc(const QString& path, const QString& format);

/// Writes the document at `path` to `target` in a form of which pandoc loses nothing.
Result<void> writePlainOdt(const QString& path, const QString& target);

}  // namespace lirovan::book_reader
