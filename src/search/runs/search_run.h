// One search run: what was asked, the words it came to, and the record of its hits.
#pragma once

#include <QString>
#include <QStringList>
#include <map>
#include <vector>

#include "search/runs/search_request.h"
#include "text/comparison.h"

namespace lirovan::search {

/// A word as it stands before an ending that begins with a vowel; see text/sound_changes.h.
struct SoundForm {
    enum class Use {
        Counted,  ///< an entry of the list, with hits of its own
        Covered,  ///< an entry, but without whole words its word's hits are there already: "hakk" and "hak"
        Repeats   ///< another entry says the same
    };
    QString form;
    QString word;  ///< the entry that it stands for: it shares its colour and its count
    Use use = Use::Counted;
};

/// Which of the recorded hits are whose. Entries are counted through the words and then the variants of the
/// run; a form's hits are counted for its word.
struct WordTally {
    struct Hits {
        qint32 entry;  ///< that was found, be it a form
        qint32 hits;   ///< so many of the record's next ones, all in one topic
    };
    std::vector<Hits> record;    ///< in the order of IsabetKaydi
    std::vector<qint64> counts;  ///< by entry; with what is counted but not recorded
};

struct SearchRun {
    int AramaNo = 0;
    SearchRequest request;  ///< as the run went on: a single letter turns `wholeWord` on
    /// What is searched: the words, their I variants and, unless all words are asked for, the table variants.
    QStringList AramaKelimeleri;
    text::Comparison KarsilastirmaKipi = text::Comparison::CaseInsensitive;
    /// Table variants by entry of the word list as it was before the table variants joined it.
    std::vector<QStringList> KelimeVaryantlari;
    QStringList TumVaryantlar;  ///< all table variants in the order read
    /// "$" for every author, "#" and KonuID for every topic with hits, ";" and a 1-based UTF-16 position for
    /// every hit: «$#12;45;310#17;9$».
    QString IsabetKaydi;
    std::vector<SoundForm> soundForms;
    WordTally tally;
};

/// The runs of one search window by number, kept as long as the result tree shows them, since a click on a
/// node of an older run has to mark what that run searched.
class RunStores {
  public:
    SearchRun& add(SearchRun run) {
        return runs_.insert_or_assign(run.AramaNo, std::move(run)).first->second;
    }
    /// Null when no such run was stored.
    const SearchRun* find(int number) const {
        const auto found = runs_.find(number);
        return found == runs_.end() ? nullptr : &found->second;
    }
    void clear() { runs_.clear(); }

  private:
    std::map<int, SearchRun> runs_;
};

}  // namespace lirovan::search
