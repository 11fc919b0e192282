#include "shell/application_folder.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include "platform/core/file_writer.h"

using namespace Qt::StringLiterals;

namespace lirovan::shell {

namespace {

constexpr QStringView LibraryName = u"\\kitaplar.vq";
constexpr qint64 Chunk = 1 << 20;

bool holdsLibrary(const QString& folder) {
    return QFileInfo(platform::AppFolder(folder).path(LibraryName)).isFile();
}

platform::Result<void> copyFile(const QString& from, const QString& to) {
    const platform::Error failure{u"\"%1\" dosyası \"%2\" olarak kopyalanamadı."_s.arg(from, to)};
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly)) return failure;
    platform::FileWriter target(to);
    platform::Result<void> done = target.open();
    while (done && !source.atEnd()) {
        const QByteArray bytes = source.read(Chunk);
        if (bytes.isEmpty()) return failure;
        done = target.write(bytes);
    }
    if (done) done = target.commit();
    if (!done) return platform::Error{failure.message + u'\n' + done.error().message};
    return {};
}

// Earlier starts on a full disk left files that are the beginning of what they should be, often its first
// nothing. A file that somebody has changed is none of these.
bool isCutOff(const QString& path, const QString& whole) {
    QFile there(path), source(whole);
    if (there.size() >= source.size()) return false;
    if (!there.open(QIODevice::ReadOnly) || !source.open(QIODevice::ReadOnly)) return false;
    while (!there.atEnd()) {
        const QByteArray bytes = there.read(Chunk);
        if (bytes.isEmpty() || bytes != source.read(bytes.size())) return false;
    }
    return true;
}

}  // namespace

platform::Result<void> fillFolder(const QString& from, const QString& to) {
    const QDir source(from);
    QStringList names;
    QDirIterator files(from, QDir::Files, QDirIterator::Subdirectories | QDirIterator::FollowSymlinks);
    while (files.hasNext()) names.append(source.relativeFilePath(files.next()));
    // The library comes last: a folder that holds it is complete.
    const QString library = QFileInfo(platform::AppFolder(from).path(LibraryName)).fileName();
    if (names.removeOne(library)) names.append(library);

    for (const QString& name : names) {
        const QString target = QDir(to).filePath(name);
        if (QFileInfo::exists(target) && !isCutOff(target, source.filePath(name))) continue;
        if (!QDir().mkpath(QFileInfo(target).path()))
            return platform::Error{u"\"%1\" klasörü oluşturulamadı."_s.arg(QFileInfo(target).path())};
        if (auto copied = copyFile(source.filePath(name), target); !copied) return copied;
    }
    return {};
}

platform::Result<platform::AppFolder> applicationFolder(const FolderCandidates& candidates) {
    if (candidates.option) return platform::AppFolder(QFileInfo(*candidates.option).absoluteFilePath());
    if (holdsLibrary(candidates.executable) || !holdsLibrary(candidates.shipped))
        return platform::AppFolder(candidates.executable);
    if (auto filled = fillFolder(candidates.shipped, candidates.user); !filled) return filled.error();
    return platform::AppFolder(candidates.user);
}

}  // namespace lirovan::shell
