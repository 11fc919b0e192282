// The words of a run on a marked page: what the strip over it shows, and the cue under their marks that is
// not a colour.
#pragma once

#include <QString>
#include <vector>

#include "search/pages/highlighter.h"
#include "search/runs/search_run.h"

namespace lirovan::search {

/// Numbers of hit buttons, from `first` on.
struct HitRange {
    qint32 first = 0;
    qint32 count = 0;
};

struct RunWord {
    QString word;
    int colour = 0;  ///< place in VurguRenkleri, and of the cue
    qint64 onPage = 0, inRun = 0;
    std::vector<HitRange> hits;  ///< its hits on the page
};

/// The words that have hits in the run, in the order in which they took their colours; forms count for their
/// word.
std::vector<RunWord> runWords(const SearchRun& run, const HighlightedText& marks);

/// How the line under the marks of a colour is drawn; each of the sixteen differs from the others.
struct CueLine {
    enum class Style { Solid, Dashed, Dotted, Double, Wavy } style = Style::Solid;
    bool above = false;  ///< a second line above the word
    bool thick = false;
};
CueLine cueLine(int colour);
/// The cues as a style sheet of the page view.
QString cueStyle();

/// «söz 3 / 1.280»: on the page and in the run.
QString wordCaption(const RunWord& word);

}  // namespace lirovan::search
