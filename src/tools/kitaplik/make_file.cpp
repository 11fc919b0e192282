#include "tools/kitaplik/make_file.h"

#include <QFile>
#include <QFileInfo>
#include <filesystem>
#include <memory>
#include <vector>

#include "platform/core/ended_from_outside.h"
#include "platform/core/file_lock.h"
#include "platform/core/file_writer.h"
#include "platform/core/import/file_format.h"
#include "platform/core/import/replace_file.h"
#include "platform/core/library_layout.h"

namespace lirovan::tools {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
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
    // Beside the target, so that the last step is a rename within one file system.
    const QString unfinished = path + u".yapim"_s;
    platform::FileLock lock(path, unfinished);
    if (const Result<void> locked = lock.take(0ms, [] { return true; }); !locked) return locked;
    if (const Result<void> removed = platform::removeUnfinished(unfinished); !removed) return removed;
    std::vector<std::unique_ptr<platform::RemovedAtSignal>> removedAtSignal;
    removedAtSignal.push_back(std::make_unique<platform::RemovedAtSignal>(unfinished));
    for (const QStringView side : platform::SideFiles)
        removedAtSignal.push_back(std::make_unique<platform::RemovedAtSignal>(unfinished + side.toString()));
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
    if (failure || !platform::forceToDisk(info.absolutePath()))
        return Error{u"%1 yerine konamadı."_s.arg(target)};
    return {};
}

}  // namespace lirovan::tools
