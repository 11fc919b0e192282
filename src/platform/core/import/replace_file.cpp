#include "platform/core/import/replace_file.h"

#include <QFile>
#include <QFileInfo>
#include <filesystem>
#include <system_error>

#include "platform/core/database.h"
#include "platform/core/file_writer.h"

namespace lirovan::platform {

using namespace Qt::StringLiterals;
namespace {

namespace fs = std::filesystem;

fs::path native(const QString& path) {
    return fs::path(path.toStdU16String());
}

// A second name for the same bytes; where the file system has no such thing, a copy. Neither overwrites
// anything.
bool keep(const QString& path, const QString& kept) {
    std::error_code error;
    fs::create_hard_link(native(path), native(kept), error);
    if (!error) return true;
    if (error == std::errc::file_exists) return false;
    if (QFile::copy(path, kept) && forceToDisk(kept)) return true;
    QFile::remove(kept);
    return false;
}

QString keptName(const QString& path, const QString& suffix) {
    for (int number = 1;; ++number) {
        const QString name = number == 1 ? path + suffix : path + u'.' + QString::number(number) + suffix;
        const QFileInfo info(name);
        if (!info.exists() && !info.isSymLink()) return name;
    }
}

}  // namespace

Result<QString> replaceFile(const QString& path, const QString& replacement, const QString& suffix) {
    const QString kept = keptName(path, suffix);
    if (!keep(path, kept)) return Error{u"Eski dosyanın yedeği oluşturulamadı."_s};
    for (const QStringView side : SideFiles) QFile::rename(path + side.toString(), kept + side.toString());
    copyPermissions(path, replacement);
    std::error_code error;
    fs::rename(native(replacement), native(path), error);
    if (error) {
        for (const QStringView side : SideFiles)
            QFile::rename(kept + side.toString(), path + side.toString());
        QFile::remove(kept);
        return Error{u"Yeni dosya eskisinin yerine konamadı."_s};
    }
    // The change is done; a folder that cannot be forced to disk is no reason to take it back.
    (void)forceToDisk(QFileInfo(path).absolutePath());
    return kept;
}

Result<void> checkNoJournal(const QString& path) {
    if (!hasJournal(path)) return {};
    return Error{
        u"%1 dosyasının yanında yarım kalmış bir yazmanın günlüğü duruyor (-journal ya da -wal); "
        "önce onu başka bir yere taşıyın."_s.arg(QFileInfo(path).fileName())};
}

}  // namespace lirovan::platform
