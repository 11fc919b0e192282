#include "search/study/strips.h"

#include <algorithm>
#include <cmath>

#include "search/matching/word_list.h"
#include "search/pages/word_colours.h"
#include "search/runs/run_tip.h"
#include "search/study/contexts.h"
#include "search/study/hit_lines.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;
using platform::Result;
using platform::Statement;
using platform::Step;

namespace {

constexpr int LeastWidth = 4;
constexpr qsizetype PassageWidth = 120;

struct Lanes {
    std::vector<Lane> lanes;
    std::vector<qint32> byEntry;
};

// A lane for every word with hits, in the order of the run's words.
Lanes lanesOf(const RunHits& run) {
    const std::vector<QString> colours = coloursOfEntries(run.run);
    Lanes result;
    result.byEntry.assign(colours.size(), -1);
    const QStringList entries = run.run.AramaKelimeleri + run.run.TumVaryantlar;
    for (const RecordedHit& hit : run.list.hits) {
        const auto entry = static_cast<size_t>(hit.word);
        if (entry >= result.byEntry.size()) continue;
        if (result.byEntry[entry] < 0) {
            result.byEntry[entry] = static_cast<qint32>(result.lanes.size());
            result.lanes.push_back({asTyped(entries.at(hit.word), run.run, run.title), colours[entry], 0});
        }
        ++result.lanes[static_cast<size_t>(result.byEntry[entry])].hits;
    }
    return result;
}

Strip stripOf(const BookHits& book, const std::vector<qint32>& lanes, size_t laneCount) {
    Strip strip;
    strip.id = book.book;
    strip.length = book.length;
    strip.topics = book.topics;
    strip.counts.assign(laneCount, 0);
    for (const BookHit& hit : book.hits) {
        const auto entry = static_cast<size_t>(hit.word);
        const qint32 lane = entry < lanes.size() ? lanes[entry] : -1;
        if (lane < 0) continue;
        strip.hits.push_back({hit.position, lane});
        ++strip.counts[static_cast<size_t>(lane)];
    }
    return strip;
}

Result<void> nameStrip(Strip& strip, const data::Library& library, const BookHits& book) {
    const auto title = library.bookById(book.book);
    if (!title) return title.error();
    const auto author = library.author(book.author);
    if (!author) return author.error();
    if (*title) strip.name = plainTitle((*title)->title);
    if (*author) strip.author = (*author)->name;
    return {};
}

}  // namespace

Result<std::optional<Distribution>> distributionOf(const data::Library& library, const RunHits& run,
                                                   WantedBooks wanted, const HitProgress& progress) {
    Lanes lanes = lanesOf(run);
    Distribution result{std::move(lanes.lanes), {}};
    const auto expected = static_cast<qint64>(booksOf(run.list).size());
    TopicOutline outline(library);
    bool goesOn = true;
    Result<void> named;
    const Result<void> read = booksOfRun(
        library, outline, run.run, run.run.request.scope,
        [&](const BookHits& book) {
            Strip strip = stripOf(book, lanes.byEntry, result.lanes.size());
            strip.book = static_cast<qint64>(result.books.size());
            named = nameStrip(strip, library, book);
            if (!named) return false;
            result.books.push_back(std::move(strip));
            goesOn = progress(static_cast<qint64>(result.books.size()), expected);
            return goesOn;
        },
        wanted);
    if (!read) return read.error();
    if (!named) return named.error();
    if (!goesOn) return std::optional<Distribution>();
    return std::optional(std::move(result));
}

Result<std::vector<Strip>> topicStrips(const data::Library& library, const Strip& book) {
    Result<Statement> headings = library.query(data::catalogue::headingByRow());
    if (!headings) return headings.error();
    std::vector<Strip> strips;
    auto hit = book.hits.begin();
    for (size_t i = 0; i < book.topics.size(); ++i) {
        const TopicStart& topic = book.topics[i];
        const qint64 end = i + 1 < book.topics.size() ? book.topics[i + 1].start : book.length;
        Strip strip{{}, {}, book.id, book.book, end - topic.start, {}, {{topic.topic, topic.headingRow, 0}},
                    {}};
        strip.counts.assign(book.counts.size(), 0);
        for (; hit != book.hits.end() && hit->position <= end; ++hit) {
            strip.hits.push_back({hit->position - topic.start, hit->lane});
            ++strip.counts[static_cast<size_t>(hit->lane)];
        }
        headings->reset();
        if (const auto bound = headings->bind(1, topic.headingRow); !bound) return bound.error();
        const Result<Step> step = headings->step();
        if (!step) return step.error();
        if (*step == Step::Row) strip.name = plainTitle(headings->text(0));
        strips.push_back(std::move(strip));
    }
    return strips;
}

