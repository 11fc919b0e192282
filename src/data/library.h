// The library: one connection, opened at start-up and shared by every window until the program ends.
#pragma once

#include <QString>
#include <optional>

#include "data/catalogue.h"
#include "data/rows.h"
#include "platform/core/database.h"
#include "platform/core/paths.h"
#include "platform/core/result.h"

namespace lirovan::data {

/// The library's place in the application folder.
inline constexpr QStringView LibraryFile = u"\\kitaplar.vq";

/// What open() answers when the file is missing or cannot be read at all.
QString missingLibraryMessage();

class Library {
  public:
    Library() = default;  ///< a closed library; every use of it is an error, none is a crash

    /// The library of an application folder, which must be in this program's layout (see library_layout.h;
    /// other files are imported first). The error message is missingLibraryMessage() where there is no file
    /// that could be read, otherwise it says what is wrong with the file. The file is not touched.
    static platform::Result<Library> open(const platform::AppFolder& folder,
                                          platform::OpenMode mode = platform::OpenMode::ReadWrite);
    /// A library file anywhere. Its connection string names that file.
    static platform::Result<Library> openFile(const QString& path, platform::OpenMode mode);

    /// A database that was opened and checked elsewhere (an import into a temporary file).
    static Library ofDatabase(platform::Database database);

    /// "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + the folder + "\kitaplar.vq;Persist Security
    /// Info=False;". Kept as the name under which the library is known; nothing is opened by it.
    static QString connectionString(const platform::AppFolder& folder);
    const QString& connectionString() const { return connectionString_; }

    /// Another connection to the same file, for reading; another thread needs one of its own.
    platform::Result<Library> reopened() const;
    QString path() const { return database_.path(); }

    bool isOpen() const { return database_.isOpen(); }
    void close() { database_.close(); }
    const platform::Database& database() const { return database_; }

    // Rows of the catalogue's statements.
    platform::Result<Rows<Author>> authors() const;
    platform::Result<Rows<Book>> selectorBooks(AuthorId author) const;
    platform::Result<Rows<Book>> treeBooks(AuthorId author) const;
    platform::Result<Rows<Heading>> headings(BookId book) const;
    platform::Result<Rows<Variant>> variants(QStringView word) const;

    // Single rows; nothing where there is no such row.
    platform::Result<std::optional<Author>> author(AuthorId author) const;
    platform::Result<std::optional<Book>> bookByTitle(QStringView title) const;
    platform::Result<std::optional<Book>> bookById(BookId book) const;  ///< id and title only
    platform::Result<std::optional<Heading>> heading(BookId book, TopicId topic) const;
    platform::Result<std::optional<Heading>> heading(TopicId topic) const;
    platform::Result<std::optional<BookHeading>> headingWithBook(TopicId topic,
                                                                 std::optional<qint64> headingRow = {}) const;
    platform::Result<std::optional<TopicText>> topic(TopicId topic) const;

    /// The fragment in the first row of tbl_scripts; where there is none, the one given with useScript().
    platform::Result<QString> script() const;
    void useScript(const QString& fragment) { scriptIfNone_ = fragment; }

    /// Writes the whole library into the new file `path`.
    platform::Result<void> copyTo(const QString& path) const;

    /// A statement of the catalogue as a raw cursor, for scans that read stored UTF-8 (catalogue.h has the
    /// positions).
    platform::Result<platform::Statement> query(const QString& statement) const {
        return database_.prepare(statement);
    }
    /// A statement of the catalogue without rows.
    platform::Result<void> execute(const QString& statement) const { return database_.execute(statement); }

  private:
    platform::Database database_;
    QString connectionString_, scriptIfNone_;
};

}  // namespace lirovan::data
