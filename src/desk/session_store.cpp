#include "desk/session_store.h"

#include <QFileInfo>
#include <condition_variable>
#include <mutex>

namespace lirovan::desk {

struct SessionStore::Answer {
    std::mutex mutex;
    std::condition_variable came;
    bool isThere = false;
    bool failed = false;  ///< there is a session, but it could not be read: it is not written over
    std::optional<Session> session;
};

// The newest session that is still to be written.
struct SessionStore::Waiting {
    std::mutex mutex;
    std::optional<Session> session;
    bool failed = false;  ///< the last one could not be written
};

SessionStore::SessionStore(QString path)
    : path_(std::move(path)), answer_(std::make_shared<Answer>()), waiting_(std::make_shared<Waiting>()) {
    // One thread: what is read and written comes one after the other.
    thread_.setMaxThreadCount(1);
    read();
}

void SessionStore::read() {
    thread_.start([path = path_, answer = answer_] {
        platform::Result<Session> session = readSession(path);
        const std::lock_guard lock(answer->mutex);
        answer->failed = !session && QFileInfo(path).size() > 0;
        if (session) answer->session = std::move(*session);
        answer->isThere = true;
        answer->came.notify_all();
    });
}

SessionStore::~SessionStore() {
    thread_.waitForDone();
}

std::optional<Session> SessionStore::load(std::chrono::milliseconds limit) {
    std::unique_lock lock(answer_->mutex);
    answer_->came.wait_for(lock, limit, [this] { return answer_->isThere; });
    if (answer_->session) kept_ = sessionJson(*answer_->session);
    return answer_->session;
}

bool SessionStore::isAnswered() {
    const std::lock_guard lock(answer_->mutex);
    if (!answer_->isThere) return false;
    // Perhaps another program held the file.
    if (std::exchange(answer_->failed, false)) {
        answer_->isThere = false;
        read();
    }
    return answer_->isThere;
}

void SessionStore::keep(const Session& session) {
    {
        const std::lock_guard lock(waiting_->mutex);
        if (std::exchange(waiting_->failed, false)) kept_.clear();
    }
    QByteArray json = sessionJson(session);
    if (json == kept_) return;
    kept_ = std::move(json);
    const std::lock_guard lock(waiting_->mutex);
    const bool isUnderWay = waiting_->session.has_value();
    waiting_->session = session;
    if (isUnderWay) return;
    thread_.start([path = path_, waiting = waiting_, answer = answer_] {
        std::optional<Session> newest;
        {
            const std::lock_guard inner(waiting->mutex);
            newest = std::exchange(waiting->session, std::nullopt);
        }
        {
            const std::lock_guard inner(answer->mutex);
            if (answer->failed) return;
        }
        const bool failed = newest && !writeSession(path, *newest);
        const std::lock_guard inner(waiting->mutex);
        waiting->failed = waiting->failed || failed;
    });
}

}  // namespace lirovan::desk
