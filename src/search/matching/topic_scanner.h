// Which topics match a run, and how often: the run's words made ready once, applied to every topic's stored
// text.
#pragma once

#include <QString>
#include <functional>
#include <string_view>
#include <vector>

#include "data/ids.h"
#include "search/matching/utf8_pattern.h"
#include "search/matching/word_list.h"
#include "search/runs/search_run.h"

namespace lirovan::search {

/// The topic whose hits are counted. In some books the counter takes a shortcut.
struct CountedTopic {
    data::TopicId AktifKonuID;
    data::BookId AktifKitapID;  ///< as of the last listing in book order
};

/// Where counted hits are written down.
struct HitRecord {
    QString& IsabetKaydi;
    WordTally* tally = nullptr;  ///< which hits are whose, where it is asked for
};

class TopicScanner {
  public:
    explicit TopicScanner(const SearchRun& run);

    /// Whether the topic belongs into the result. `text` is UTF-8 as stored.
    bool matches(std::string_view text) const;

    /// Called at every hit; false stops the count.
    using GoOn = std::function<bool()>;

    /// BulKelimeSay — counts the hits of the run's words in a topic's text and appends them to `record`.
    /// Words that repeat an earlier one under the run's comparison are passed over. In books 33 and 34
    /// frequent words are counted by a shortcut: everything that stands in the text, markup included, comes
    /// on top of the hits counted one by one. Stopped in the middle it returns the count so far.
    qint64 BulKelimeSay(std::string_view text, const CountedTopic& topic, HitRecord record,
                        const GoOn& goOn) const;

  private:
    struct Word {
        Utf8Pattern pattern;
        Utf8Pattern anyCase;  // for the shortcut, which never tells case apart
        std::vector<uint16_t> grams;
        std::vector<Utf8Pattern> alternatives = {};  // variants
        std::vector<Utf8Pattern> forms = {};         // that stand for it where all words are asked for
        CountedWord place = {};
    };
    struct Count;  // one topic's count under way

    class Sieve;  // holds back words that cannot stand in a text

    bool found(const Word& word, std::string_view text, Sieve& sieve) const;
    void addAlternatives(Word& word, const SearchRun& run) const;
    qint32 count(const Word& word, std::string_view text, Count& count, const GoOn& goOn) const;
    Word prepared(const QString& word) const;

    text::Comparison comparison_;
    bool wholeWord_;
    bool allWords_;
    std::vector<Word> words_;     // and their forms, without repetitions
    std::vector<Word> variants_;  // counted after the words when all words are asked for
    size_t entries_;              // words and variants of the run
};

}  // namespace lirovan::search
