// A summary of many megabytes: until its first passages are painted, until it is whole, larger type, reading
// it, and until the next topic is shown. Beside it the first paint and the whole load of a bare page view.
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>
#include <QWebEngineView>
#include <cstdio>
#include <functional>

#include "browse/content_window.h"
#include "browse/page_file.h"
#include "platform/ui/message_boxes.h"
#include "platform/ui/web_view.h"
#include "search/pages/passages.h"

using namespace lirovan;
using namespace Qt::StringLiterals;

namespace {

constexpr int Megabyte = 1 << 20;
constexpr auto Painted =
    "(performance.getEntriesByName('first-contentful-paint')[0] || {startTime: -1}).startTime";

double milliseconds(const QElapsedTimer& timer) {
    return double(timer.nsecsElapsed()) / 1e6;
}

/// Many passages with a hit in each, of two paragraphs.
QString summary(qsizetype size) {
    QString text;
    std::vector<qint64> hits;
    for (int i = 0; i < 200; ++i) {
        text += u"<P>"_s;
        for (int word = 0; word < 40; ++word) text += u"denenen sözlerden biri "_s;
        hits.push_back(text.size() + 1);
        text += u"ışık ve gölge, </P>"_s;
    }
    const search::SummaryTopic topic{text, u"Kitap"_s, u"Başlık"_s};
    QString page;
    while (page.size() < size) search::appendPassages(page, topic, hits, {}, [] { return true; });
    return page;
}

double ask(QWebEnginePage& page, const QString& script) {
    double answer = -1;
    QEventLoop loop;
    page.runJavaScript(script, [&](const QVariant& value) {
        answer = value.toDouble();
        loop.quit();
    });
    QTimer::singleShot(60'000, &loop, &QEventLoop::quit);
    loop.exec();
    return answer;
}

template <class View, class Signal>
void load(View& view, Signal loaded, const std::function<void()>& begin) {
    QEventLoop loop;
    QObject::connect(&view, loaded, &loop, &QEventLoop::quit);
    QTimer::singleShot(300'000, &loop, &QEventLoop::quit);
    begin();
    loop.exec();
}

template <class Step>
void measure(const char* name, Step step) {
    QElapsedTimer timer;
    timer.start();
    step();
    std::printf("%-28s %8.0f ms\n", name, milliseconds(timer));
    std::fflush(stdout);
}

/// Finding a word of every passage: until the first mark, until the page was looked through, and for how long
/// the window and the page stood still meanwhile.
void find(platform::WebView& reader, QWebEnginePage& page) {
    ask(page,
        u"window.longest = 0; window.last = performance.now(); setInterval(() => {"
        "const now = performance.now(); longest = Math.max(longest, now - last);"
        "last = now; }, 1)"_s);
    ask(page, u"longest = 0"_s);
    QEventLoop loop;
    QElapsedTimer timer, turn;
    double first = -1, pause = 0;
    QTimer beat;
    QObject::connect(&beat, &QTimer::timeout, &loop, [&] {
        pause = std::max(pause, milliseconds(turn));
        turn.start();
    });
    int found = 0;
    QObject::connect(&reader, &platform::WebView::foundChanged, &loop,
                     [&](int count, int current, bool whole) {
                         found = count;
                         if (first < 0 && current > 0) first = milliseconds(timer);
                         if (whole) loop.quit();
                     });
    turn.start();
    beat.start(0);
    timer.start();
    reader.findOnPage(u"ışık ve"_s);
    loop.exec();
    std::printf("%-28s %8.0f ms\n", "find: first mark", first);
    std::printf("%-28s %8.0f ms, %d found\n", "find: whole page", milliseconds(timer), found);
    std::printf("%-28s %8.0f ms\n", "find: longest pause, window", pause);
    std::printf("%-28s %8.0f ms\n", "find: longest pause, page", ask(page, u"longest"_s));
    reader.findOnPage({});
}

}  // namespace

int main(int count, char* words[]) {
    platform::WebEngine::prepare();
    const QApplication application(count, words);
    const int size = count > 1 ? QByteArray(words[1]).toInt() : 48;
    const QTemporaryDir temporary;
    QDir(temporary.path()).mkdir(u"OKU"_s);
    const platform::AppFolder folder(temporary.path());
    const auto page = browse::writePage(folder, summary(qsizetype(size) * Megabyte));
    if (!page) return 1;
    const QString path = folder.pageText(browse::PageFile);

    platform::MessageBoxes dialogs;
    platform::WebView reader(platform::WebEngine::create(folder), dialogs);
    reader.resize(900, 600);
    reader.show();
    const QByteArray topic = "<html><title>x</title><body><p>konu</p></body></html>";
    const auto show = [&](const QByteArray& bytes) {
        load(reader, &platform::WebView::loaded, [&] { reader.navigate(path, bytes); });
    };
    show(topic);
    const auto inner = [&]() -> QWebEnginePage& { return *reader.findChild<QWebEngineView*>()->page(); };

    measure("whole", [&] { show(*page); });
    std::printf("%-28s %8.0f ms\n", "first paint", ask(inner(), QLatin1String(Painted)));
    measure("read", [&] { std::printf("%lld characters\n", qint64(reader.innerHtml().valueOr({}).size())); });
    find(reader, inner());
    measure("larger type", [&] { browse::rewriteWithFontSize(reader, 16, 17, &folder); });
    measure("to the middle", [&] { ask(inner(), u"scrollTo(0, 1e5); document.body.scrollHeight"_s); });
    measure("next topic", [&] { show(topic); });

    QWebEngineView bare;
    bare.resize(900, 600);
    bare.show();
    const auto showBare = [&](const QUrl& address) {
        load(bare, &QWebEngineView::loadFinished, [&] { bare.load(address); });
    };
    showBare(QUrl(u"about:blank"_s));
    measure("bare: whole", [&] { showBare(QUrl::fromLocalFile(folder.path(browse::PageFile))); });
    std::printf("%-28s %8.0f ms\n", "bare: first paint", ask(*bare.page(), QLatin1String(Painted)));
    return 0;
}
