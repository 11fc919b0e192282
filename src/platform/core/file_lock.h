// One program at a time makes a file. The lock lies beside it as "<file>.kilit".
//
// A lock is stale when its holder on this computer is gone, or when it comes from another computer (in a
// folder that was copied, or on a shared disk) and nothing shows that its holder works.
#pragma once

#include <QDateTime>
#include <QElapsedTimer>
#include <QLockFile>
#include <QString>
#include <chrono>
#include <functional>

#include "platform/core/ended_from_outside.h"
#include "platform/core/result.h"

namespace lirovan::platform {

class FileLock {
  public:
    /// `unfinished`: what the holder of the lock writes; a change of it is a sign of work.
    FileLock(const QString& path, const QString& unfinished);

    /// Waits while the holder works; one that shows nothing for so long counts as gone, or, where it cannot
    /// be gone, the answer is an error that names the lock file. `goOn` is asked ten times a second.
    Result<void> take(std::chrono::milliseconds patience, const std::function<bool()>& goOn);
    /// Held by us: tells the others that the work goes on.
    void showWork();

  private:
    QDateTime lastSign() const;
    bool isForeign() const;
    Error held() const;

    QString path_, unfinished_;
    QLockFile lock_;
    std::optional<RemovedAtSignal> removedAtSignal_;
    QElapsedTimer shown_;
};

/// Removes what a killed program left under the name of an unfinished database, and what SQLite left beside
/// it. Fails, with a message that names it, on anything that is no beginning of a database.
Result<void> removeUnfinished(const QString& path);

}  // namespace lirovan::platform
