// Writing whole files. A file is written under another name beside its place and takes the place in one
// rename, so that whoever looks sees the old file or the new one. Every step is checked: a full disk is an
// error, never an empty file.
#pragma once

#include <QByteArrayView>
#include <QFile>
#include <QString>
#include <memory>

#include "platform/core/ended_from_outside.h"
#include "platform/core/result.h"

namespace lirovan::platform {

enum class Durability {
    OnDisk,  ///< survives a power cut once commit() has answered
    Fast     ///< for what is made anew anyway: the disk is not waited for
};

/// A file that comes in pieces. What is not committed leaves nothing behind. Messages name the file.
class FileWriter {
  public:
    /// Behind a symbolic link the file that it leads to is written. An existing file's permissions stay.
    explicit FileWriter(const QString& path, Durability durability = Durability::OnDisk);
    ~FileWriter();
    Q_DISABLE_COPY_MOVE(FileWriter)

    Result<void> open();
    Result<void> write(QByteArrayView bytes);
    Result<void> commit();
    const QString& path() const { return path_; }

  private:
    Error failure() const;
    Error failure(const QString& reason) const;

    QString path_;   // as given
    QString place_;  // of the file itself
    Durability durability_;
    QFile file_;
    std::unique_ptr<RemovedAtSignal> removedAtSignal_;
};

/// The same in one call.
Result<void> writeWholeFile(const QString& path, QByteArrayView content,
                            Durability durability = Durability::OnDisk);

/// Forces a file, or the names in a folder, to disk. Where the file system knows no such thing, that is no
/// failure.
bool forceToDisk(const QString& path);

/// Gives `replacement` the permissions of `path`.
void copyPermissions(const QString& path, const QString& replacement);

}  // namespace lirovan::platform
