// The figures of docs/BENCHMARKS.md, section Search: search_bench [FACTOR...]. Every ratio is against a peer
// in the same run. Without factors everything is measured on the standard library; with factors (1 2 4 8) how
// the times grow.
#include <sqlite3.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "browse/page_layout.h"
#include "measure.h"
#include "search/matching/variant_table.h"
#include "search/pages/result_page.h"
#include "search/runs/companion.h"
#include "search/ui/search_tab.h"
#include "support/fake_windows.h"
#include "support/library_generator.h"
#include "support/scripted_dialogs.h"

using namespace lirovan;
using namespace lirovan::bench;
using namespace Qt::StringLiterals;
using platform::OpenMode;

namespace {

// Words of the generated library. The frequent one has some 357,000 hits in the standard size.
const QString RareWord = u"dalabyıl"_s;
const QString FrequentWord = u"bam"_s;
const QString WordsWithVariants = u"tamyubzırlat asodlarro dimbezcinet"_s;

template <class T>
T must(platform::Result<T> result) {
    if (result) {
        if constexpr (std::is_void_v<T>)
            return;
        else
            return std::move(*result);
    }
    std::fprintf(stderr, "%s\n", qPrintable(result.error().message));
    std::exit(1);
}

void say(const char* what, const QString& figure) {
    std::printf("%-58s %s\n", what, qPrintable(figure));
    std::fflush(stdout);
}

QString figure(double milliseconds) {
    return u"%1 ms"_s.arg(milliseconds, 0, 'f', milliseconds < 10 ? 1 : 0);
}

QString figure(const Compared& compared, QStringView peer) {
    return u"%1, %2 %3, ratio %4"_s.arg(figure(compared.ours), peer, figure(compared.peer))
        .arg(compared.ratio(), 0, 'f', 2);
}

// A generated library and its texts, one topic a line, in a folder of their own.
struct Sample {
    explicit Sample(double factor) {
        GeneratorOptions options;
        options.topics = static_cast<int>(options.topics * factor);
        options.textBytes = static_cast<qint64>(static_cast<double>(options.textBytes) * factor);
        must(generateLibrary(library, options));
        data::Library open = must(data::Library::openFile(library, OpenMode::ReadWrite));
        must(search::rebuildVariantTable(open, [] { return true; }));
        QFile file(texts);
        if (!file.open(QIODevice::WriteOnly)) std::exit(1);
        auto topics = must(open.query(data::catalogue::topics()));
        while (must(topics.step()) == platform::Step::Row) {
            const QString text = topics.text(data::catalogue::TopicTextColumn);
            file.write(QString(text).replace(u'\n', u' ').toUtf8() + '\n');
            inMemory += text;
        }
    }
    QTemporaryDir folder;
    QString library = folder.filePath(u"kitaplar.vq"_s);
    QString texts = folder.filePath(u"texts"_s);
    QStringList inMemory;
};

QString companion() {
    return QCoreApplication::applicationDirPath() + u"/lirovan-kitaplik"_s;
}

void rg(const Sample& sample, const QString& pattern) {
    runProgram(u"rg"_s, {u"-i"_s, u"-c"_s, pattern, sample.texts});
}

// One program's search engine, as the window holds it.
struct Engine {
    explicit Engine(const Sample& sample)
        : library(must(data::Library::openFile(sample.library, OpenMode::ReadWrite))) {
        engine.keepTexts();
    }
    qint64 search(const QString& query) {
        search::RunHost host;
        return must(engine.run({query, {.clearResult = true}}, host)).listed;
    }
    data::Library library;
    search::ResultTree tree;
    search::SearchEngine engine{library, tree};
};

// The search tab in a window, with everything around it faked.
struct Tab {
    explicit Tab(const Sample& sample)
        : library(must(data::Library::openFile(sample.library, OpenMode::ReadWrite))),
          folder(sample.folder.path()),
          tab({frame, dialogs, content, library, folder, page, state}) {
        QDir(sample.folder.path()).mkdir(u"OKU"_s);
        tab.resize(320, 700);
        tab.show();
        QCoreApplication::processEvents();
    }
    void search(const QString& query) {
        tab.findChild<QLineEdit*>(u"txt_Bul"_s)->setText(query);
        tab.cmd_Bul_Click();
        QCoreApplication::processEvents();
    }
    test::FakeMainFrame frame;
    test::ScriptedDialogs dialogs;
    test::FakeContentView content;
    browse::PageCommands page{frame};
    browse::SearchTabState state;
    data::Library library;
    platform::AppFolder folder;
    search::SearchTab tab;
};

// 600 words as they come in the texts, or the same words spelled backwards with an ending that none has.
QStringList manyWords(const Sample& sample, bool known) {
    static const QRegularExpression word(u"(?<![<&/\\w])\\w{5,}"_s,
                                         QRegularExpression::UseUnicodePropertiesOption);
    QStringList words;
    for (qsizetype topic = 0; words.size() < 600; topic += 50) {
        for (const QRegularExpressionMatch& match : word.globalMatch(sample.inMemory.at(topic))) {
            QString found = match.captured();
            if (!known) std::reverse(found.begin(), found.end());
            if (!known) found += u"zğ"_s;
            if (words.size() < 600 && !words.contains(found)) words += found;
        }
    }
    return words;
}

void measureScan(const Sample& sample) {
    say("rare word, whole program",
        figure(compare(
                   11,
                   [&] {
                       runProgram(companion(), {u"ara"_s, sample.library, RareWord});
                   },
                   [&] { rg(sample, RareWord); }),
               u"rg"));
    Engine engine(sample);
    std::printf("  (%lld topics found)\n", static_cast<long long>(engine.search(RareWord)));
    const auto search = [&] { engine.search(RareWord); };
    say("rare word, second search in the program",
        figure(compare(11, search, [&] { rg(sample, RareWord); }), u"rg"));

    search::RunHost host;
    const QString alternatives =
        engine.engine.prepare({WordsWithVariants}, host).run.AramaKelimeleri.join(u'|');
    say("three words with variants, any word",
        figure(compare(
                   11, [&] { engine.search(WordsWithVariants); }, [&] { rg(sample, alternatives); }),
               u"rg"));

    const QString known = manyWords(sample, true).join(u' ');
    say("600 words of the library, any word", figure(milliseconds([&] { engine.search(known); })));
    const QStringList unknown = manyWords(sample, false);
    say("600 words that occur nowhere",
        figure(compare(
                   3, [&] { engine.search(unknown.join(u' ')); }, [&] { rg(sample, unknown.join(u'|')); }),
               u"rg"));

    const QString like = u"SELECT count(*) FROM tbl_Konu WHERE Konu LIKE '%"_s + RareWord + u"%'"_s;
    sqlite3* database = nullptr;
    sqlite3_open_v2(sample.library.toUtf8().constData(), &database, SQLITE_OPEN_READONLY, nullptr);
    say("rare word, against SQLite's own LIKE (no Turkish)",
        figure(compare(5, search,
                       [&] { sqlite3_exec(database, like.toUtf8().constData(), nullptr, nullptr, nullptr); }),
               u"LIKE"));
    sqlite3_close(database);
    say("rare word, against LIKE by Turkish folding",
        figure(compare(3, search, [&] { must(engine.library.database().integer(like)); }), u"LIKE"));
    qsizetype found = 0;
    say("rare word, against QString::indexOf on texts in memory",
        figure(compare(5, search,
                       [&] {
                           for (const QString& text : sample.inMemory)
                               found += text.indexOf(RareWord, 0, Qt::CaseInsensitive) >= 0;
                       }),
               u"indexOf"));
}

void measureTab(const Sample& sample) {
    Tab window(sample);
    window.search(RareWord);
    {
        EventTurns turns;
        const double time = milliseconds([&] { window.search(FrequentWord); });
        say("frequent word, tree filled", figure(time) + u", longest pause "_s + figure(turns.longest()));
        std::printf("  (%lld hits)\n",
                    static_cast<long long>(window.tab.engine().stores().find(2)->IsabetKaydi.count(u';')));
    }
    {
        EventTurns turns;
        const double time = milliseconds([&] { window.tab.mnu_Sirala_Click(search::ListOrder::Konu); });
        say("the same by heading", figure(time) + u", longest pause "_s + figure(turns.longest()));
    }
    QElapsedTimer sinceStop;
    QTimer::singleShot(40, [&] {
        sinceStop.start();
        window.tab.cmdDur_Click();
    });
    window.search(FrequentWord);
    say("stop takes effect after",
        sinceStop.isValid() ? figure(double(sinceStop.nsecsElapsed()) / 1e6) : u"-"_s);
    {
        EventTurns turns;
        const double time = milliseconds([&] { window.tab.cmd_KelimeKontOlustur_Click(); });
        say("word variants rebuilt", figure(time) + u", longest pause "_s + figure(turns.longest()));
    }
}

search::SearchRun runOf(const QString& word, const QString& record = {}) {
    search::SearchRun run;
    run.AramaKelimeleri = {word};
    run.IsabetKaydi = record;
    return run;
}

// A topic of 5 MB with some 50,000 hits, marked, framed and encoded.
void measurePage(double factor) {
    QString text;
    const auto words = static_cast<int>(50'000 * factor);
    for (int i = 0; i < words; ++i) {
        text += u"<P>"_s + FrequentWord +
                u" — kırk iki harflik bir boşluk dolduran metin; hiçbir işe yaramaz, "_s +
                QString::number(i) + u" kez yinelenir</P>"_s;
    }
    QByteArray bytes;
    qint32 hits = 0;
    std::vector<double> times;
    for (int i = 0; i < 5; ++i)
        times.push_back(milliseconds([&] {
            const search::HighlightedText marked =
                search::markHits(text, {FrequentWord}, search::SearchRun());
            hits = marked.hits;
            bytes = browse::pageBytes(browse::framedPage({}, marked.text));
        }));
    say(qPrintable(u"highlighted page, %1 MB, %2 hits"_s.arg(double(text.toUtf8().size()) / 1e6, 0, 'f', 1)
                       .arg(hits)),
        figure(median(times)));
}

void measureSummary(const Sample& sample, double factor) {
    Engine engine(sample);
    QString query = FrequentWord;
    engine.search(query);
    // The first topics of the record.
    const QString& record = engine.engine.stores().find(1)->IsabetKaydi;
    const QStringList topics = record.sliced(record.indexOf(u'#')).replace(u"$"_s, QString()).split(u'#');
    const auto wanted = static_cast<qsizetype>(2000 * factor);
    const search::SearchRun run =
        runOf(FrequentWord, u"$#"_s + topics.sliced(1).first(std::min(wanted, topics.size() - 1)).join(u'#'));
    QByteArray bytes;
    const double time = milliseconds([&] {
        bytes = browse::pageBytes(must(search::summaryPage(
            engine.library, &run, 0, [](qsizetype) {}, [] { return true; })));
    });
    say(qPrintable(u"summary of %1 topics, %2 hits"_s.arg(run.IsabetKaydi.count(u'#'))
                       .arg(run.IsabetKaydi.count(u';'))),
        figure(time) + u", page of %1 MB"_s.arg(double(bytes.size()) / 1e6, 0, 'f', 1));
}

void measureGrowth(double factor) {
    std::printf("--- %g times the size\n", factor);
    const Sample sample(factor);
    measureScan(sample);
    measureTab(sample);
    measurePage(factor);
    measureSummary(sample, factor > 7 ? 7 : factor);
}

}  // namespace

int main(int count, char* words[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, words);
    std::vector<double> factors;
    for (const QString& word : QApplication::arguments().mid(1)) factors.push_back(word.toDouble());
    if (factors.empty()) factors = {1};
    for (const double factor : factors) measureGrowth(factor);
    return 0;
}
