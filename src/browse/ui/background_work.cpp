#include "browse/ui/background_work.h"

namespace lirovan::browse {

BackgroundWork::~BackgroundWork() {
    stop();
    join();
}

void BackgroundWork::join() {
    if (thread_.joinable()) thread_.join();
}

void BackgroundWork::start(std::function<void()> work, std::function<void()> after) {
    join();
    stopped_ = false;
    running_ = true;
    thread_ = std::thread([this, work = std::move(work), after = std::move(after)] {
        work();
        QMetaObject::invokeMethod(
            this,
            [this, after] {
                join();
                running_ = false;
                after();
            },
            Qt::QueuedConnection);
    });
}

bool BackgroundWork::report(qint64 done, qint64 total) {
    // Sent across threads, so it arrives in the window's.
    Q_EMIT progress(done, total);
    return !stopped_;
}

}  // namespace lirovan::browse
