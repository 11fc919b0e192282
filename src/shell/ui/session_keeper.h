// Takes the session to and from the windows: what is shown at the start, what is kept while the reader reads.
#pragma once

#include <QTimer>

#include "desk/session_store.h"

class QMainWindow;

namespace lirovan::shell {

class ChildWindows;

class SessionKeeper : public QObject {
  public:
    /// Reading begins at once, beside whatever else the start does. `path`: of the reader's file.
    SessionKeeper(QMainWindow& window, ChildWindows& windows, const QString& path);

    /// Where the main window is to stand, when the reader wants to go on and it stood there unmaximised.
    std::optional<QRect> windowPlace();
    /// The windows are shown: what was there comes back, or is offered.
    void begin();
    /// Keeps what is there now. Nothing is waited for but, shortly, the page.
    void keep();

    bool continues() const { return session_.continues; }
    void setContinues(bool on);

  private:
    void lookForSession(std::chrono::milliseconds limit);

    QMainWindow& window_;
    ChildWindows& windows_;
    desk::SessionStore store_;
    desk::Session session_;
    bool isRead_ = false;
    bool hasBegun_ = false;
    QTimer now_;
};

}  // namespace lirovan::shell
