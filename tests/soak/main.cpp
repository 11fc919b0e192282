// soak_tests [--growth MB] [--pause MS] [SEED [COUNT [LIBRARY]]]: COUNT chance actions of a user on the real
// program; the same for the same seed, but for the moments at which pages and searches are ready. Exit status
// 1 with the last actions when the program stops answering or leaves something behind; also when its memory
// has grown by more than MB since the first 200 actions, or when it let no event run for longer than MS.
#include <unistd.h>
#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <cstdio>
#include <numeric>

#include "platform/ui/memory_bounds.h"
#include "platform/ui/message_boxes.h"
#include "soak/world.h"

using namespace lirovan;
using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype Remembered = 20;
constexpr int SampleEvery = 200;
constexpr int WarmUp = 200;  // actions until everything was loaded once

/// What this process has of memory for itself, in MB: without files, libraries and page processes.
double privateMb() {
    QFile statm(u"/proc/self/statm"_s);
    if (!statm.open(QIODevice::ReadOnly)) return 0;
    const QByteArrayList pages = statm.readAll().split(' ');  // size, resident, of these shared
    return double(pages.value(1).toLong() - pages.value(2).toLong()) * double(sysconf(_SC_PAGESIZE)) / 1e6;
}

/// How much more the last third of the samples holds than the first.
double growth(const QList<double>& samples) {
    const qsizetype third = samples.size() / 3;
    if (third == 0) return 0;
    const double first = std::accumulate(samples.begin(), samples.begin() + third, 0.0);
    return (std::accumulate(samples.end() - third, samples.end(), 0.0) - first) / double(third);
}

int soakProgram(quint32 seed, int count, const QString& library, double growthMb, double pauseMs) {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    std::printf("seed %u, %d actions\n", seed, count);
    soak::World world(library);
    if (!world.start()) return std::puts("the program did not start"), 1;
    QRandomGenerator order(seed);
    QStringList last;
    QList<double> memory;
    const auto failed = [&](const QString& why) {
        std::printf("FAILED: %s\nseed %u, last actions:\n  %s\n", qPrintable(why), seed,
                    qPrintable(last.join(u"\n  "_s)));
        return 1;
    };
    for (int number = 1; number <= count; ++number) {
        last << soak::act(world, order, seed, number);
        if (qEnvironmentVariableIsSet("SOAK_VERBOSE")) std::fprintf(stderr, "%s\n", qPrintable(last.back()));
        last = last.last(qMin(Remembered, last.size()));
        if (const QString stuck = world.settle(); !stuck.isEmpty()) return failed(stuck);
        if (const QString wrong = world.lastingFault(); !wrong.isEmpty()) return failed(wrong);
        if (world.isClosed() && !world.start()) return failed(u"the program did not start again"_s);
        if (number % SampleEvery != 0) continue;
        // What is open is chance and has its memory.
        for (QMdiSubWindow* each : world.children()) each->close();
        if (const QString stuck = world.settle(); !stuck.isEmpty()) return failed(stuck);
        const double megabytes = privateMb();
        if (number > WarmUp) memory << megabytes;
        std::printf("%5d actions: %6.1f MB, %4d widgets, %d boxes, %d captions\n", number, megabytes,
                    int(QApplication::allWidgets().size()), world.boxes, int(world.captions.size()));
    }
    std::printf("longest time without events: %d ms (%s)\n", world.longest, qPrintable(world.longestIn));
    const double grown = growth(memory);
    std::printf("memory since action %d: %+.1f MB\n", WarmUp, grown);
    if (grown > growthMb) return failed(u"memory is not flat"_s);
    if (world.longest > pauseMs) return failed(u"the window stood still"_s);
    // A user who gets nowhere tests nothing.
    if (world.captions.size() < qMin(count / 30, 100)) return failed(u"too few captions were seen"_s);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--disable-gpu");
    platform::WebEngine::prepare();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    platform::installTranslations(application);
    platform::boundMemory();
    QCommandLineParser parser;
    parser.addOptions({{u"growth"_s, {}, u"MB"_s, u"inf"_s}, {u"pause"_s, {}, u"MS"_s, u"inf"_s}});
    parser.process(application);
    const QStringList words = parser.positionalArguments();
    return soakProgram(words.value(0, u"5101"_s).toUInt(), words.value(1, u"150"_s).toInt(), words.value(2),
                       parser.value(u"growth"_s).toDouble(), parser.value(u"pause"_s).toDouble());
}
