// What a program takes away with it when it is ended from outside: by SIGTERM, SIGINT, SIGHUP or SIGPIPE.
// SIGKILL cannot be heard; what it leaves is removed by the next run (work_folder.h).
#pragma once

#include <QString>

namespace lirovan::platform {

/// Has those signals remove whatever RemovedAtSignal names at that moment, and then end the program as they
/// always do. One that is ignored (nohup) stays so. A limit on the size of files becomes an error of the
/// write. Called once, by programs that fork no others of their own code.
void cleanUpAtSignals();

/// A file, or a folder that will be empty, which goes if the program is ended in this object's lifetime.
/// Names that are too long, and names beyond the 64th at a time, are not remembered.
class RemovedAtSignal {
  public:
    explicit RemovedAtSignal(const QString& path);
    ~RemovedAtSignal();
    Q_DISABLE_COPY_MOVE(RemovedAtSignal)

  private:
    int slot_ = -1;
};

/// A program of ours that works on such files; it is ended before they are removed.
class EndedAtSignal {
  public:
    explicit EndedAtSignal(qint64 process);
    ~EndedAtSignal();
    Q_DISABLE_COPY_MOVE(EndedAtSignal)
};

}  // namespace lirovan::platform
