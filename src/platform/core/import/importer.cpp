#include "platform/core/import/importer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QTemporaryDir>

#include "platform/core/import/file_format.h"
#include "platform/core/import/import_run.h"
#include "platform/core/import/replace_file.h"

namespace lirovan::platform {
namespace {

// While an import runs, the file that is being written, and the lock that only one program holds.
QString unfinishedName(const QString& path) {
    return path + QStringLiteral(".aktarma");
}
QString lockName(const QString& path) {
    return path + QStringLiteral(".kilit");
}

Error named(const QString& path, const Error& error) {
    return {QStringLiteral("%1: %2").arg(QFileInfo(path).fileName(), error.message)};
}

bool isOurs(const FileHeader& header) {
    return header.format == FileFormat::Sqlite &&
           (header.applicationId == LibraryApplicationId || header.applicationId == NotesApplicationId);
}

Result<Database> openChecked(const QString& path, LayoutKind kind) {
    Result<Database> database = Database::open(path, OpenMode::ReadOnly);
    if (!database) return database;
    if (const Result<void> checked = checkLayout(*database, kind); !checked) return checked.error();
    return database;
}

// What a journal holds counts to the file, so a short file with one beside it may be whole.
FileHeader probe(const QString& path) {
    FileHeader header = probeFile(path);
    if (isOurs(header) && hasJournal(path)) header.truncated = false;
    return header;
}

Result<void> waitForLock(QLockFile& lock, const ImportProgress& progress) {
    constexpr int pollMilliseconds = 100;
    lock.setStaleLockTime(
        0);  // only the death of its holder makes a lock stale, however long an import takes
    while (!lock.tryLock(pollMilliseconds)) {
        if (lock.error() != QLockFile::LockFailedError)
            return Error{QStringLiteral("Dosyanın aktarılması gerekiyor, ama klasöre yazılamıyor.")};
        if (progress && !progress(0, 0)) return Error{QStringLiteral("Aktarma iptal edildi.")};
    }
    return {};
}

Result<EnsuredLayout> importInPlace(const ImporterOptions& options, const QString& path, LayoutKind kind,
                                    const ImportProgress& progress) {
    QLockFile lock(lockName(path));
    if (const Result<void> locked = waitForLock(lock, progress); !locked) return locked.error();
    // Another program may have done it while this one waited.
    const FileHeader header = probe(path);
    if (isOurs(header)) return EnsuredLayout{};
    if (const Result<void> readable = checkReadable(header); !readable) return readable.error();

    const QString unfinished = unfinishedName(path);
    if (QFileInfo::exists(unfinished) && !QFile::remove(unfinished))
        return Error{QStringLiteral("Eski bir aktarmanın artığı silinemiyor: %1.")
                         .arg(QFileInfo(unfinished).fileName())};
    const Result<LayoutKind> written = runImport(options, {path, unfinished, kind}, progress);
    if (!written) return written.error();
    const Result<QString> kept =
        replaceFile(path, unfinished, header.isJet() ? QStringLiteral(".jet") : QStringLiteral(".sqlite"));
    if (!kept) {
        QFile::remove(unfinished);
        return kept.error();
    }
    return EnsuredLayout{true, *kept};
}

}  // namespace

Importer::Importer(ImporterOptions options) : options_(std::move(options)) {}

Result<LayoutKind> Importer::import(const QString& source, const QString& target,
                                    std::optional<LayoutKind> kind, const ImportProgress& progress) const {
    if (const Result<void> readable = checkReadable(probeFile(source)); !readable)
        return named(source, readable.error());
    if (QFileInfo::exists(target)) return named(target, {QStringLiteral("Hedef dosya zaten var.")});
    if (const Result<void> free = checkNoJournal(target); !free) return free.error();
    if (!QFileInfo(target).absoluteDir().exists())
        return named(target, {QStringLiteral("Hedef klasör yok.")});
    // Beside the target, so that the last step is a rename within one file system.
    const QTemporaryDir folder(unfinishedName(target) + QStringLiteral("-XXXXXX"));
    if (!folder.isValid()) return named(target, {QStringLiteral("Hedefin klasörüne yazılamıyor.")});
    const QString unfinished = folder.filePath(QFileInfo(target).fileName());
    const Result<LayoutKind> written = runImport(options_, {source, unfinished, kind}, progress);
    if (!written) return named(source, written.error());
    if (!QFile::rename(unfinished, target))
        return named(target, {QStringLiteral("Hedef dosya oluşturulamadı.")});
    return written;
}

Result<EnsuredLayout> Importer::ensureLayout(const QString& givenPath, LayoutKind kind,
                                             const ImportProgress& progress) const {
    // Behind a link lies the file to replace.
    const QFileInfo info(givenPath);
    const QString path = info.isSymLink() && info.exists() ? info.canonicalFilePath() : givenPath;
    const FileHeader header = probe(path);
    if (const Result<void> readable = checkReadable(header); !readable) return named(path, readable.error());
    EnsuredLayout ensured;
    if (!isOurs(header)) {
        Result<EnsuredLayout> imported = importInPlace(options_, path, kind, progress);
        if (!imported) return named(path, imported.error());
        ensured = *imported;
    }
    const Result<Database> checked = openChecked(path, kind);
    if (!checked) return named(path, checked.error());
    return ensured;
}

Result<ReadableDatabase> Importer::openForReading(const QString& path, LayoutKind kind,
                                                  const ImportProgress& progress) const {
    const FileHeader header = probe(path);
    if (const Result<void> readable = checkReadable(header); !readable) return named(path, readable.error());
    ReadableDatabase result;
    QString readablePath = path;
    if (!isOurs(header)) {
        result.folder = std::make_shared<QTemporaryDir>();
        if (!result.folder->isValid()) return named(path, {QStringLiteral("Geçici klasör oluşturulamadı.")});
        readablePath = result.folder->filePath(QFileInfo(path).fileName());
        const Result<LayoutKind> written = runImport(options_, {path, readablePath, kind}, progress);
        if (!written) return named(path, written.error());
        result.imported = true;
    }
    Result<Database> database = openChecked(readablePath, kind);
    if (!database) return named(path, database.error());
    result.database = std::move(*database);
    return result;
}

}  // namespace lirovan::platform
