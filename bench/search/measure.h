// Measuring of the search: times of functions and of whole programs, and the pauses between two turns of the
// event loop.
#pragma once

#include <QElapsedTimer>
#include <QProcess>
#include <QStringList>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace lirovan::bench {

inline double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Milliseconds of one call.
inline double milliseconds(const std::function<void()>& call) {
    QElapsedTimer timer;
    timer.start();
    call();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// Two things measured in turn, so that both see the same machine; their medians.
struct Compared {
    double ours, peer;
    double ratio() const { return ours / peer; }
};

inline Compared compare(int rounds, const std::function<void()>& ours, const std::function<void()>& peer) {
    std::vector<double> a, b;
    for (int i = 0; i < rounds; ++i) {
        a.push_back(milliseconds(ours));
        b.push_back(milliseconds(peer));
    }
    return {median(a), median(b)};
}

/// Runs a program to its end, its output read and thrown away.
inline void runProgram(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(120'000)) std::fprintf(stderr, "%s did not end\n", qPrintable(program));
    process.readAllStandardOutput();
}

/// The longest time, in milliseconds, between two turns of the event loop while it lives.
class EventTurns {
  public:
    EventTurns() {
        QObject::connect(&turn_, &QTimer::timeout, [this] { mark(); });
        turn_.start(0);
        since_.start();
    }
    /// Including what has passed since the last turn.
    double longest() {
        mark();
        return longest_;
    }

  private:
    void mark() {
        longest_ = std::max(longest_, static_cast<double>(since_.nsecsElapsed()) / 1e6);
        since_.restart();
    }

    QTimer turn_;
    QElapsedTimer since_;
    double longest_ = 0;
};

}  // namespace lirovan::bench
