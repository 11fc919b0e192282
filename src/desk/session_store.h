// The session on its way from and to the reader's file. Neither is waited for: a start goes on without a
// session that is slow to come, and what is to be kept is written in a thread. What cannot be read or written
// is as if there were none, but it is not written over.
#pragma once

#include <QString>
#include <QThreadPool>
#include <chrono>
#include <memory>
#include <optional>

#include "desk/session.h"

namespace lirovan::desk {

class SessionStore {
  public:
    explicit SessionStore(QString path);
    /// What is being written is waited for.
    ~SessionStore();

    /// The session as it was kept. Nothing where there is none, or it does not come within `limit`.
    std::optional<Session> load(std::chrono::milliseconds limit);
    /// Whether the session has been read, or there is none. One that could not be read is read again.
    bool isAnswered();
    /// Keeps a session; one that differs from the last in nothing is not written.
    void keep(const Session& session);

  private:
    void read();

    struct Answer;
    struct Waiting;

    QString path_;
    QByteArray kept_;
    std::shared_ptr<Answer> answer_;
    std::shared_ptr<Waiting> waiting_;
    QThreadPool thread_;
};

}  // namespace lirovan::desk
