// Books as the lines of a book reader, and a reader that prints its file.
#pragma once

#include <QTemporaryDir>

#include "platform/core/books/read_book.h"
#include "support/files.h"

namespace lirovan::test {

inline QByteArray bookLine(const char* fields) {
    return QByteArray("{") + QByteArray(fields).replace('\'', '"') + "}\n";
}
inline QByteArray headLine(const QByteArray& title, const QByteArray& author, const QByteArray& identifier,
                           char digest = 'a') {
    return "{\"tur\":\"kitap\",\"ad\":\"" + title +
           "\",\"altad\":\"\",\"dizi\":\"\",\"yazarlar\":[{\"ad\":\"" + author +
           "\",\"rol\":\"aut\"}],\"dil\":\"tr\",\"kimlik\":\"" + identifier + "\",\"ozet\":\"" +
           QByteArray(64, digest) + "\",\"bicim\":\"EPUB 3\",\"basliklardan\":false}\n";
}
/// `text` in which quotes are apostrophes.
inline QByteArray topicLine(int number, const QByteArray& title, QByteArray text, int parent = -1,
                            int depth = 0) {
    return "{\"tur\":\"konu\",\"no\":" + QByteArray::number(number) +
           ",\"ust\":" + QByteArray::number(parent) + ",\"derinlik\":" + QByteArray::number(depth) +
           ",\"baslik\":\"" + title + "\",\"metin\":\"" + text.replace('\'', "\\\"") +
           "\",\"sozcuk\":" + (text.isEmpty() ? "0" : "3") + "}\n";
}
inline QByteArray doneLine(int topics, int pictures = 0) {
    return "{\"tur\":\"bitti\",\"konu\":" + QByteArray::number(topics) +
           ",\"resim\":" + QByteArray::number(pictures) + "}\n";
}
/// A whole GIF of one pixel.
inline QByteArray tinyGif() {
    return QByteArray::fromHex(
        "47494638396101000100800000ffffff00000021f90401000000002c00000000010001000002024401003b");
}
inline QByteArray pictureLine(int number, const QByteArray& bytes = tinyGif(),
                              const QByteArray& type = "image/gif") {
    return "{\"tur\":\"resim\",\"no\":" + QByteArray::number(number) + ",\"ad\":\"a.gif\",\"bicim\":\"" +
           type + "\",\"veri\":\"" + bytes.toBase64() + "\"}\n";
}

/// A folder with book files that hold lines, and a program in the reader's place.
class FakeReader {
  public:
    explicit FakeReader(const QByteArray& script = "cat \"$1\"") {
        const QString program =
            writeFile(folder_.filePath(QStringLiteral("oku")), "#!/bin/sh\n" + script + '\n');
        QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        options.program = program;
    }
    platform::Result<platform::BookContent> read(const QByteArray& lines,
                                                 const platform::BookProgress& progress = {}) {
        return platform::readBook(writeFile(path(QStringLiteral("kitap.epub")), lines), options, progress);
    }
    QString path(const QString& name) const { return folder_.filePath(name); }

    platform::BookReaderOptions options;

  private:
    QTemporaryDir folder_;
};

}  // namespace lirovan::test
