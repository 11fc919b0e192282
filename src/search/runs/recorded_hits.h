// A run's hit record read back: which word was found where.
#pragma once

#include <QString>
#include <vector>

#include "data/ids.h"
#include "search/runs/search_run.h"

namespace lirovan::search {

struct RecordedHit {
    qint64 position;  ///< 1-based, UTF-16 units of the stored text
    qint32 word;      ///< the entry that the hit counts for; entries as in WordTally
    qint32 length;    ///< of what was found, in units
};

/// A topic's hits in the order of the record. A topic with two headings is recorded under each.
struct HitTopic {
    data::TopicId topic;
    std::vector<RecordedHit> hits;
};

class RecordedHits {
  public:
    /// `run` outlives this object, and may go on recording.
    explicit RecordedHits(const SearchRun& run);
    /// The next topic of the record, whichever its author; false at the end of what is recorded by now.
    bool next(HitTopic& topic);

  private:
    qint64 number();
    RecordedHit hit();

    const QString& record_;
    qsizetype at_ = 0;
    const std::vector<WordTally::Hits>& tally_;
    size_t tallyAt_ = 0;
    qint32 taken_ = 0;             // of the tally's entry at hand
    std::vector<qint32> lengths_;  // of the entries
    std::vector<qint32> words_;    // that they count for
};

}  // namespace lirovan::search
