// Marking a run's words in a topic's text: a colour per word, and in front of every marked occurrence an
// invisible button that the hit navigation finds by its name.
#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>
#include <array>
#include <functional>
#include <utility>
#include <vector>

#include "search/runs/search_run.h"

namespace lirovan::search {

/// VurguRenkleri — the colours of the words, in order; the seventeenth word gets the first one again.
inline constexpr std::array<QStringView, 16> VurguRenkleri = {
    u"#00FF00", u"#00FFFF", u"#FFFF00", u"#FD7C57", u"#918BF8", u"#FB537D", u"#FFB366", u"#C1F0C8",
    u"#FDA2A2", u"#FECDA0", u"#FEE7A0", u"#DFFEA0", u"#BFFEA0", u"#A0FEB8", u"#A0FEE9", u"#FF9FA2"};

/// Name of the buttons before their running number, and of the empty anchor before the first hit of each
/// word.
inline constexpr QStringView HitAnchor = u"ggggittt";

/// An entry of the run's list that was marked.
struct MarkedWord {
    QString word;
    int colour = 0;            ///< place in VurguRenkleri
    qint32 first = 0;          ///< number of its first button
    qint32 hits = 0;           ///< its buttons have the numbers from there on
    qsizetype standsFor = -1;  ///< forms of one word have the same here
};

struct HighlightedText {
    QString text;
    qint32 hits = 0;  ///< marked occurrences = buttons on the page
    std::vector<std::pair<QString, QString>>
        colours;                    ///< words that took a colour, found or not, and the colour
    std::vector<MarkedWord> words;  ///< the same words
};

/// What marking tells while it works; a long text takes a while.
struct MarkingProgress {
    std::function<void(QStringView word, qsizetype textLength)> wordStarted = [](QStringView, qsizetype) {};
    std::function<void(qsizetype position)> hitMarked = [](qsizetype) {};
};

/// The words to be marked for a topic of `run`, longest first, table variants among them.
QStringList wordsToMark(const SearchRun& run);

/// Marks every occurrence of every word of a run, word after word. `words`: those of wordsToMark(). A sound
/// form has its word's colour. Left unmarked: what lies inside a tag, what follows
/// the last "<", what would break a "&quot;", pieces of markup (words with a "<"), and with `wholeWord` the
/// parts of words. Words that repeat an earlier one under the run's comparison are passed over and take no
/// colour. Linear in text and hits for each word.
HighlightedText markHits(QString text, const QStringList& words, const SearchRun& run,
                         const MarkingProgress& progress = {});

}  // namespace lirovan::search
