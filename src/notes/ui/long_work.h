// Work on a text that may take long: events are handled meanwhile, and after a moment a small window says
// what is going on and can stop it. Nothing else takes input until it ends.
#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>
#include <functional>

namespace lirovan::notes {

class LongWork {
  public:
    LongWork(QWidget& over, const QString& label);

    /// Handles the events that wait; false once the work is to stop. To be asked every few milliseconds.
    bool goOn();
    /// Runs `work` on another thread. False when it was stopped: then it ends unheard, so that it must own
    /// all that it touches.
    bool inBackground(std::function<void()> work);

  private:
    QElapsedTimer since_;
    QProgressDialog window_;
};

}  // namespace lirovan::notes
