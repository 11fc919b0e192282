// What a file that should be a library or a notes file really is, told from its first page.
#pragma once

#include <QByteArrayView>
#include <QString>

#include "platform/core/result.h"

namespace lirovan::platform {

enum class FileFormat { Missing, Folder, Unreadable, Empty, Sqlite, Jet3, Jet4, Unknown };

struct FileHeader {
    FileFormat format = FileFormat::Unknown;
    bool truncated = false;    ///< the header promises more than the file holds
    bool password = false;     ///< Jet: a database password is set
    quint16 codePage = 0;      ///< Jet 3: Windows code page of its texts, 0 when the header names none
    qint32 applicationId = 0;  ///< SQLite: PRAGMA application_id
    QString reason;            ///< Unreadable: why

    bool isJet() const { return format == FileFormat::Jet3 || format == FileFormat::Jet4; }
};

/// How much of a file readHeader() wants to see.
inline constexpr qsizetype HeaderBytes = 512;

/// `start`: the first HeaderBytes bytes of the file, or all of a shorter one; `fileSize` in bytes. Never
/// fails.
FileHeader readHeader(QByteArrayView start, qint64 fileSize);

FileHeader probeFile(const QString& path);

/// Fails with a message for the user unless the file is a database that an import or SQLite can try to read.
Result<void> checkReadable(const FileHeader& header);

}  // namespace lirovan::platform
