#include "notes/note_draft.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QSaveFile>
#include <future>

#include "notes/note_text.h"

namespace lirovan::notes {
namespace {

const QString idKey = QStringLiteral("NotID"), titleKey = QStringLiteral("NotBaslik"),
              versionKey = QStringLiteral("Surum"), rtfKey = QStringLiteral("NotRTF");

bool write(const QString& path, const Unsaved& text, const QString& replaces) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    const QByteArray version = NoteDraft::version(replaces);
    file.write(QJsonDocument(QJsonObject{{idKey, text.note.value},
                                         {titleKey, text.title},
                                         {versionKey, QString::fromLatin1(version)},
                                         {rtfKey, storedRtf(text.text)}})
                   .toJson(QJsonDocument::Compact));
    return file.commit();
}

}  // namespace

struct NoteDraft::State {
    explicit State(const QString& place) : path(place), lock(place + QStringLiteral(".lock")) {}

    void finishWriting() {
        if (writing.valid()) written = writing.get();
    }
    QString asidePath(int number) const { return path + u'.' + QString::number(number); }

    QString path;
    QLockFile lock;
    std::future<bool> writing;
    bool written = false;  // what lies at `path` is the text last given, and not an older one
};

NoteDraft NoteDraft::in(const platform::AppFolder& folder) {
    NoteDraft draft;
    QDir().mkpath(folder.path(NotesFolder));
    auto state = std::make_shared<State>(folder.path(u"\\Notlar\\notlar.draft"));
    QLockFile& lock = state->lock;
    lock.setStaleLockTime(0);  // held for hours; stale only when its program is gone
    // The lock of a program that ended on another computer, in a folder that was copied here, belongs to
    // nobody; one that is really held cannot be removed.
    if (lock.tryLock(0) || (lock.removeStaleLockFile() && lock.tryLock(0))) draft.state_ = std::move(state);
    return draft;
}

QByteArray NoteDraft::version(const QString& notRtf) {
    return QCryptographicHash::hash(
               QByteArrayView(reinterpret_cast<const char*>(notRtf.utf16()), notRtf.size() * 2),
               QCryptographicHash::Sha1)
        .toHex();
}

std::optional<Unsaved> NoteDraft::left() const {
    if (!state_) return std::nullopt;
    state_->finishWriting();
    QFile file(state_->path);
    // The oldest has the lowest number; the others move up.
    if (!file.exists() && QFile::rename(state_->asidePath(1), state_->path))
        for (int n = 2; QFile::rename(state_->asidePath(n), state_->asidePath(n - 1)); ++n) {
        }
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    if (!object.contains(rtfKey)) return std::nullopt;
    return Unsaved{{object.value(idKey).toInteger()},
                   object.value(titleKey).toString(),
                   object.value(versionKey).toString().toLatin1(),
                   textOf(object.value(rtfKey).toString())};
}

void NoteDraft::keep(Unsaved text, const QString& replaces) const {
    if (!state_) return;
    state_->finishWriting();
    state_->writing = std::async(std::launch::async, [path = state_->path, text = std::move(text), replaces] {
        return write(path, text, replaces);
    });
}

bool NoteDraft::clear() const {
    if (!state_) return true;
    state_->finishWriting();
    state_->written = false;
    return QFile::remove(state_->path) || !QFile::exists(state_->path);
}

bool NoteDraft::setAside() const {
    if (!state_) return false;
    state_->finishWriting();
    if (!state_->written) return false;
    int number = 1;
    while (QFile::exists(state_->asidePath(number))) ++number;
    return QFile::rename(state_->path, state_->asidePath(number));
}

}  // namespace lirovan::notes
