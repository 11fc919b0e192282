// From a click on a topic to the loaded page, and from "back" to the page at its place, against loading the
// same file in a bare page view. They alternate; medians count.
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QWebEngineView>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "browse/page_file.h"
#include "browse/topic_page.h"
#include "platform/ui/message_boxes.h"
#include "platform/ui/web_view.h"
#include "support/library_generator.h"

using namespace lirovan;
using namespace Qt::StringLiterals;

namespace {

constexpr int Rounds = 150, WarmUp = 5;

double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
    return values[values.size() / 2];
}

double milliseconds(const QElapsedTimer& timer) {
    return double(timer.nsecsElapsed()) / 1e6;
}

template <class View, class Signal>
void wait(View& view, Signal signal) {
    QEventLoop loop;
    QObject::connect(&view, signal, &loop, &QEventLoop::quit);
    loop.exec();
}

double bareLoad(QWebEngineView& view, const QString& path) {
    QElapsedTimer timer;
    timer.start();
    view.load(QUrl::fromLocalFile(path));
    wait(view, &QWebEngineView::loadFinished);
    return milliseconds(timer);
}

double click(const data::Library& library, const platform::AppFolder& folder, platform::WebView& view,
             qint64 topic) {
    QElapsedTimer timer;
    timer.start();
    const auto page = browse::topicPage(library, folder,
                                        {data::BookId{1}, data::AuthorId{1}, data::TopicId{topic}, {}, {}});
    if (!page || !browse::writePage(folder, *page)) return -1;
    view.navigate(folder.pageText(browse::PageFile));
    wait(view, &platform::WebView::loaded);
    return milliseconds(timer);
}

/// The place is asked of the page that is left, as the window does.
double back(const data::Library& library, const platform::AppFolder& folder, platform::WebView& view,
            qint64 topic, const platform::PagePlace& place) {
    QElapsedTimer timer;
    timer.start();
    if (!view.place(false)) return -1;
    if (click(library, folder, view, topic) < 0) return -1;
    view.waitUntilComplete();
    view.goTo(place, false);
    return milliseconds(timer);
}

}  // namespace

int main(int count, char* words[]) {
    platform::WebEngine::prepare();
    const QApplication application(count, words);
    const QTemporaryDir temporary;
    QDir(temporary.path()).mkdir(u"OKU"_s);
    const platform::AppFolder folder(temporary.path());
    const auto library = data::Library::openFile(bench::standardLibrary(), platform::OpenMode::ReadOnly);
    if (!library) return 1;

    platform::MessageBoxes dialogs;
    platform::WebView reader(platform::WebEngine::create(folder), dialogs);
    QWebEngineView bare;
    for (QWidget* view : {static_cast<QWidget*>(&reader), static_cast<QWidget*>(&bare)}) {
        view->resize(900, 600);
        view->show();
    }
    std::vector<double> clicks, loads, backs;
    for (int round = 0; round < Rounds + WarmUp; ++round) {
        const double clicked = click(*library, folder, reader, 1 + round * 37);
        const double loaded = bareLoad(bare, folder.path(browse::PageFile));
        reader.setScrollTop(200);
        const auto place = reader.place(false);
        const double wentBack = place ? back(*library, folder, reader, 1 + round * 37, *place.value) : -1;
        if (clicked < 0 || wentBack < 0) return 1;
        if (round < WarmUp) continue;
        backs.push_back(wentBack);
        clicks.push_back(clicked);
        loads.push_back(loaded);
    }
    std::printf("click to page %.1f ms, bare load %.1f ms, ratio %.2f\n", median(clicks), median(loads),
                median(clicks) / median(loads));
    std::printf("back to the place %.1f ms, ratio %.2f\n", median(backs), median(backs) / median(loads));
    return 0;
}
