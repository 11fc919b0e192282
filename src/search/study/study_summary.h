// The summary as a document to keep: the passages around a run's hits with their sources. Unlike the summary
// page, passages that overlap stand once.
#pragma once

#include <QByteArray>
#include <functional>

#include "data/library.h"
#include "platform/core/result.h"
#include "search/study/hit_list.h"

namespace lirovan::search {

/// HTML with a title (the query, the options, the number of hits), a heading for every author, book and
/// topic, and the passages, hits marked. `author`: the one that is wanted, counted from 0 as the groups of
/// the hit record are; all where it is negative. `write` gets it piece by piece, in UTF-8: it may be far
/// larger than what memory is good for. False where `progress` ended it.
using WritePiece = std::function<platform::Result<void>(const QByteArray& utf8)>;
platform::Result<bool> studySummary(const data::Library& library, const RunHits& run, int author,
                                    const WritePiece& write, const HitProgress& progress);

/// So many hits a summary is about.
qint64 hitsOfSummary(const RunHits& run, int author);

}  // namespace lirovan::search
