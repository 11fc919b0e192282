// The files that a book consists of: a zip container, a folder, or bytes in memory.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <memory>

#include "platform/core/result.h"

namespace lirovan::book_reader {

using platform::Error;
using platform::Result;

class Files {
  public:
    virtual ~Files() = default;
    /// Names are relative, with "/" and without "." and ".." parts.
    virtual bool has(const QString& name) const = 0;
    /// Never more than `limit` bytes: a larger file is an error.
    virtual Result<QByteArray> read(const QString& name, qint64 limit) = 0;
};

/// A zip file; refused as a whole where it is damaged, encrypted, or made to do harm.
Result<std::unique_ptr<Files>> openZip(const QString& path);
/// A folder. Names that lead out of it by a link are not there.
std::unique_ptr<Files> openFolder(const QString& folder);
/// One document in memory over the files of a folder (which may be null).
std::unique_ptr<Files> overlay(const QString& name, QByteArray bytes, std::unique_ptr<Files> below);

/// `relative` as seen from the file `base`, both names in the container; percent signs are decoded. Nothing
/// when it leads out.
QString resolvedName(const QString& base, QStringView relative);

}  // namespace lirovan::book_reader
