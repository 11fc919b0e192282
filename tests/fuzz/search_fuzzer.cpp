// A query (the first line) against a text (the rest), stored as it is: whatever the bytes, matching,
// counting, marking and summing up agree with each other and end.
#include <cstdlib>

#include "search/matching/search_query.h"
#include "search/matching/topic_scanner.h"
#include "search/pages/highlighter.h"
#include "search/pages/passages.h"

using namespace lirovan;
using namespace lirovan::search;
using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size < 2) return 0;
    const std::string_view input(reinterpret_cast<const char*>(data) + 1, size - 1);
    const auto option = [data](int bit) { return (data[0] & bit) != 0; };
    const SearchOptions options{option(1), option(2), option(4), option(8), false, option(16)};
    const size_t lineEnd = std::min(input.find('\n'), input.size());
    const std::string_view stored = input.substr(std::min(lineEnd + 1, input.size()));
    const auto text = [](std::string_view bytes) {
        return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    };

    SearchRun run = startRun({{}, options}, cleanQuery(text(input.substr(0, lineEnd))));
    if (run.AramaKelimeleri.isEmpty()) return 0;
    completeRun(run, [](const QString&) { return QStringList(); });
    const TopicScanner scanner(run);
    const bool matches = scanner.matches(stored);
    run.IsabetKaydi = u"$"_s;
    const qint64 count =
        scanner.BulKelimeSay(stored, {{7}, {1}}, {run.IsabetKaydi, &run.tally}, [] { return true; });
    // Of bytes that are no UTF-8 the count makes replacement characters, which a word may hold.
    const bool proper = text(stored).toUtf8().toStdString() == stored;
    if (proper && count > 0 && !matches && !options.allWords) std::abort();
    if (run.IsabetKaydi.count(u';') != count) std::abort();
    qint64 ofWords = 0;
    for (const WordCount& word : wordCounts(run)) ofWords += word.hits;
    if (ofWords != count) std::abort();

    const HighlightedText page = markHits(text(stored), wordsToMark(run), run);
    if (page.text.count(u"<input type='submit' name='ggggittt"_s) < page.hits) std::abort();

    QString summary;
    const auto topics = recordedTopics(run.IsabetKaydi, 0);
    if (!topics) std::abort();
    for (const RecordedTopic& topic : *topics)
        appendPassages(summary, {text(stored), QString(), QString()}, topic.positions, std::nullopt,
                       [] { return true; });
    if (summary.isEmpty() != topics->empty()) std::abort();
    return 0;
}
