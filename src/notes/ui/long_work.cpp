#include "notes/ui/long_work.h"

#include <QApplication>
#include <QSemaphore>
#include <QThreadPool>
#include <memory>

namespace lirovan::notes {

using namespace Qt::StringLiterals;

namespace {

constexpr int MomentMs = 300, TurnMs = 10;

}  // namespace

LongWork::LongWork(QWidget& over, const QString& label) : window_(label, u"Durdur"_s, 0, 0, over.window()) {
    since_.start();
    window_.setObjectName(u"longWork"_s);
    window_.setWindowTitle(u"Not Defteri"_s);
    window_.setWindowModality(Qt::ApplicationModal);
}

bool LongWork::goOn() {
    if (!window_.isVisible() && !window_.wasCanceled() && since_.elapsed() > MomentMs) window_.show();
    // Until the window is there to keep input from the others, none is taken.
    QApplication::processEvents(window_.isVisible() ? QEventLoop::AllEvents
                                                    : QEventLoop::ExcludeUserInputEvents);
    return !window_.wasCanceled();
}

bool LongWork::inBackground(std::function<void()> work) {
    const auto done = std::make_shared<QSemaphore>();
    QThreadPool::globalInstance()->start([work = std::move(work), done] {
        work();
        done->release();
    });
    while (!done->tryAcquire(1, TurnMs))
        if (!goOn()) return false;
    return true;
}

}  // namespace lirovan::notes
