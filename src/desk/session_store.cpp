#include "desk/session_store.h"

#include <condition_variable>
#include <mutex>

namespace lirovan::desk {

struct SessionStore::Answer {
    std::mutex mutex;
    std::condition_variable came;
    bool isThere = false;
    std::optional<Session> session;
};

// The newest session that is still to be written.
struct SessionStore::Waiting {
    std::mutex mutex;
    std::optional<Session> session;
};

SessionStore::SessionStore(QString path)
    : path_(std::move(path)), answer_(std::make_shared<Answer>()), waiting_(std::make_shared<Waiting>()) {
    // One thread: what is read and written comes one after the other.
    thread_.setMaxThreadCount(1);
    thread_.start([path = path_, answer = answer_] {
        platform::Result<Session> session = readSession(path);
        const std::lock_guard lock(answer->mutex);
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

void SessionStore::keep(const Session& session) {
    QByteArray json = sessionJson(session);
    if (json == kept_) return;
    kept_ = std::move(json);
    const std::lock_guard lock(waiting_->mutex);
    const bool isUnderWay = waiting_->session.has_value();
    waiting_->session = session;
    if (isUnderWay) return;
    thread_.start([path = path_, waiting = waiting_] {
        std::optional<Session> newest;
        {
            const std::lock_guard inner(waiting->mutex);
            newest = std::exchange(waiting->session, std::nullopt);
        }
        if (newest) (void)writeSession(path, *newest);
    });
}

}  // namespace lirovan::desk
