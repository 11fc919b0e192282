#include "tools/kitaplik/make_file.h"

#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <filesystem>

#include "platform/core/file_writer.h"
#include "platform/core/import/file_format.h"
#include "platform/core/import/replace_file.h"
#include "platform/core/library_layout.h"

namespace lirovan::tools {

using namespace Qt::StringLiterals;
using platform::Error;
using platform::Result;

namespace {

void removeDatabase(const QString& path) {
    for (const QStringView side : platform::SideFiles) QFile::remove(path + side.toString());
    QFile::remove(path);
}

bool isLibrary(const QString& path) {
    const platform::FileHeader header = platform::probeFile(path);
    return header.format == platform::FileFormat::Sqlite &&
           header.applicationId == platform::LibraryApplicationId;
}

}  // namespace

Result<void> makeFile(const QString& target, const std::function<Result<void>(const QString&)>& write) {
    const QFileInfo info(target);
    if (info.isDir()) return Error{u"Hedef bir klasör: %1."_s.arg(target)};
    if ((info.exists() || info.isSymLink()) && !isLibrary(target))
        return Error{u"%1 bir kitaplık dosyası değil; üzerine yazılmadı."_s.arg(target)};
    // Behind a link lies the file to replace.
    const QString path = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    QLockFile lock(path + u".kilit"_s);
    lock.setStaleLockTime(0);  // only the death of its holder makes a lock stale
    if (!lock.tryLock()) {
        return lock.error() == QLockFile::LockFailedError
                   ? Error{u"%1 şu anda başka bir program tarafından yazılıyor."_s.arg(target)}
                   : Error{u"Hedefin klasörüne yazılamıyor: %1."_s.arg(info.absolutePath())};
    }
    // Beside the target, so that the last step is a rename within one file system.
    const QString unfinished = path + u".yapim"_s;
    removeDatabase(unfinished);
    // An interrupted write of the old file is undone, so that nothing is left to be played into the new one.
    if (info.exists()) (void)platform::Database::open(path, platform::OpenMode::ReadWrite);
    if (const Result<void> free = platform::checkNoJournal(path); !free) return free;
    const Result<void> written = write(unfinished);
    std::error_code failure;
    if (written) {
        if (info.exists()) platform::copyPermissions(path, unfinished);
        std::filesystem::rename(unfinished.toStdU16String(), path.toStdU16String(), failure);
    }
    removeDatabase(unfinished);
    if (!written) return written;
    if (failure) return Error{u"%1 yerine konamadı."_s.arg(target)};
    return {};
}

}  // namespace lirovan::tools
