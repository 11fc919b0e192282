// The picture "Dağılım" before it is painted: strips with ticks, as plain values.
#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "search/study/distribution.h"
#include "search/study/hit_list.h"

namespace lirovan::search {

/// A word of the run with a lane of its own in every strip: the lane's place is the cue that is not colour.
struct Lane {
    QString word;
    QString colour;  ///< of its marks on the page
    qint64 hits = 0;
};

struct StripHit {
    qint64 position;  ///< 1-based, within the strip
    qint32 lane;
};

/// A book, or a topic of one.
struct Strip {
    QString name;
    QString author;   ///< of a book
    data::BookId id;  ///< the book's
    qint64 book = 0;  ///< index in Distribution::books
    qint64 length = 0;
    std::vector<StripHit> hits;  ///< by position
    std::vector<TopicStart> topics;
    std::vector<qint64> counts;  ///< by lane
};

struct Distribution {
    std::vector<Lane> lanes;
    std::vector<Strip> books;  ///< in library order
};

/// Reads what the picture shows. Nothing where `progress`, told how many of the books are read, ended it.
platform::Result<std::optional<Distribution>> distributionOf(const data::Library& library, const RunHits& run,
                                                             WantedBooks wanted, const HitProgress& progress);

/// A strip for each topic of a book.
platform::Result<std::vector<Strip>> topicStrips(const data::Library& library, const Strip& book);

/// A tick as it is painted: hits that fall on one column of one lane are one tick.
struct Tick {
    int x;
    qint32 lane;
};
/// The ticks of a strip that is `width` pixels wide. Linear in the hits.
std::vector<Tick> ticksOf(const Strip& strip, int width);

/// The hit nearest to column `x`, `reach` columns away at most; in `lane` where that is not negative.
std::optional<size_t> hitNear(const Strip& strip, int width, double x, double reach, qint32 lane = -1);

/// Where a hit of a strip is in its topic.
HitPlace placeOf(const Strip& strip, size_t hit);

/// How wide a strip is among others of which the longest is `longest` long: never so small that it is
/// overlooked.
int widthOf(const Strip& strip, qint64 longest, int room);

/// What pointing at a hit shows: the passage and its source.
QString passageAt(const data::Library& library, const RunHits& run, const HitPlace& place);

}  // namespace lirovan::search
