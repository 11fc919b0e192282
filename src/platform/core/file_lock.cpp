#include "platform/core/file_lock.h"

#include <QFile>
#include <QFileInfo>
#include <QSysInfo>
#include <algorithm>
#include <filesystem>

#include "platform/core/database.h"
#include "platform/core/import/file_format.h"

namespace lirovan::platform {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

// A lock of another computer that has shown no work for so long is stale without another look.
constexpr auto Old = 10min;
constexpr std::chrono::milliseconds Poll = 100ms, Show = 2s;

}  // namespace

FileLock::FileLock(const QString& path, const QString& unfinished)
    : path_(path + u".kilit"_s), unfinished_(unfinished), lock_(path_) {
    // However long the work takes; age is looked at here, together with signs of work.
    lock_.setStaleLockTime(0);
}

Result<void> FileLock::take(std::chrono::milliseconds patience, const std::function<bool()>& goOn) {
    QDateTime sign = lastSign();
    QElapsedTimer quiet;
    quiet.start();
    while (!lock_.tryLock(patience == 0ms ? 0 : static_cast<int>(Poll.count()))) {
        if (lock_.error() != QLockFile::LockFailedError)
            return Error{u"Klasöre yazılamıyor: %1"_s.arg(QFileInfo(path_).path())};
        if (const QDateTime now = lastSign(); now != sign) {
            sign = now;
            quiet.restart();
        }
        const bool noWork = patience > 0ms && quiet.hasExpired(patience.count());
        const bool old = sign.secsTo(QDateTime::currentDateTime()) > std::chrono::seconds(Old).count();
        // One that is really held, by any program on this computer, cannot be removed.
        if (isForeign() && (noWork || old) && lock_.removeStaleLockFile()) continue;
        if (noWork || patience == 0ms) return held();
        if (!goOn()) return Error{u"Aktarma iptal edildi."_s};
    }
    removedAtSignal_.emplace(path_);
    shown_.start();
    return {};
}

void FileLock::showWork() {
    if (!shown_.hasExpired(Show.count())) return;
    shown_.start();
    std::error_code ignored;
    std::filesystem::last_write_time(path_.toStdU16String(), std::filesystem::file_time_type::clock::now(),
                                     ignored);
}

QDateTime FileLock::lastSign() const {
    return std::max(QFileInfo(path_).lastModified(), QFileInfo(unfinished_).lastModified());
}

bool FileLock::isForeign() const {
    qint64 process = 0;
    QString host, program;
    return !lock_.getLockInfo(&process, &host, &program) || host != QSysInfo::machineHostName();
}

Error FileLock::held() const {
    qint64 process = 0;
    QString host, program;
    (void)lock_.getLockInfo(&process, &host, &program);
    return {
        u"Bu dosya üzerinde başka bir program çalışıyor (%1, %2). Öyle bir program yoksa "
        "\"%3\" dosyasını silip yeniden deneyin."_s.arg(program.isEmpty() ? u"bilinmiyor"_s : program,
                                                        host.isEmpty() ? u"bilinmiyor"_s : host, path_)};
}

Result<void> removeUnfinished(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink()) return {};
    constexpr qint64 start = 16;
    QFile file(path);
    const bool ours = !info.isSymLink() && info.isFile() && [&] {
        if (!file.open(QIODevice::ReadOnly)) return false;
        const QByteArray bytes = file.read(start);
        // Before the first page was written the file is empty, or zeros.
        return bytes == QByteArray(bytes.size(), '\0') ||
               readHeader(bytes, file.size()).format == FileFormat::Sqlite;
    }();
    file.close();
    if (!ours)
        return Error{
            u"\"%1\" yolunda bu programın yazmadığı bir dosya var; başka bir yere "
            "taşıyıp yeniden deneyin."_s.arg(path)};
    for (const QStringView side : SideFiles) QFile::remove(path + side.toString());
    if (file.remove()) return {};
    return Error{u"Yarım kalmış bir dosya silinemiyor: %1"_s.arg(path)};
}

}  // namespace lirovan::platform
