// soak_tests [--growth MB] [--pause MS] [SEED [COUNT [LIBRARY]]]: COUNT chance actions of a user on the real
// program; the same for the same seed, but for the moments at which pages and searches are ready. Exit status
// 1 with the last actions when the program stops answering or leaves something behind; also when its memory
// has grown by more than MB since the first 200 actions, or when it let no event run for longer than MS.
#include <unistd.h>
#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QLocale>
#include <cstdio>
#include <deque>
#include <exception>
#include <numeric>
#include <optional>
#include <vector>

#include "platform/ui/memory_bounds.h"
#include "platform/ui/message_boxes.h"
#include "soak/actions.h"

using namespace lirovan;
using namespace Qt::StringLiterals;

namespace {

constexpr quint32 DefaultSeed = 5101;
constexpr int DefaultCount = 150;
constexpr std::size_t Remembered = 20;
constexpr int SampleEvery = 200;
constexpr int WarmUp = 200;  // actions until everything was loaded once

struct Limits {
    std::optional<double> growthMb;
    std::optional<int> pauseMs;
};

/// What this process has of memory for itself, in MB: without files, libraries and page processes.
double privateMb() {
    QFile statm(u"/proc/self/statm"_s);
    if (!statm.open(QIODevice::ReadOnly)) return 0;
    const QByteArrayList pages = statm.readAll().split(' ');  // size, resident, of these shared
    return double(pages.value(1).toLong() - pages.value(2).toLong()) * double(sysconf(_SC_PAGESIZE)) / 1e6;
}

/// How much more the last third of the samples holds than the first.
double growth(const std::vector<double>& samples) {
    const auto third = static_cast<std::ptrdiff_t>(samples.size() / 3);
    if (third == 0) return 0;
    const double first = std::accumulate(samples.begin(), samples.begin() + third, 0.0);
    return (std::accumulate(samples.end() - third, samples.end(), 0.0) - first) / double(third);
}

const soak::Action& choose(QRandomGenerator& random) {
    int total = 0;
    for (const soak::Action& each : soak::actions()) total += each.weight;
    int at = random.bounded(total);
    for (const soak::Action& each : soak::actions())
        if ((at -= each.weight) < 0) return each;
    return soak::actions().back();
}

void printSample(int done, double megabytes, const soak::World& world) {
    std::printf("%5d actions: %6.1f MB, %4d widgets, %d boxes, %d captions\n", done, megabytes,
                int(QApplication::allWidgets().size()), world.boxes(), world.captions());
    std::fflush(stdout);
}

/// Prints what held events up longest; gives the longest time.
int printLongest(const soak::World& world) {
    const auto longest = world.longest();
    QList<QString> names = longest.keys();
    std::sort(names.begin(), names.end(),
              [&](const QString& a, const QString& b) { return longest[a] > longest[b]; });
    std::puts("longest time without events:");
    for (const QString& name : names.first(qMin(8, names.size())))
        std::printf("%6d ms  %s\n", longest[name], qPrintable(name));
    return names.isEmpty() ? 0 : longest[names.first()];
}

int soakProgram(quint32 seed, int count, const QString& library, const Limits& limits) {
    soak::World world(library);
    if (!world.start()) return std::puts("the program did not start"), 1;
    QRandomGenerator order(seed);
    std::deque<QString> last;
    std::vector<double> memory;
    const auto failed = [&](const QString& why) {
        std::printf("FAILED: %s\nseed %u, last actions:\n", qPrintable(why), seed);
        for (const QString& each : last) std::printf("  %s\n", qPrintable(each));
        return 1;
    };
    for (int number = 1; number <= count; ++number) {
        const soak::Action& action = choose(order);
        world.beginAction(seed, number, action.name);
        last.push_back(QString::number(number) + u' ' + action.name);
        last.back() += u": "_s + action.act(world);
        if (qEnvironmentVariableIsSet("SOAK_VERBOSE")) std::fprintf(stderr, "%s\n", qPrintable(last.back()));
        if (last.size() > Remembered) last.pop_front();
        if (const auto stuck = world.settle()) return failed(*stuck);
        if (const auto wrong = world.lastingFault()) return failed(*wrong);
        if (world.isClosed() && !world.start()) return failed(u"the program did not start again"_s);
        if (number % SampleEvery != 0) continue;
        // What is open is chance and has its memory.
        for (QMdiSubWindow* each : world.children()) each->close();
        if (const auto stuck = world.settle()) return failed(*stuck);
        const double megabytes = privateMb();
        if (number > WarmUp) memory.push_back(megabytes);
        printSample(number, megabytes, world);
    }
    const int longest = printLongest(world);
    const double grown = growth(memory);
    std::printf("memory since action %d: %+.1f MB\n", WarmUp, grown);
    if (limits.growthMb && grown > *limits.growthMb) return failed(u"memory is not flat"_s);
    if (limits.pauseMs && longest > *limits.pauseMs) return failed(u"the window stood still"_s);
    // A user who gets nowhere tests nothing.
    if (world.captions() < count / 30) return failed(u"only %1 captions were seen"_s.arg(world.captions()));
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
    parser.addOptions({{u"growth"_s, {}, u"MB"_s}, {u"pause"_s, {}, u"MS"_s}});
    parser.process(application);
    const QStringList words = parser.positionalArguments();
    Limits limits;
    if (parser.isSet(u"growth"_s)) limits.growthMb = parser.value(u"growth"_s).toDouble();
    if (parser.isSet(u"pause"_s)) limits.pauseMs = parser.value(u"pause"_s).toInt();
    const quint32 seed = words.isEmpty() ? DefaultSeed : words[0].toUInt();
    const int count = words.size() > 1 ? words[1].toInt() : DefaultCount;
    std::printf("seed %u, %d actions\n", seed, count);
    std::fflush(stdout);
    try {
        return soakProgram(seed, count, words.value(2), limits);
    } catch (const std::exception& error) {
        std::printf("%s\n", error.what());
        return 1;
    }
}
