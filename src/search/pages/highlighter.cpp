#include "search/pages/highlighter.h"

#include <algorithm>
#include <map>
#include <optional>

#include "search/matching/search_query.h"
#include "search/matching/word_list.h"
#include "text/alphabet.h"
#include "text/blanks.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;

namespace {

// First place of a mark at or after ascending places; -1 when there is none.
class NextMark {
  public:
    NextMark(QStringView text, QChar mark) : text_(text), mark_(mark) {}
    qsizetype from(qsizetype at) {
        if (known_ != -1 && known_ < at) known_ = text_.indexOf(mark_, at);
        return known_;
    }

  private:
    QStringView text_;
    QChar mark_;
    qsizetype known_ = -2;
};

// Marks one word in a text. The result grows behind the place reached; what is still to be searched is the
// text as it was. Searching on from the tag that closes a mark would find nothing in it, so the search goes
// on behind it.
class WordMarker {
  public:
    WordMarker(const QString& text, QStringView word, const SearchRun& run)
        : text_(text),
          word_(word),
          comparison_(run.KarsilastirmaKipi),
          wholeWord_(run.request.options.wholeWord) {}

    // Returns the marked text, or the text itself when there is no hit.
    QString mark(QStringView colour, qint32& anchor, const MarkingProgress& progress) {
        qsizetype from = 0;
        while (true) {
            const qsizetype hit = text::find(text_, word_, from, comparison_);
            if (hit < 0) break;
            if (!isMarkable(hit)) {
                from = hit + word_.size();
            } else if (wholeWord_ && !isWholeWord(hit)) {
                from = hit + 1;
            } else {
                append(hit, colour, anchor++);
                from = copied_;
                progress.hitMarked(marked_.size() + 1);
            }
        }
        if (marked_.isEmpty()) return text_;
        return marked_ += QStringView(text_).sliced(copied_);
    }

  private:
    bool isMarkable(qsizetype hit) {
        const qsizetype less = less_.from(hit);
        if (less < 0) return false;                                          // behind the last tag
        if (less > greater_.from(hit)) return false;                         // inside a tag
        return !surroundings(hit).contains(u"quot"_s, Qt::CaseInsensitive);  // part of an entity
    }

    // The eight characters from the fourth before the hit on, or the first eight of the text, as marked so
    // far.
    QString surroundings(qsizetype hit) const {
        const QStringView rest = QStringView(text_).sliced(copied_);
        const qsizetype fromRest = std::min<qsizetype>(4, hit - copied_);
        const qsizetype fromMarked = std::min<qsizetype>(4 - fromRest, marked_.size());
        const qsizetype behind = std::min<qsizetype>(8 - fromRest - fromMarked, text_.size() - hit);
        QString units = marked_.last(fromMarked);
        units += rest.sliced(hit - copied_ - fromRest, fromRest + behind);
        return units;
    }

    // With what was marked so far before the hit.
    bool isWholeWord(qsizetype hit) const {
        const QChar before = hit > copied_        ? text_.at(hit - 1)
                             : !marked_.isEmpty() ? marked_.back()
                                                  : text_.at(hit);
        const qsizetype behind = hit + word_.size();
        return text::KontTumKelime(before.unicode(), behind < text_.size()
                                                         ? std::optional(text_.at(behind).unicode())
                                                         : std::nullopt);
    }

    void append(qsizetype hit, QStringView colour, qint32 anchor) {
        const bool first = marked_.isEmpty();
        if (first) marked_.reserve(text_.size() + text_.size() / 4);
        marked_ += QStringView(text_).sliced(copied_, hit - copied_);
        if (first) {
            marked_ += u"<a name='";
            marked_ += HitAnchor;
            marked_ += u"'></a>";
        }
        marked_ += u"<input type='submit' name='";
        marked_ += HitAnchor;
        marked_ += QString::number(anchor);
        marked_ += u"' style='width:0px; height:0px;'><font color='#000080'><span style='background-color:";
        // Only the first mark of a word lacks the blank before its colour.
        if (!first) marked_ += u' ';
        marked_ += colour;
        marked_ += u"'>";
        marked_ += QStringView(text_).sliced(hit, word_.size());
        marked_ += u"</font></span>";
        copied_ = hit + word_.size();
    }

    const QString text_;
    QStringView word_;
    text::Comparison comparison_;
    bool wholeWord_;
    NextMark less_{text_, u'<'}, greater_{text_, u'>'};
    QString marked_;        // the result up to copied_
    qsizetype copied_ = 0;  // how much of the text it covers
};

}  // namespace

QStringList wordsToMark(const SearchRun& run) {
    QStringList words = run.AramaKelimeleri;
    // A run that asked for all words keeps them apart.
    if (run.request.options.allWords) words += run.TumVaryantlar;
    orderLongestFirst(words);
    return words;
}

HighlightedText markHits(QString text, const QStringList& words, const SearchRun& run,
                         const MarkingProgress& progress) {
    HighlightedText result;
    std::map<qsizetype, size_t> colourOfWord;
    for (const CountedWord& counted : countedWords(words, run)) {
        const QString& word = words.at(counted.entry);
        if (text::trimBlanks(word).isEmpty()) continue;
        const size_t next = colourOfWord.size() % VurguRenkleri.size();
        const size_t place = colourOfWord.try_emplace(counted.word, next).first->second;
        const QStringView colour = VurguRenkleri[place];
        const qint32 before = result.hits;
        progress.wordStarted(word, text.size());
        // A piece of markup: marking it would take the page, and the marks before it, apart.
        const bool isMarkup = word.contains(u'<');
        if (!isMarkup) text = WordMarker(text, word, run).mark(colour, result.hits, progress);
        result.colours.emplace_back(word, colour.toString());
        result.words.push_back({word, static_cast<int>(place), before, result.hits - before, counted.word});
    }
    result.text = std::move(text);
    return result;
}

}  // namespace lirovan::search
