#include "browse/page_file.h"

#include <QDir>
#include <QFile>

#include "browse/page_layout.h"
#include "platform/core/file_writer.h"
#include "platform/core/user_places.h"

namespace lirovan::browse {

using namespace Qt::StringLiterals;
using platform::Error;
using platform::Result;

namespace {

bool overwrite(QFile& file, const QByteArray& bytes) {
    return file.seek(0) && file.write(bytes) == bytes.size() && file.resize(bytes.size());
}

// For a folder in which no second file can be made: writes over the old page and puts it back on failure. The
// old bytes fit where they were, so putting them back needs no room on the disk.
bool replaceInPlace(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered)) return false;
    const QByteArray old = file.readAll();
    if (overwrite(file, bytes)) return true;
    overwrite(file, old);
    return false;
}

bool replace(const QString& path, const QByteArray& bytes) {
    // The page is made anew at the next click, and a reader should not wait for the disk.
    return platform::writeWholeFile(path, bytes, platform::Durability::Fast) || replaceInPlace(path, bytes);
}

bool writeToCache(const platform::AppFolder& folder, const QByteArray& bytes) {
    const QString cache = platform::cacheFolder(folder);
    return QDir().mkpath(cache) && replace(cache + u"/oku.html"_s, bytes);
}

}  // namespace

Result<QByteArray> writePage(const platform::AppFolder& folder, QStringView page) {
    const QString path = folder.path(PageFile);
    const QByteArray bytes = pageBytes(page);
    if (replace(path, bytes) || writeToCache(folder, bytes)) return bytes;
    return Error{u"Sayfa dosyası yazılamadı:\n%1"_s.arg(path)};
}

}  // namespace lirovan::browse
