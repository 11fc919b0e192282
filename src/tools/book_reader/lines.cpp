#include "tools/book_reader/lines.h"

#include "platform/core/books/book_protocol.h"

namespace lirovan::book_reader {

using platform::JsonLine;

namespace {

JsonLine line(const char* kind) {
    JsonLine made;
    made.text("tur", QString::fromLatin1(kind));
    return made;
}

}  // namespace

void Lines::write(const QByteArray& text) {
    good_ = good_ &&
            std::fwrite(text.constData(), 1, static_cast<size_t>(text.size()), channel_) ==
                static_cast<size_t>(text.size()) &&
            std::fputc('\n', channel_) != EOF;
}

void Lines::progress(qint64 done, qint64 total) {
    write(line(platform::BookLineProgress).number("yapilan", done).number("toplam", total).finish());
    good_ = good_ && std::fflush(channel_) == 0;
}

void Lines::book(const Package& package, const QByteArray& hash, bool fromHeadings) {
    QByteArray authors;
    for (const Creator& creator : package.creators)
        authors += (authors.isEmpty() ? "" : ",") +
                   JsonLine().text("ad", creator.name).text("rol", creator.role).finish();
    write(line(platform::BookLineBook)
              .text("ad", package.title)
              .text("altad", package.subtitle)
              .text("dizi", package.series)
              .raw("yazarlar", '[' + authors + ']')
              .text("dil", package.language)
              .text("kimlik", package.identifier)
              .text("ozet", QString::fromLatin1(hash))
              .text("bicim", package.format)
              .raw("basliklardan", fromHeadings ? "true" : "false")
              .finish());
}

void Lines::picture(int number, const QString& name, const QString& type, const QByteArray& bytes) {
    write(line(platform::BookLinePicture)
              .number("no", number)
              .text("ad", name)
              .text("bicim", type)
              .raw("veri", '"' + bytes.toBase64() + '"')
              .finish());
}

void Lines::topic(int number, int parent, int depth, const QString& title, const QByteArray& text,
                  qint64 words) {
    write(line(platform::BookLineTopic)
              .number("no", number)
              .number("ust", parent)
              .number("derinlik", depth)
              .text("baslik", title)
              .text("metin", QString::fromUtf8(text))
              .number("sozcuk", words)
              .finish());
}

void Lines::skipped(const QString& name, const QString& reason) {
    write(line(platform::BookLineSkipped).text("ad", name).text("neden", reason).finish());
}

void Lines::failure(const QString& message) {
    good_ = true;
    write(line(platform::BookLineFailure).text("metin", message).finish());
    std::fflush(channel_);
}

void Lines::done(int topics, int pictures) {
    write(line(platform::BookLineDone).number("konu", topics).number("resim", pictures).finish());
    good_ = good_ && std::fflush(channel_) == 0;
}

}  // namespace lirovan::book_reader
