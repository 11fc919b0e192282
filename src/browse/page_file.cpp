#include "browse/page_file.h"

#include <QFile>
#include <QTemporaryFile>
#include <filesystem>

#include "browse/page_layout.h"

namespace lirovan::browse {

using namespace Qt::StringLiterals;
using platform::Error;
using platform::Result;

namespace {

// A finished file takes the old one's place. Unlike QSaveFile this does not wait for the disk: the page is
// made anew at the next click, and a reader should not wait for it.
bool replace(const QString& path, const QByteArray& bytes) {
    QTemporaryFile file(path + u".XXXXXX"_s);
    if (!file.open() || file.write(bytes) != bytes.size() || !file.flush()) return false;
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup |
                        QFileDevice::ReadOther);
    file.close();
    std::error_code failure;
    std::filesystem::rename(file.fileName().toStdU16String(), path.toStdU16String(), failure);
    if (failure) return false;
    file.setAutoRemove(false);
    return true;
}

bool overwrite(QFile& file, const QByteArray& bytes) {
    return file.seek(0) && file.write(bytes) == bytes.size() && file.flush() && file.resize(bytes.size());
}

// For a folder in which no second file can be made: writes over the old page and puts it back on failure. The
// old bytes fit where they were, so putting them back needs no room on the disk.
bool replaceInPlace(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly)) return false;
    const QByteArray old = file.readAll();
    if (overwrite(file, bytes)) return true;
    overwrite(file, old);
    return false;
}

}  // namespace

Result<void> writePage(const platform::AppFolder& folder, QStringView page) {
    const QString path = folder.path(PageFile);
    const QByteArray bytes = pageBytes(page);
    if (replace(path, bytes) || replaceInPlace(path, bytes)) return {};
    return Error{u"Sayfa dosyası yazılamadı:\n%1"_s.arg(path)};
}

}  // namespace lirovan::browse
