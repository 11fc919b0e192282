#include "notes/note_draft.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QRegularExpression>
#include <chrono>
#include <future>

#include "notes/note_text.h"
#include "platform/core/file_writer.h"

namespace lirovan::notes {

using namespace Qt::StringLiterals;
namespace {

using platform::Result;

const QString idKey = u"NotID"_s, titleKey = u"NotBaslik"_s, versionKey = u"Surum"_s, rtfKey = u"NotRTF"_s;

// Programs that work on one folder at the same time have a place each.
constexpr int Places = 50;

Result<void> write(const QString& path, const Unsaved& text, const QString& replaces) {
    const QJsonObject object{{idKey, text.note.value},
                             {titleKey, text.title},
                             {versionKey, QString::fromLatin1(NoteDraft::version(replaces))},
                             {rtfKey, storedRtf(text.text)}};
    return platform::writeWholeFile(path, QJsonDocument(object).toJson(QJsonDocument::Compact));
}

bool move(const QString& from, const QString& to) {
    return QFile::rename(from, to) && platform::forceToDisk(QFileInfo(to).path());
}

/// "notlar.draft", "notlar-2.draft", ...; texts that were set aside have a number behind that, the oldest 1.
class Place {
  public:
    Place(const QString& folder, int number)
        : path(folder + (number == 1 ? u"/notlar.draft"_s : u"/notlar-%1.draft"_s.arg(number))),
          lock_(path + u".lock"_s) {
        lock_.setStaleLockTime(0);  // held for hours; stale only when its program is gone
    }

    /// False: a running program has it, or none can be had here.
    bool take() {
        // The lock of a program that ended on another computer, in a folder that was copied here, belongs to
        // nobody; one that is really held cannot be removed.
        return lock_.tryLock(0) || (lock_.removeStaleLockFile() && lock_.tryLock(0));
    }
    bool isTaken() const { return lock_.error() == QLockFile::LockFailedError; }

    bool isEmpty() const { return !QFile::exists(path) && !QFile::exists(asidePath(1)); }
    bool setAside() const {
        int number = 1;
        while (QFile::exists(asidePath(number))) ++number;
        return move(path, asidePath(number));
    }
    /// The last text, or else the oldest that was set aside, goes to `target`.
    bool giveUpTo(const QString& target) const {
        if (path != target && QFile::exists(path)) return move(path, target);
        if (!move(asidePath(1), target)) return false;
        for (int n = 2; QFile::rename(asidePath(n), asidePath(n - 1)); ++n) {
        }
        return true;
    }
    /// What a program left that was killed while it wrote.
    void removeUnfinished() const {
        static const QRegularExpression ending(u"\\.[a-z]{6}$"_s);
        const QFileInfo info(path);
        for (const QString& name : info.dir().entryList({info.fileName() + u".??????"_s}, QDir::Files))
            if (ending.match(name).hasMatch()) QFile::remove(info.dir().filePath(name));
    }

    const QString path;

  private:
    QString asidePath(int number) const { return path + u'.' + QString::number(number); }
    QLockFile lock_;
};

std::optional<Unsaved> read(const QByteArray& content) {
    const QJsonObject object = QJsonDocument::fromJson(content).object();
    if (!object.contains(rtfKey)) return std::nullopt;
    return Unsaved{{object.value(idKey).toInteger()},
                   object.value(titleKey).toString(),
                   object.value(versionKey).toString().toLatin1(),
                   textOf(object.value(rtfKey).toString())};
}

// Not one of ours any more, but somebody may still make sense of it.
bool putAway(const QString& path) {
    QString name = path + u".okunamayan"_s;
    for (int number = 2; QFile::exists(name); ++number) name = path + u".okunamayan-%1"_s.arg(number);
    return QFileInfo(path).size() == 0 ? QFile::remove(path) : QFile::rename(path, name);
}

}  // namespace

struct NoteDraft::State {
    explicit State(const QString& notesFolder) : folder(notesFolder) {}

    bool takePlace() {
        QDir().mkpath(folder);
        for (int number = 1; !own && number <= Places; ++number) {
            auto place = std::make_unique<Place>(folder, number);
            if (place->take())
                own = std::move(place), ownNumber = number;
            else if (!place->isTaken())
                break;
        }
        if (own) own->removeUnfinished();
        return own != nullptr;
    }
    void finishWriting() {
        if (!writing.valid()) return;
        const Result<void> done = writing.get();
        written = bool(done);
        failure = done ? QString() : done.error().message;
    }
    /// The next text that a program that is gone has left comes to the place of this one.
    bool adopt() const {
        if (own->giveUpTo(own->path)) return true;
        for (int number = 1; number <= Places; ++number) {
            if (number == ownNumber) continue;
            Place other(folder, number);
            if (!other.isEmpty() && other.take() && other.giveUpTo(own->path)) return true;
        }
        return false;
    }

    const QString folder;
    std::unique_ptr<Place> own;
    int ownNumber = 0;
    std::future<Result<void>> writing;
    bool written = false;  // what lies in the place is the text last given, and not an older one
    QString failure;       // why it is not
};

NoteDraft NoteDraft::in(const platform::AppFolder& folder) {
    NoteDraft draft;
    draft.state_ = std::make_shared<State>(folder.path(NotesFolder));
    draft.state_->takePlace();
    return draft;
}

QByteArray NoteDraft::version(const QString& notRtf) {
    return QCryptographicHash::hash(
               QByteArrayView(reinterpret_cast<const char*>(notRtf.utf16()), notRtf.size() * 2),
               QCryptographicHash::Sha1)
        .toHex();
}

std::optional<Unsaved> NoteDraft::left() const {
    if (!state_ || !state_->own) return std::nullopt;
    state_->finishWriting();
    const QString& path = state_->own->path;
    while (QFile::exists(path) || state_->adopt()) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) break;
        if (std::optional<Unsaved> text = read(file.readAll())) return text;
        if (!putAway(path)) break;
    }
    return std::nullopt;
}

void NoteDraft::keep(Unsaved text, const QString& replaces) const {
    if (!state_) return;
    state_->finishWriting();
    state_->written = false;
    if (!state_->own) {
        // The disk may have had no room for a lock. What was left here meanwhile was not offered yet.
        const bool kept =
            state_->takePlace() && (!QFile::exists(state_->own->path) || state_->own->setAside());
        if (!kept) {
            state_->own.reset();
            state_->failure = u"Notların klasörüne yazılamıyor: "_s + state_->folder;
            return;
        }
    }
    state_->writing = std::async(std::launch::async, [path = state_->own->path, text = std::move(text),
                                                      replaces] { return write(path, text, replaces); });
}

std::optional<QString> NoteDraft::failure() const {
    if (!state_) return QString();
    using namespace std::chrono_literals;
    if (state_->writing.valid() && state_->writing.wait_for(0s) != std::future_status::ready)
        return std::nullopt;
    state_->finishWriting();
    return state_->failure;
}

bool NoteDraft::clear() const {
    if (!state_) return true;
    state_->finishWriting();
    state_->written = false;
    state_->failure.clear();
    return !state_->own || QFile::remove(state_->own->path) || !QFile::exists(state_->own->path);
}

bool NoteDraft::setAside() const {
    if (!state_) return false;
    state_->finishWriting();
    return state_->written && state_->own->setAside();
}

}  // namespace lirovan::notes
