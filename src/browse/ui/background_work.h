// One piece of work at a time in a thread of its own, for windows that go on answering meanwhile.
#pragma once

#include <QObject>
#include <atomic>
#include <functional>
#include <thread>

namespace lirovan::browse {

class BackgroundWork : public QObject {
    Q_OBJECT

  public:
    explicit BackgroundWork(QObject* parent = nullptr) : QObject(parent) {}
    /// Stops the work and waits for it.
    ~BackgroundWork() override;

    /// Runs `work` in the thread, then `after` in this one. Nothing may be running.
    void start(std::function<void()> work, std::function<void()> after);
    bool isRunning() const { return running_; }
    /// Asks the work to end at its next step.
    void stop() { stopped_ = true; }
    bool wasStopped() const { return stopped_; }

    /// For the work: tells how far it is; false when it is to end.
    bool report(qint64 done, qint64 total);

  Q_SIGNALS:
    void progress(qint64 done, qint64 total);

  private:
    void join();

    std::thread thread_;
    std::atomic<bool> stopped_ = false;
    bool running_ = false;
};

}  // namespace lirovan::browse
