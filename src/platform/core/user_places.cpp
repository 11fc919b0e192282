#include "platform/core/user_places.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QStandardPaths>

namespace lirovan::platform {

using namespace Qt::StringLiterals;
namespace {

QString below(QStandardPaths::StandardLocation location, const AppFolder& library) {
    constexpr qsizetype NameLength = 16;
    const QFileInfo info(library.text());
    const QString path = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    const QByteArray name = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256).toHex();
    return QStandardPaths::writableLocation(location) + u"/lirovan/kitapliklar/"_s +
           QString::fromLatin1(name.first(NameLength));
}

}  // namespace

QString cacheFolder(const AppFolder& library) {
    return below(QStandardPaths::GenericCacheLocation, library);
}

QString userFolder(const AppFolder& library) {
    return below(QStandardPaths::GenericDataLocation, library);
}

bool isWriteProtected(const QString& path) {
    const QFileInfo info(path);
    return info.exists() && !info.isWritable();
}

}  // namespace lirovan::platform
