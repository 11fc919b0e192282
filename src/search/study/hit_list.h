// The hits of a run as a list that windows show, sort and filter. It holds places only, no texts: these are
// read for the lines that are seen.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "data/library.h"
#include "platform/core/result.h"
#include "search/runs/recorded_hits.h"
#include "search/runs/topic_outline.h"

namespace lirovan::search {

struct ListedTopic {
    data::TopicId topic;
    data::BookId book;      ///< 0: the topic is in no outline any more
    qint64 headingRow = 0;  ///< in tbl_KonuBaslik; 0 as above
    quint32 place = 0;      ///< among the topics of the run's books, in library order
    quint32 firstHit = 0;   ///< in HitList::hits
};

struct HitList {
    std::vector<ListedTopic> topics;  ///< in the order of the record
    std::vector<RecordedHit> hits;    ///< topic by topic, in the order of the record

    quint32 hitsEnd(size_t topic) const {
        return topic + 1 < topics.size() ? topics[topic + 1].firstHit : static_cast<quint32>(hits.size());
    }
    std::vector<RecordedHit> hitsOf(size_t topic) const {
        return {hits.begin() + topics[topic].firstHit, hits.begin() + hitsEnd(topic)};
    }
    /// Which topic a hit is in.
    size_t topicOf(quint32 hit) const;
};

/// The hits of a run. A topic with two headings is listed under each.
platform::Result<HitList> hitListOf(const data::Library& library, TopicOutline& outline,
                                    const SearchRun& run);

/// A run with its hits, for windows that may outlive its nodes in the result tree.
struct RunHits {
    SearchRun run;
    QString title;  ///< as its root in the tree says
    HitList list;
};

/// A hit to be shown on its topic's page.
struct HitPlace {
    data::TopicId topic;
    qint64 headingRow = 0;
    qint64 position = 0;  ///< as recorded
};

/// The books with hits, each once, in library order, with the number of hits.
struct ListedBook {
    data::BookId book;
    qint64 hits = 0;
};
std::vector<ListedBook> booksOf(const HitList& list);

enum class HitOrder {
    Found,   ///< as the run listed them
    Source,  ///< author, book, topic, place in the text
    Word,    ///< by what was found, as it stands in the text
    Left,    ///< by the words before it, the nearest first
    Right    ///< by what follows
};

/// Told how many of all topics are read; false ends the work.
using HitProgress = std::function<bool(qint64 done, qint64 all)>;

/// Indexes of the hits in an order; equal ones as Source has them. Word, Left and Right read the texts, and
/// compare as Turkish lists do. Nothing where `progress` ended it. Linear in the texts, and in the hits but
/// for sorting.
platform::Result<std::optional<std::vector<quint32>>> orderedHits(const data::Library& library,
                                                                  const HitList& list, HitOrder order,
                                                                  const HitProgress& progress);

/// Those of `order` that lie in `book`; all where that is 0.
std::vector<quint32> hitsInBook(const HitList& list, const std::vector<quint32>& order, data::BookId book);

}  // namespace lirovan::search
