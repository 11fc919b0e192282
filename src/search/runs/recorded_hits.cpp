#include "search/runs/recorded_hits.h"

#include "search/matching/word_list.h"

namespace lirovan::search {

RecordedHits::RecordedHits(const SearchRun& run) : record_(run.IsabetKaydi), tally_(run.tally.record) {
    const QStringList entries = run.AramaKelimeleri + run.TumVaryantlar;
    for (const QString& entry : entries) {
        words_.push_back(static_cast<qint32>(lengths_.size()));
        lengths_.push_back(static_cast<qint32>(entry.size()));
    }
    for (const CountedWord& counted : countedWords(entries, run))
        words_[static_cast<size_t>(counted.entry)] = static_cast<qint32>(counted.word);
}

qint64 RecordedHits::number() {
    qint64 value = 0;
    for (; at_ < record_.size() && record_[at_] >= u'0' && record_[at_] <= u'9'; ++at_)
        value = value * 10 + (record_[at_].unicode() - u'0');
    return value;
}

RecordedHit RecordedHits::hit() {
    const qint64 position = number();
    while (tallyAt_ < tally_.size() && taken_ >= tally_[tallyAt_].hits) {
        ++tallyAt_;
        taken_ = 0;
    }
    if (tallyAt_ == tally_.size()) return {position, 0, 0};
    ++taken_;
    const auto entry = static_cast<size_t>(tally_[tallyAt_].entry);
    return entry < words_.size() ? RecordedHit{position, words_[entry], lengths_[entry]}
                                 : RecordedHit{position, 0, 0};
}

bool RecordedHits::next(HitTopic& topic) {
    while (at_ < record_.size() && record_[at_] != u'#') ++at_;
    if (at_ == record_.size()) return false;
    ++at_;
    topic.topic = {number()};
    topic.hits.clear();
    while (at_ < record_.size() && record_[at_] == u';') {
        ++at_;
        topic.hits.push_back(hit());
    }
    return true;
}

}  // namespace lirovan::search
