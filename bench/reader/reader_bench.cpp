// The reader's work at start-up and at a click, on the generated library of 15,000 topics.
#include <benchmark/benchmark.h>

#include <QDir>
#include <QTemporaryDir>

#include "browse/book_selector.h"
#include "browse/book_tree.h"
#include "browse/page_file.h"
#include "browse/topic_page.h"
#include "data/library.h"
#include "support/library_generator.h"

using namespace lirovan;
using namespace Qt::StringLiterals;

namespace {

data::Library openStandard(benchmark::State& state) {
    auto library = data::Library::openFile(bench::standardLibrary(), platform::OpenMode::ReadOnly);
    if (library) return *library;
    state.SkipWithError(qPrintable(library.error().message));
    return {};
}

// The same statements, stepped through without looking at a title: what the database alone takes.
void OutlineStatements(benchmark::State& state) {
    const data::Library library = openStandard(state);
    qint64 rows = 0;
    for (auto _ : state) {
        rows = 0;
        auto authors = library.authors();
        for (data::Author author; *authors->next(author); ++rows) {
            auto books = library.query(data::catalogue::treeBooks(author.id));
            for (; *books->step() == platform::Step::Row; ++rows) {
                auto topics = library.query(data::catalogue::headings(data::BookId{books->integer(0)}));
                while (*topics->step() == platform::Step::Row) ++rows;
            }
        }
    }
    state.counters["per_node"] = benchmark::Counter(
        double(rows) * double(state.iterations()), benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(OutlineStatements)->Unit(benchmark::kMillisecond);

void BookTree(benchmark::State& state) {
    const data::Library library = openStandard(state);
    size_t nodes = 0;
    for (auto _ : state) {
        const browse::BookTree tree = browse::readBookTree(library);
        nodes = tree.nodes.size();
        benchmark::DoNotOptimize(nodes);
    }
    state.counters["nodes"] = double(nodes);
    state.counters["per_node"] =
        benchmark::Counter(double(nodes) * double(state.iterations()),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BookTree)->Unit(benchmark::kMillisecond);

void BookSelector(benchmark::State& state) {
    const data::Library library = openStandard(state);
    for (auto _ : state) benchmark::DoNotOptimize(browse::readBookSelector(library).rows.size());
}
BENCHMARK(BookSelector)->Unit(benchmark::kMicrosecond);

// From the click to the written page file.
void TopicPage(benchmark::State& state) {
    const data::Library library = openStandard(state);
    const QTemporaryDir folder;
    QDir(folder.path()).mkdir(u"OKU"_s);
    const platform::AppFolder app(folder.path());
    qint64 topic = 0;
    for (auto _ : state) {
        topic = topic % 15000 + 1;
        const auto page = browse::topicPage(
            library, app, {data::BookId{1}, data::AuthorId{1}, data::TopicId{topic}, {}, {}});
        if (!page || !browse::writePage(app, *page)) state.SkipWithError("no page");
    }
}
BENCHMARK(TopicPage)->Unit(benchmark::kMicrosecond);

void OpenLibrary(benchmark::State& state) {
    const QString path = bench::standardLibrary();
    for (auto _ : state)
        benchmark::DoNotOptimize(bool(data::Library::openFile(path, platform::OpenMode::ReadOnly)));
}
BENCHMARK(OpenLibrary)->Unit(benchmark::kMicrosecond);

}  // namespace
