#include "platform/core/file_writer.h"

#include <QFileInfo>
#include <QRandomGenerator>
#include <filesystem>
#include <system_error>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace lirovan::platform {
namespace {

using namespace Qt::StringLiterals;

// The file behind a link, which may not be there yet.
QString placeOf(const QString& path) {
    const QFileInfo info(path);
    if (!info.isSymLink()) return info.absoluteFilePath();
    return info.exists() ? info.canonicalFilePath() : info.symLinkTarget();
}

QString randomEnding() {
    QString ending;
    for (int i = 0; i < 6; ++i) ending += QChar(u'a' + QRandomGenerator::global()->bounded(26));
    return ending;
}

#ifdef Q_OS_UNIX
bool synced(int descriptor) {
    return ::fsync(descriptor) == 0 || errno == EINVAL || errno == ENOSYS || errno == ENOTSUP;
}
#endif

}  // namespace

bool forceToDisk(const QString& path) {
#ifdef Q_OS_UNIX
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return errno == EACCES;  // a folder may be written to and not read
    const bool done = synced(descriptor);
    ::close(descriptor);
    return done;
#else
    Q_UNUSED(path)
    return true;
#endif
}

void copyPermissions(const QString& path, const QString& replacement) {
    QFile::setPermissions(replacement, QFile::permissions(path));
}

FileWriter::FileWriter(const QString& path, Durability durability)
    : path_(path), place_(placeOf(path)), durability_(durability) {}

FileWriter::~FileWriter() {
    if (!file_.fileName().isEmpty()) file_.remove();
}

Error FileWriter::failure() const {
    switch (file_.error()) {
        case QFileDevice::ResourceError:
            return failure(u"diskte yer yok"_s);
        case QFileDevice::PermissionsError:
            return failure(u"izin yok"_s);
        default:
            return failure(file_.errorString());
    }
}

Error FileWriter::failure(const QString& reason) const {
    return {u"Dosyaya yazılamadı: %1 (%2)"_s.arg(path_, reason)};
}

Result<void> FileWriter::open() {
    if (QFileInfo(place_).isDir()) return failure(u"bu bir klasör"_s);
    do {
        file_.setFileName(place_ + u'.' + randomEnding());
    } while (file_.exists());
    removedAtSignal_ = std::make_unique<RemovedAtSignal>(file_.fileName());
    // Without a buffer: what write() took is with the system.
    if (file_.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)) return {};
    const Error error = failure();
    file_.setFileName({});
    removedAtSignal_.reset();
    return error;
}

Result<void> FileWriter::write(QByteArrayView bytes) {
    if (file_.write(bytes.data(), bytes.size()) == bytes.size()) return {};
    return failure();
}

Result<void> FileWriter::commit() {
    if (!file_.isOpen()) return failure(u"dosya açık değil"_s);
    if (QFileInfo::exists(place_)) copyPermissions(place_, file_.fileName());
#ifdef Q_OS_UNIX
    if (durability_ == Durability::OnDisk && !synced(file_.handle())) return failure(qt_error_string(errno));
#endif
    file_.close();
    if (file_.error() != QFileDevice::NoError) return failure();
    std::error_code error;
    std::filesystem::rename(file_.fileName().toStdU16String(), place_.toStdU16String(), error);
    if (error) return failure(u"yeni dosya yerine konamadı"_s);
    file_.setFileName({});
    removedAtSignal_.reset();
    if (durability_ == Durability::OnDisk && !forceToDisk(QFileInfo(place_).path()))
        return failure(u"klasör diske aktarılamadı"_s);
    return {};
}

Result<void> writeWholeFile(const QString& path, QByteArrayView content, Durability durability) {
    FileWriter file(path, durability);
    if (const Result<void> opened = file.open(); !opened) return opened;
    if (const Result<void> written = file.write(content); !written) return written;
    return file.commit();
}

}  // namespace lirovan::platform
