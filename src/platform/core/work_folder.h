// A folder of its own for one database that is being made or read, which goes with its object. What programs
// left that were killed is removed by the next one.
#pragma once

#include <QLockFile>
#include <QString>
#include <memory>
#include <vector>

#include "platform/core/ended_from_outside.h"
#include "platform/core/result.h"

namespace lirovan::platform {

class WorkFolder {
  public:
    /// Makes `prefix` + six letters, after removing every such folder whose program is gone. Only files that
    /// a WorkFolder knows are removed: a folder that holds anything else stays.
    static Result<std::shared_ptr<WorkFolder>> make(const QString& prefix);
    ~WorkFolder();
    Q_DISABLE_COPY_MOVE(WorkFolder)

    /// Path of the database; there is no such file yet.
    QString file() const;

  private:
    explicit WorkFolder(const QString& folder);
    QString folder_;
    bool made_ = false;
    QLockFile lock_;
    std::vector<std::unique_ptr<RemovedAtSignal>> removedAtSignal_;
};

}  // namespace lirovan::platform
