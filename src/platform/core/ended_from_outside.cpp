#include "platform/core/ended_from_outside.h"

#ifdef Q_OS_UNIX
#include <QFile>
#include <array>
#include <atomic>
#include <csignal>
#include <cstring>

#include <sys/wait.h>
#include <unistd.h>
#endif

namespace lirovan::platform {

#ifdef Q_OS_UNIX

namespace {

enum class State { Free, Changing, Used };

struct Slot {
    std::atomic<State> state = State::Free;
    std::array<char, 1024> path;
};

// A signal may come at any moment, on any thread: its handler finds everything in place and asks for nothing.
std::array<Slot, 64> slots;
std::atomic<pid_t> worker = 0;

extern "C" void cleanUp(int number) {
    if (const pid_t process = worker; process > 0) {
        ::kill(process, SIGKILL);
        ::waitpid(process, nullptr, 0);
    }
    for (const Slot& slot : slots)
        if (slot.state == State::Used) ::unlink(slot.path.data());
    for (const Slot& slot : slots)
        if (slot.state == State::Used) ::rmdir(slot.path.data());
    // Delivered when this handler returns; SA_RESETHAND has put the default back.
    ::raise(number);
}

}  // namespace

void cleanUpAtSignals() {
    std::signal(SIGXFSZ, SIG_IGN);
    for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGPIPE}) {
        struct sigaction old {};
        if (::sigaction(number, nullptr, &old) != 0 || old.sa_handler == SIG_IGN) continue;
        struct sigaction action {};
        action.sa_handler = cleanUp;
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        ::sigaction(number, &action, nullptr);
    }
}

RemovedAtSignal::RemovedAtSignal(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    if (static_cast<size_t>(name.size()) >= Slot().path.size()) return;
    for (size_t i = 0; i < slots.size(); ++i) {
        State free = State::Free;
        if (!slots[i].state.compare_exchange_strong(free, State::Changing)) continue;
        std::memcpy(slots[i].path.data(), name.constData(), static_cast<size_t>(name.size()) + 1);
        slots[i].state = State::Used;
        slot_ = static_cast<int>(i);
        return;
    }
}

RemovedAtSignal::~RemovedAtSignal() {
    if (slot_ >= 0) slots[static_cast<size_t>(slot_)].state = State::Free;
}

EndedAtSignal::EndedAtSignal(qint64 process) {
    worker = static_cast<pid_t>(process);
}
EndedAtSignal::~EndedAtSignal() {
    worker = 0;
}

#else

void cleanUpAtSignals() {}
RemovedAtSignal::RemovedAtSignal(const QString&) {}
RemovedAtSignal::~RemovedAtSignal() = default;
EndedAtSignal::EndedAtSignal(qint64) {}
EndedAtSignal::~EndedAtSignal() = default;

#endif

}  // namespace lirovan::platform
