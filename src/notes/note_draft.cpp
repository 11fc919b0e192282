#include "notes/note_draft.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace lirovan::notes {

NoteDraft NoteDraft::in(const platform::AppFolder& folder) {
    NoteDraft draft;
    QDir().mkpath(folder.path(NotesFolder));
    const QString path = folder.path(u"\\Notlar\\notlar.draft");
    auto lock = std::make_shared<QLockFile>(path + QStringLiteral(".lock"));
    lock->setStaleLockTime(0);  // held for hours; stale only when its program is gone
    // The lock of a program that ended on another computer, in a folder that was copied here, belongs to
    // nobody; one that is really held cannot be removed.
    if (!lock->tryLock(0) && !(lock->removeStaleLockFile() && lock->tryLock(0))) return draft;
    draft.path_ = path;
    draft.lock_ = std::move(lock);
    return draft;
}

std::optional<Note> NoteDraft::left() const {
    QFile file(path_);
    if (path_.isEmpty() || !file.open(QIODevice::ReadOnly)) return std::nullopt;
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    if (!object.contains(QStringLiteral("NotRTF"))) return std::nullopt;
    return Note{{object.value(QStringLiteral("NotID")).toInteger()},
                {},
                object.value(QStringLiteral("NotBaslik")).toString(),
                object.value(QStringLiteral("NotRTF")).toString()};
}

void NoteDraft::keep(const Note& note) const {
    if (path_.isEmpty()) return;
    QSaveFile file(path_);
    if (!file.open(QIODevice::WriteOnly)) return;
    file.write(QJsonDocument(QJsonObject{{QStringLiteral("NotID"), note.id.value},
                                         {QStringLiteral("NotBaslik"), note.title},
                                         {QStringLiteral("NotRTF"), note.rtf}})
                   .toJson(QJsonDocument::Compact));
    file.commit();
}

void NoteDraft::clear() const {
    if (!path_.isEmpty()) QFile::remove(path_);
}

}  // namespace lirovan::notes
