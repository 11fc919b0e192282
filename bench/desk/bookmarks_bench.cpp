// bookmarks_bench [COUNT]: a list of many bookmarks. Reading it against reading the same rows with nothing
// made of them; searching against looking through the same texts with the toolkit's own comparison. Medians
// of seven.
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>

#include "desk/bookmark_list.h"
#include "desk/reader_file.h"
#include "platform/core/each_row.h"

using namespace lirovan;
using namespace Qt::StringLiterals;

namespace {

double median(const std::function<void()>& work) {
    std::vector<double> times;
    for (int round = 0; round < 7; ++round) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::ranges::sort(times);
    return times[times.size() / 2];
}

std::vector<desk::Bookmark> many(int count) {
    const QStringView words[] = {u"bahçe ", u"ışık ", u"sabah ", u"yağmur ", u"söz ", u"kitap ", u"hâl "};
    std::vector<desk::Bookmark> all;
    quint32 random = 5101;
    for (int i = 0; i < count; ++i) {
        desk::Bookmark bookmark;
        bookmark.made = QDateTime::currentDateTime();
        bookmark.topic = {i % 15000 + 1};
        bookmark.heading = u"Konu %1"_s.arg(i % 15000);
        bookmark.bookTitle = u"Kitap %1"_s.arg(i % 60);
        for (int word = 0; word < 20; ++word) {
            random = random * 1664525 + 1013904223;
            bookmark.place.passage += words[(random >> 8) % std::size(words)];
        }
        bookmark.line = u"satır %1"_s.arg(i);
        all.push_back(bookmark);
    }
    return all;
}

void say(const char* what, double ours, double peer) {
    std::printf("%-28s %7.1f ms, peer %7.1f ms, ratio %.2f\n", what, ours, peer, ours / peer);
}

}  // namespace

int main(int arguments, char** values) {
    const int count = arguments > 1 ? std::atoi(values[1]) : 20'000;
    const QTemporaryDir folder;
    const desk::Bookmarks store(folder.filePath(u"okur.vq"_s));
    const std::vector<desk::Bookmark> all = many(count);
    if (!store.restore(all)) return 1;

    desk::BookmarkList list(store, [](const desk::Bookmark& bookmark) { return bookmark.topic.value; });
    std::size_t read = 0;
    const double rows = median([&] {
        const auto database = desk::readReaderFile(store.path());
        if (!database) return;
        (void)platform::eachRow(database->prepare(u"SELECT * FROM tbl_YerImleri"),
                                [&](const platform::Statement& row) {
                                    for (int column = 0; column < row.columnCount(); ++column)
                                        read += std::size_t(row.text(column).size());
                                });
    });
    say("read", median([&] { (void)list.load(); }), rows);
    say("order by place", median([&] {
            list.sort(desk::BookmarkList::Order::Date);
            list.sort(desk::BookmarkList::Order::Place);
        }),
        rows);
    list.search(u"ısınma"_s);  // makes the texts ready, once for the window
    const double contains = median([&] {
        for (const desk::Bookmark& each : all)
            for (const QString& text : {each.line, each.place.passage, each.heading, each.bookTitle})
                read += text.contains(u"yağmur söz"_s, Qt::CaseInsensitive);
    });
    say("search", median([&] { list.search(u"yağmur söz"_s); }), contains);
    std::printf("(%zu found, %zu characters read)\n", list.count(), read);
    return 0;
}
