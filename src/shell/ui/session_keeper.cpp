#include "shell/ui/session_keeper.h"

#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>
#include <algorithm>

#include "shell/ui/child_windows.h"

namespace lirovan::shell {

using namespace std::chrono_literals;

namespace {

// By then the window is about to be shown; the file has been read in a few milliseconds, unless another
// program holds it.
constexpr auto StartLimit = 100ms;

// What a crash may cost of the place on the page.
constexpr auto KeepInterval = 20s;

// So much of the window's title has to lie on a screen.
constexpr int LeastTitle = 80;

bool isOnAScreen(const QRect& place) {
    const QRect title(place.topLeft(), QSize(place.width(), 30));
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect seen = screen->availableGeometry() & title;
        if (seen.width() >= LeastTitle && seen.height() > 0) return true;
    }
    return false;
}

}  // namespace

SessionKeeper::SessionKeeper(QMainWindow& window, ChildWindows& windows, const QString& path)
    : window_(window), windows_(windows), store_(path) {
    connect(&now_, &QTimer::timeout, this, [this] {
        if (window_.isVisible() && !windows_.isBusy()) keep();
    });
}

void SessionKeeper::lookForSession(std::chrono::milliseconds limit) {
    if (isRead_) return;
    const std::optional<desk::Session> read = store_.load(limit);
    if (!read) return;
    isRead_ = true;
    if (hasBegun_) {
        // It came late: the reader has begun something else meanwhile.
        session_.continues = read->continues;
        const search::AskedSearches newer = std::exchange(windows_.asked, read->searches);
        const std::vector<search::AskedSearch>& all = newer.all();
        std::for_each(all.rbegin(), all.rend(), [&](const auto& each) { windows_.asked.add(each); });
    } else {
        session_ = *read;
    }
}

std::optional<QRect> SessionKeeper::windowPlace() {
    lookForSession(StartLimit);
    const bool fits = session_.continues && !session_.maximized && session_.window.isValid() &&
                      isOnAScreen(session_.window);
    return fits ? std::optional(session_.window) : std::nullopt;
}

void SessionKeeper::begin() {
    hasBegun_ = true;
    windows_.asked = session_.searches;
    windows_.beginWith(session_);
    now_.start(KeepInterval);
}

void SessionKeeper::keep() {
    if (!hasBegun_) return;
    lookForSession(0ms);
    if (!isRead_ && !store_.isAnswered()) return;
    windows_.intoSession(session_);
    session_.searches = windows_.asked;
    session_.maximized = window_.isMaximized() || window_.isFullScreen();
    if (!session_.maximized && !window_.isMinimized()) session_.window = window_.geometry();
    store_.keep(session_);
}

void SessionKeeper::setContinues(bool on) {
    session_.continues = on;
    keep();
}

}  // namespace lirovan::shell
