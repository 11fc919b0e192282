#include "platform/core/work_folder.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>

#include "platform/core/database.h"

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace lirovan::platform {

using namespace Qt::StringLiterals;
namespace {

constexpr int Letters = 6;

QString lockOf(const QString& folder) {
    return folder + u"/kilit"_s;
}
QString databaseOf(const QString& folder) {
    return folder + u"/dosya.vq"_s;
}
QStringList filesOf(const QString& folder) {
    QStringList files{databaseOf(folder)};
    for (const QStringView side : SideFiles) files += files[0] + side.toString();
    return files;
}

// Others may write into the folder for temporary files too; nobody else's folder is entered.
bool isOwn(const QFileInfo& folder) {
    if (folder.isSymLink() || !folder.isDir()) return false;
#ifdef Q_OS_UNIX
    return folder.ownerId() == ::geteuid();
#else
    return true;
#endif
}

void removeIfLeft(const QFileInfo& info) {
    const QString folder = info.absoluteFilePath();
    if (!isOwn(info)) return;
    if (QFileInfo::exists(lockOf(folder))) {
        QLockFile lock(lockOf(folder));
        lock.setStaleLockTime(0);
        if (!lock.tryLock(0)) return;
        for (const QString& file : filesOf(folder)) QFile::remove(file);
    } else if (info.lastModified().secsTo(QDateTime::currentDateTime()) < 3600) {
        return;  // perhaps just being made
    }
    QDir().rmdir(folder);  // an empty one
}

void removeLeft(const QString& prefix) {
    const QFileInfo info(prefix);
    static const QRegularExpression letters(u"^[a-z]{%1}$"_s.arg(Letters));
    for (const QFileInfo& entry :
         info.dir().entryInfoList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot)) {
        const QString name = entry.fileName();
        if (name.startsWith(info.fileName()) && letters.match(name.mid(info.fileName().size())).hasMatch())
            removeIfLeft(entry);
    }
}

bool makePrivate(const QString& folder) {
#ifdef Q_OS_UNIX
    return ::mkdir(QFile::encodeName(folder).constData(), S_IRWXU) == 0;
#else
    return QDir().mkdir(folder);
#endif
}

}  // namespace

Result<std::shared_ptr<WorkFolder>> WorkFolder::make(const QString& givenPrefix) {
    const QString prefix = QFileInfo(givenPrefix).absoluteFilePath();
    removeLeft(prefix);
    const Error failed{u"Klasöre yazılamıyor: %1"_s.arg(QFileInfo(prefix).path())};
    QString folder;
    do {
        folder = prefix;
        for (int i = 0; i < Letters; ++i) folder += QChar(u'a' + QRandomGenerator::global()->bounded(26));
    } while (QFileInfo::exists(folder));
    // Named for removal before it is there: a signal may come in between.
    const std::shared_ptr<WorkFolder> work(new WorkFolder(folder));
    work->made_ = makePrivate(folder);
    if (!work->made_ || !work->lock_.tryLock(0)) return failed;
    return work;
}

WorkFolder::WorkFolder(const QString& folder) : folder_(folder), lock_(lockOf(folder)) {
    lock_.setStaleLockTime(0);
    const QStringList paths = filesOf(folder) + QStringList{lockOf(folder), folder};
    for (const QString& path : paths) removedAtSignal_.push_back(std::make_unique<RemovedAtSignal>(path));
}

WorkFolder::~WorkFolder() {
    if (!made_) return;
    for (const QString& file : filesOf(folder_)) QFile::remove(file);
    lock_.unlock();
    QDir().rmdir(folder_);
}

QString WorkFolder::file() const {
    return databaseOf(folder_);
}

}  // namespace lirovan::platform
