#include "platform/core/import/importer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "platform/core/file_lock.h"
#include "platform/core/file_writer.h"
#include "platform/core/import/file_format.h"
#include "platform/core/import/import_run.h"
#include "platform/core/import/replace_file.h"
#include "platform/core/work_folder.h"

namespace lirovan::platform {

using namespace Qt::StringLiterals;
namespace {

// While an import runs, the file that is being written.
QString unfinishedName(const QString& path) {
    return path + u".aktarma"_s;
}

Error named(const QString& path, const Error& error) {
    return {u"%1: %2"_s.arg(QFileInfo(path).fileName(), error.message)};
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

// A holder that works shows it every few seconds.
constexpr auto WithoutWork = std::chrono::seconds(20);

Result<EnsuredLayout> importInPlace(const ImporterOptions& options, const QString& path, LayoutKind kind,
                                    const ImportProgress& progress) {
    const QString unfinished = unfinishedName(path);
    FileLock lock(path, unfinished);
    const auto waiting = [&] { return !progress || progress(0, 0); };
    const auto patience = std::min<std::chrono::milliseconds>(options.silence, WithoutWork);
    if (const Result<void> locked = lock.take(patience, waiting); !locked) return locked.error();
    // Another program may have done it while this one waited.
    const FileHeader header = probe(path);
    if (isOurs(header)) return EnsuredLayout{};
    if (const Result<void> readable = checkReadable(header); !readable) return readable.error();

    if (const Result<void> removed = removeUnfinished(unfinished); !removed) return removed.error();
    const RemovedAtSignal removedAtSignal(unfinished);
    const auto working = [&](qint64 done, qint64 total) {
        lock.showWork();
        return !progress || progress(done, total);
    };
    const Result<LayoutKind> written = runImport(options, {path, unfinished, kind}, working);
    if (!written) return written.error();
    const Result<QString> kept = replaceFile(path, unfinished, header.isJet() ? u".jet"_s : u".sqlite"_s);
    if (!kept) {
        QFile::remove(unfinished);
        return kept.error();
    }
    return EnsuredLayout{true, *kept};
}

}  // namespace

Importer::Importer(ImporterOptions options) : options_(std::move(options)) {}

Result<LayoutKind> Importer::import(const QString& source, const QString& target,
                                    std::optional<LayoutKind> kind, const ImportProgress& progress,
                                    const std::function<Result<void>(const QString&)>& complete) const {
    if (const Result<void> readable = checkReadable(probeFile(source)); !readable)
        return named(source, readable.error());
    if (QFileInfo::exists(target)) return named(target, {u"Hedef dosya zaten var."_s});
    if (const Result<void> free = checkNoJournal(target); !free) return free.error();
    if (!QFileInfo(target).absoluteDir().exists()) return named(target, {u"Hedef klasör yok."_s});
    // Beside the target, so that the last step is a rename within one file system.
    const auto folder = WorkFolder::make(unfinishedName(target) + u'-');
    if (!folder) return named(target, folder.error());
    const QString unfinished = (*folder)->file();
    const Result<LayoutKind> written = runImport(options_, {source, unfinished, kind}, progress);
    if (!written) return named(source, written.error());
    if (const Result<void> done = complete ? complete(unfinished) : Result<void>(); !done)
        return named(source, done.error());
    if (!QFile::rename(unfinished, target) || !forceToDisk(QFileInfo(target).absolutePath()))
        return named(target, {u"Hedef dosya oluşturulamadı."_s});
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
        auto folder = WorkFolder::make(QDir::tempPath() + u"/lirovan-okuma-"_s);
        if (!folder) return named(path, folder.error());
        result.folder = std::move(*folder);
        readablePath = result.folder->file();
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
