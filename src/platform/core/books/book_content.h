// One book as the reader handed it over, checked. Texts and pictures lie in a temporary file, so that a large
// book takes no memory while a preview of it is looked at.
#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <vector>

#include "platform/core/books/book_lines.h"
#include "platform/core/result.h"

class QTemporaryFile;

namespace lirovan::platform {

/// A part of the temporary file.
struct SpoolPart {
    qint64 at = 0, size = 0;
};

/// An entry of the outline; one without text is a level, not a topic.
struct BookEntry {
    qint64 parent = -1, depth = 0;
    QString title;
    qint64 words = 0;
    SpoolPart text;
    std::vector<qint64> pictures;  ///< those that the text shows

    bool isTopic() const { return text.size > 0; }
};

struct BookPicture {
    QString name, type;
    SpoolPart bytes;
};

class BookContent {
  public:
    explicit BookContent(QString file);
    BookContent(BookContent&&) noexcept;
    BookContent& operator=(BookContent&&) noexcept;
    ~BookContent();

    /// The reader was told to hand over no pictures: they have numbers, but no lines.
    void expectNoPictures() { withPictures_ = false; }
    /// Takes the next line. Fails where it does not fit to those before it, or the disk is full.
    Result<void> take(BookLine line);
    /// Nothing more comes: a book is whole when it has a head, a last line with the right counts, a topic,
    /// and no link or picture that leads nowhere.
    Result<void> finish();

    const QString& file() const { return file_; }  ///< where the book was read from
    const BookHead& head() const { return head_; }
    const std::vector<BookEntry>& outline() const { return outline_; }
    const std::vector<BookPicture>& pictures() const { return pictures_; }
    const std::vector<BookSkippedLine>& skipped() const { return skipped_; }

    /// The authors that a list of books names: those with the role of one, else all; "Bilinmeyen Yazar"
    /// without any. "A. Kaya, B. Demir".
    QString authorName() const;
    /// The title, or the file's name where the source has none.
    QString title() const;

    Result<QString> text(qint64 entry) const;
    Result<QByteArray> picture(qint64 number) const;

  private:
    Result<SpoolPart> store(const QByteArray& bytes);
    Result<QByteArray> stored(SpoolPart part) const;
    Result<void> takeHead(BookHead head);
    Result<void> takePicture(const BookPictureLine& line);
    Result<void> takeTopic(const BookTopicLine& line);
    void noteLinks(const QString& text, BookEntry& entry);

    QString file_;
    std::unique_ptr<QTemporaryFile> spool_;
    BookHead head_;
    bool hasHead_ = false, withPictures_ = true;
    std::vector<BookEntry> outline_;
    std::vector<BookPicture> pictures_;
    std::vector<BookSkippedLine> skipped_;
    std::optional<BookDoneLine> done_;
    qint64 textBytes_ = 0, pictureBytes_ = 0, lastLinked_ = -1;
};

}  // namespace lirovan::platform
