// A small library in a folder of its own, made row by row.
#pragma once

#include <QString>
#include <QTemporaryDir>
#include <memory>

#include "data/library.h"

namespace lirovan::test {

/// An application folder that holds `kitaplar.vq` and an empty `OKU`. A failing step throws
/// std::runtime_error with the message, which ends the test.
///
///     LibraryFile file;
///     file.author(1, u"Sabri").book(3, 1, u"Önsöz").topic(7, 3, u"GİRİŞ", u"<P>metin</P>");
///     const data::Library library = file.open();
class LibraryFile {
  public:
    LibraryFile();

    LibraryFile& author(qint64 id, QStringView name);
    LibraryFile& book(qint64 id, qint64 author, QStringView title, double order = 0);
    /// Heading and text; `order` 0 puts it after the earlier ones.
    LibraryFile& topic(qint64 id, qint64 book, QStringView heading, QStringView text, double part = 0,
                       double order = 0);
    LibraryFile& script(QStringView fragment);
    LibraryFile& variant(QStringView written, QStringView searchForm);
    LibraryFile& execute(QStringView sql);

    data::Library open(platform::OpenMode mode = platform::OpenMode::ReadWrite) const;
    QString folder() const { return folder_->path(); }
    QString path() const { return folder_->filePath(QStringLiteral("kitaplar.vq")); }
    QString filePath(const QString& name) const { return folder_->filePath(name); }
    platform::AppFolder appFolder() const { return platform::AppFolder(folder_->path()); }

  private:
    LibraryFile& insert(QStringView sql, std::initializer_list<QVariant> values);

    std::unique_ptr<QTemporaryDir> folder_;
    platform::Database database_;
    int topics_ = 0;
};

/// Two authors with three books of two topics each: author 1 "Sabri Işık" has books 1, 2 and 5, author 2
/// "Zeynep Ersoy" has books 32, 35 (the hidden one) and 40. Topic ids are book × 100 + 1 and + 2.
LibraryFile smallLibrary();

}  // namespace lirovan::test
