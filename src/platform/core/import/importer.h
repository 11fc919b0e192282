// Brings foreign database files into our layout: runs the import program, watches over it, and puts what it
// wrote in place. Whatever happens to that program or to the disk, the original file stays as it was until
// the new one is complete, checked and durable.
#pragma once

#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "platform/core/database.h"
#include "platform/core/library_layout.h"
#include "platform/core/result.h"

namespace lirovan::platform {

class WorkFolder;

/// Called at least ten times a second while an import runs, so a window can repaint itself from here. `total`
/// 0: not known yet. Answers false to cancel.
using ImportProgress = std::function<bool(qint64 done, qint64 total)>;

struct ImporterOptions {
    /// The import program; empty: `lirovan-jet-aktar` beside this program.
    QString program;
    /// An import that says nothing for so long is ended.
    std::chrono::milliseconds silence = std::chrono::seconds(60);
};

/// What ensureLayout() did.
struct EnsuredLayout {
    bool imported = false;
    QString backup;  ///< imported: where the original is now
};

/// A database that is open for reading; the temporary file behind it, if there is one, lives as long.
struct ReadableDatabase {
    std::shared_ptr<WorkFolder> folder;  // before the database, so that it goes after it
    Database database;
    bool imported = false;
};

class Importer {
  public:
    explicit Importer(ImporterOptions options = {});

    /// Imports `source` into the new file `target`; fails when that exists. Without `kind` the tables decide.
    /// `complete` may add to the file (its path is given) before it stands in its place.
    Result<LayoutKind> import(const QString& source, const QString& target, std::optional<LayoutKind> kind,
                              const ImportProgress& progress = {},
                              const std::function<Result<void>(const QString&)>& complete = {}) const;

    /// Makes sure that `path` is a file of ours before the program opens it. A Jet or plain SQLite file is
    /// imported and replaced in one rename; the original stays beside it as "kitaplar.vq.jet" or
    /// "kitaplar.vq.sqlite". Messages name the file. Two programs that do this at once take
    /// turns; a lock that nobody holds any more is not waited for (file_lock.h).
    Result<EnsuredLayout> ensureLayout(const QString& path, LayoutKind kind,
                                       const ImportProgress& progress = {}) const;

    /// Opens any file that ensureLayout() would take, without changing anything beside it: one that is not in
    /// our layout is imported into a temporary folder.
    Result<ReadableDatabase> openForReading(const QString& path, LayoutKind kind,
                                            const ImportProgress& progress = {}) const;

  private:
    ImporterOptions options_;
};

}  // namespace lirovan::platform
