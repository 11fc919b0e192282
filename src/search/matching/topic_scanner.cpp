#include "search/matching/topic_scanner.h"

#include <QByteArray>
#include <algorithm>
#include <optional>

#include "data/special_books.h"
#include "search/matching/search_query.h"
#include "search/matching/stored_text.h"
#include "search/matching/text_grams.h"

namespace lirovan::search {
namespace {

// In the topics of the large books the shortcut takes over where a word occurs more than this many times.
constexpr qint64 ManyOccurrences = 333;

// So many words are looked for as they come; from there on, noting a text's runs of letters saves more time
// than it takes.
constexpr int FewWords = 16;

// Variants are looked for as they stand, inside tags too; with whole words asked for, they must be whole
// words.
bool foundAnywhere(const Utf8Pattern& pattern, std::string_view text, bool wholeWord) {
    size_t from = 0;
    while (const auto hit = pattern.find(text, from)) {
        if (!wholeWord || isWholeWord(text, *hit)) return true;
        from = hit->begin + 1;  // no character begins with a trailing byte, so this is the next character
    }
    return false;
}

qint64 occurrences(const Utf8Pattern& pattern, std::string_view text) {
    qint64 count = 0;
    size_t from = 0;
    while (const auto hit = pattern.find(text, from)) {
        ++count;
        from = hit->end;
    }
    return count;
}

}  // namespace

struct TopicScanner::Count {
    const CountedTopic& topic;
    HitRecord record;
    qint64 total = 0;
    bool first = true;  // no hit of this topic is recorded yet
    bool stopped = false;
};

class TopicScanner::Sieve {
  public:
    explicit Sieve(std::string_view text) : text_(text) {}
    bool passes(const Word& word) {
        if (asked_ < FewWords) return ++asked_, true;
        if (!grams_) grams_.emplace(text_);
        return grams_->mayHold(word.grams);
    }

  private:
    std::string_view text_;
    int asked_ = 0;
    std::optional<TextGrams> grams_;
};

TopicScanner::TopicScanner(const SearchRun& run)
    : comparison_(run.KarsilastirmaKipi),
      wholeWord_(run.request.options.wholeWord),
      allWords_(run.request.options.allWords) {
    const qsizetype words = run.AramaKelimeleri.size();
    const QStringList entries = allWords_ ? run.AramaKelimeleri + run.TumVaryantlar : run.AramaKelimeleri;
    entries_ = static_cast<size_t>(entries.size());
    for (const CountedWord& counted : countedWords(entries, run)) {
        Word& word =
            (counted.entry < words ? words_ : variants_).emplace_back(prepared(entries.at(counted.entry)));
        word.place = counted;
        if (allWords_ && counted.entry < words) addAlternatives(word, run);
    }
}

void TopicScanner::addAlternatives(Word& word, const SearchRun& run) const {
    const auto addVariantsOf = [&](qsizetype entry) {
        if (static_cast<size_t>(entry) >= run.KelimeVaryantlari.size()) return;
        for (const QString& variant : run.KelimeVaryantlari[static_cast<size_t>(entry)])
            word.alternatives.emplace_back(variant, comparison_);
    };
    const QStringList& entries = run.AramaKelimeleri;
    addVariantsOf(word.place.entry);
    for (const SoundForm& form : run.soundForms) {
        if (form.word != entries.at(word.place.entry)) continue;
        word.forms.emplace_back(form.form, comparison_);
        addVariantsOf(entries.indexOf(form.form));
    }
}

TopicScanner::Word TopicScanner::prepared(const QString& word) const {
    return {Utf8Pattern(word, comparison_), Utf8Pattern(word, text::Comparison::CaseInsensitive),
            wordGrams(word)};
}

bool TopicScanner::found(const Word& word, std::string_view text, Sieve& sieve) const {
    const auto isThere = [&](const Utf8Pattern& pattern) {
        return HitWalk(text, pattern, wholeWord_).next().has_value();
    };
    if (sieve.passes(word) && isThere(word.pattern)) return true;
    if (std::any_of(word.forms.begin(), word.forms.end(), isThere)) return true;
    return std::any_of(word.alternatives.begin(), word.alternatives.end(),
                       [&](const Utf8Pattern& variant) { return foundAnywhere(variant, text, wholeWord_); });
}

bool TopicScanner::matches(std::string_view text) const {
    Sieve sieve(text);
    const auto inText = [&](const Word& word) { return found(word, text, sieve); };
    // A form stands in for its word and is not asked for itself.
    const auto asWord = [&](const Word& word) {
        return word.place.word != word.place.entry || found(word, text, sieve);
    };
    return allWords_ ? std::all_of(words_.begin(), words_.end(), asWord)
                     : std::any_of(words_.begin(), words_.end(), inText);
}

// Gives how many hits went into the record.
qint32 TopicScanner::count(const Word& word, std::string_view text, Count& count, const GoOn& goOn) const {
    const bool largeBook = std::ranges::count(data::LargeBooks, count.topic.AktifKitapID) > 0;
    const bool largeTopic = std::ranges::count(data::LargeTopics, count.topic.AktifKonuID) > 0;
    std::optional<qint64> occurring;  // of the word, looked up once
    qint32 recorded = 0;
    HitWalk hits(text, word.pattern, wholeWord_);
    UnitCounter units(text);
    while (const auto hit = hits.next()) {
        if (!goOn()) {
            count.stopped = true;
            return recorded;
        }
        ++count.total;
        ++recorded;
        if (count.first) count.record.IsabetKaydi += u'#' + QString::number(count.topic.AktifKonuID.value);
        count.first = false;
        count.record.IsabetKaydi += u';' + QString::number(units.position(hit->begin));

        if (!largeBook || count.total <= 1) continue;
        if (!occurring) occurring = occurrences(word.anyCase, text);
        if (largeTopic || *occurring > ManyOccurrences) {
            count.total += *occurring;
            return recorded;
        }
    }
    return recorded;
}

qint64 TopicScanner::BulKelimeSay(std::string_view text, const CountedTopic& topic, HitRecord record,
                                  const GoOn& goOn) const {
    const QByteArray proper = properUtf8(text);
    if (!proper.isNull()) text = {proper.constData(), static_cast<size_t>(proper.size())};
    if (record.tally) record.tally->counts.resize(entries_);
    Count running{topic, record};
    Sieve sieve(text);
    for (const std::vector<Word>* list : {&words_, &variants_})
        for (const Word& word : *list) {
            if (!sieve.passes(word)) continue;
            const qint64 before = running.total;
            const qint32 recorded = count(word, text, running, goOn);
            if (record.tally && recorded > 0) {
                record.tally->record.push_back({static_cast<qint32>(word.place.entry), recorded});
                record.tally->counts[static_cast<size_t>(word.place.word)] += running.total - before;
            }
            if (running.stopped) return running.total;
        }
    return running.total;
}

}  // namespace lirovan::search
