#include "search/topic_scanner.h"

#include <QByteArray>
#include <algorithm>
#include <array>
#include <optional>

#include "search/search_query.h"
#include "search/stored_text.h"
#include "search/text_grams.h"

namespace lirovan::search {
namespace {

// The two books of very long topics, and the topics in them whose words are always counted by the shortcut.
// In the other topics of these books it takes over where a word occurs more than this many times.
constexpr data::BookId LargeBooks[] = {{33}, {34}};
constexpr std::array<qint64, 8> LargeTopics = {1197, 1198, 1199, 1200, 1201, 1202, 1203, 1205};
constexpr qint64 ManyOccurrences = 333;

// So many words are looked for as they come; from there on, noting a text's runs of letters saves more time
// than it takes.
constexpr int FewWords = 16;

// Positions are those of the text as the rest of the program reads it; where the stored bytes are no proper
// UTF-8, that is not the bytes' own count.
QByteArray properUtf8(std::string_view text) {
    const QByteArrayView bytes(text.data(), static_cast<qsizetype>(text.size()));
    if (bytes.isValidUtf8() && !bytes.startsWith("\xEF\xBB\xBF")) return {};
    return QString::fromUtf8(bytes).toUtf8();
}

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
    QString& record;
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

TopicScanner::TopicScanner(const SearchRun& run, const SearchOptions& options)
    : comparison_(run.KarsilastirmaKipi), wholeWord_(options.wholeWord), allWords_(options.allWords) {
    const QStringList& words = run.AramaKelimeleri;
    for (qsizetype i = 0; i < words.size(); ++i) {
        if (AyniKelimeVar(words.at(i), words, i, comparison_)) continue;
        words_.push_back(prepared(words.at(i)));
        if (!allWords_ || static_cast<size_t>(i) >= run.KelimeVaryantlari.size()) continue;
        for (const QString& variant : run.KelimeVaryantlari[static_cast<size_t>(i)])
            words_.back().alternatives.emplace_back(variant, comparison_);
    }
    if (!allWords_) return;
    const QStringList& variants = run.TumVaryantlar;
    for (qsizetype i = 0; i < variants.size(); ++i)
        if (!AyniKelimeVar(variants.at(i), variants, i, comparison_) &&
            !AyniKelimeVar(variants.at(i), words, words.size(), comparison_))
            variants_.push_back(prepared(variants.at(i)));
}

TopicScanner::Word TopicScanner::prepared(const QString& word) const {
    return {Utf8Pattern(word, comparison_),
            Utf8Pattern(word, text::Comparison::CaseInsensitive),
            wordGrams(word),
            {}};
}

bool TopicScanner::found(const Word& word, std::string_view text, Sieve& sieve) const {
    if (sieve.passes(word) && HitWalk(text, word.pattern, wholeWord_).next()) return true;
    return std::any_of(word.alternatives.begin(), word.alternatives.end(),
                       [&](const Utf8Pattern& variant) { return foundAnywhere(variant, text, wholeWord_); });
}

bool TopicScanner::matches(std::string_view text) const {
    Sieve sieve(text);
    const auto inText = [&](const Word& word) { return found(word, text, sieve); };
    return allWords_ ? std::all_of(words_.begin(), words_.end(), inText)
                     : std::any_of(words_.begin(), words_.end(), inText);
}

void TopicScanner::count(const Word& word, std::string_view text, Count& count, const GoOn& goOn) const {
    const bool largeBook = std::find(std::begin(LargeBooks), std::end(LargeBooks),
                                     count.topic.AktifKitapID) != std::end(LargeBooks);
    const bool largeTopic =
        std::find(LargeTopics.begin(), LargeTopics.end(), count.topic.AktifKonuID.value) != LargeTopics.end();
    std::optional<qint64> occurring;  // of the word, looked up once
    HitWalk hits(text, word.pattern, wholeWord_);
    UnitCounter units(text);
    while (const auto hit = hits.next()) {
        if (!goOn()) {
            count.stopped = true;
            return;
        }
        ++count.total;
        if (count.first) count.record += u'#' + QString::number(count.topic.AktifKonuID.value);
        count.first = false;
        count.record += u';' + QString::number(units.position(hit->begin));

        if (!largeBook || count.total <= 1) continue;
        if (!occurring) occurring = occurrences(word.anyCase, text);
        if (largeTopic || *occurring > ManyOccurrences) {
            count.total += *occurring;
            return;
        }
    }
}

qint64 TopicScanner::BulKelimeSay(std::string_view text, const CountedTopic& topic, QString& IsabetKaydi,
                                  const GoOn& goOn) const {
    const QByteArray proper = properUtf8(text);
    if (!proper.isNull()) text = {proper.constData(), static_cast<size_t>(proper.size())};
    Count running{topic, IsabetKaydi};
    Sieve sieve(text);
    for (const std::vector<Word>* list : {&words_, &variants_})
        for (const Word& word : *list) {
            if (!sieve.passes(word)) continue;
            count(word, text, running, goOn);
            if (running.stopped) return running.total;
        }
    return running.total;
}

}  // namespace lirovan::search