std::vector<Tick> ticksOf(const Strip& strip, int width) {
    std::vector<Tick> ticks;
    if (strip.length <= 0 || width <= 0) return ticks;
    std::vector<int> last(strip.counts.size(), -1);  // by lane
    const double scale = static_cast<double>(width) / static_cast<double>(strip.length);
    for (const StripHit& hit : strip.hits) {
        const int x = std::min(width - 1, static_cast<int>(static_cast<double>(hit.position - 1) * scale));
        int& before = last[static_cast<size_t>(hit.lane)];
        if (x == before) continue;
        before = x;
        ticks.push_back({x, hit.lane});
    }
    return ticks;
}

std::optional<size_t> hitNear(const Strip& strip, int width, double x, double reach, qint32 lane) {
    if (strip.length <= 0 || width <= 0) return std::nullopt;
    const double scale = static_cast<double>(width) / static_cast<double>(strip.length);
    const auto column = [&](const StripHit& hit) {
        return static_cast<double>(hit.position - 1) * scale + 0.5;
    };
    std::optional<size_t> best;
    double distance = reach;
    const auto first = std::lower_bound(strip.hits.begin(), strip.hits.end(), x - reach,
                                        [&](const StripHit& hit, double at) { return column(hit) < at; });
    for (auto hit = first; hit != strip.hits.end() && column(*hit) <= x + reach; ++hit) {
        if (lane >= 0 && hit->lane != lane) continue;
        const double away = std::abs(column(*hit) - x);
        if (away > distance || (best && away == distance)) continue;
        distance = away;
        best = static_cast<size_t>(hit - strip.hits.begin());
    }
    return best;
}

HitPlace placeOf(const Strip& strip, size_t hit) {
    const qint64 position = strip.hits[hit].position;
    const auto behind = std::upper_bound(strip.topics.begin(), strip.topics.end(), position - 1,
                                         [](qint64 at, const TopicStart& topic) { return at < topic.start; });
    if (behind == strip.topics.begin()) return {};
    const TopicStart& topic = *(behind - 1);
    return {topic.topic, topic.headingRow, position - topic.start};
}

int widthOf(const Strip& strip, qint64 longest, int room) {
    if (longest <= 0) return LeastWidth;
    const double share = static_cast<double>(strip.length) / static_cast<double>(longest);
    return std::clamp(static_cast<int>(std::lround(share * room)), LeastWidth, std::max(room, LeastWidth));
}

QString passageAt(const data::Library& library, const RunHits& run, const HitPlace& place) {
    const QString source = sourceOf(library, place.topic, place.headingRow);
    Result<Statement> texts = library.query(data::catalogue::topicText());
    if (!texts || !texts->bind(1, place.topic.value)) return source;
    const Result<Step> step = texts->step();
    if (!step || *step == Step::Done) return source;
    for (size_t topic = 0; topic < run.list.topics.size(); ++topic) {
        if (run.list.topics[topic].topic != place.topic) continue;
        for (quint32 hit = run.list.topics[topic].firstHit; hit < run.list.hitsEnd(topic); ++hit) {
            if (run.list.hits[hit].position != place.position) continue;
            const TopicContexts found = contextsOf(texts->utf8(0), {run.list.hits[hit]}, PassageWidth);
            if (found.contexts.empty()) return source;
            const Context& context = found.contexts.front();
            const auto text = [](std::string_view utf8) {
                return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
            };
            return u"… "_s + (text(context.left) + text(context.hit) + text(context.right)).simplified() +
                   u" …\n"_s + source;
        }
    }
    return source;
}

}  // namespace lirovan::search
