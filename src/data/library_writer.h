// Writes a new library file, row by row.
#pragma once

#include <QString>

#include "data/rows.h"
#include "platform/core/database.h"
#include "platform/core/result.h"

namespace lirovan::data {

/// One transaction: a file whose writing was not finished holds no rows.
class LibraryWriter {
  public:
    /// A longer text, with the rest of its row, is more than SQLite takes (1,000,000,000 bytes unless it was
    /// built otherwise).
    static constexpr qint64 MostTextBytes = 999'000'000;

    /// Makes the new file `path`; fails when it exists.
    static platform::Result<LibraryWriter> create(const QString& path);

    platform::Result<void> add(const Author& author);
    platform::Result<void> add(const Book& book);
    platform::Result<void> add(const Heading& heading);
    platform::Result<void> add(const TopicText& topic);
    platform::Result<void> addScript(QStringView fragment);

    /// Makes the indexes and ends the transaction. Nothing can be added afterwards.
    platform::Result<void> finish();

    const platform::Database& database() const { return database_; }

  private:
    LibraryWriter(platform::Database database, platform::Transaction transaction)
        : database_(std::move(database)), transaction_(std::move(transaction)) {}

    platform::Database database_;
    platform::Transaction transaction_;
    qint64 topics_ = 0, scripts_ = 0;
};

/// Makes the new file `path`: a library without books, whose pages have the program's own fragment.
platform::Result<void> makeEmptyLibrary(const QString& path);

}  // namespace lirovan::data
