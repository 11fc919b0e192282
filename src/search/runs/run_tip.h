// What tells one run from another that searched the same words.
#pragma once

#include <QString>

#include "search/runs/search_run.h"

namespace lirovan::search {

/// Lines of plain text: the query as `title`, the hits of each word, the books, the order and the options.
QString runTip(const SearchRun& run, const QString& title);

/// Of the spellings that compare equal to an entry the one that was typed: which of them counts is chance.
QString asTyped(const QString& entry, const SearchRun& run, const QString& typed);

/// The options of a run that are on, "yalnız tüm kelime, ses değişimleri"; empty where none is.
QString namesOfOptions(const SearchOptions& options);

}  // namespace lirovan::search
