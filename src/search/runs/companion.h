// The search's part of the command-line companion: what it prints, as bytes.
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

#include "data/library.h"
#include "platform/core/paths.h"
#include "platform/core/result.h"
#include "search/runs/search_engine.h"

namespace lirovan::search::companion {

/// One run as one JSON object in one line: the words, the comparison, the variants, the nodes in the order in
/// which they were made with their final texts, the hit record and the number of topics. The run's number is
/// 1, a single-letter warning counts as accepted.
platform::Result<QByteArray> ara(const data::Library& library, const SearchRequest& request);

/// The highlighted page of a topic as it would stand in the page file; empty where none would be written.
/// With `json` {"isabet":N,"renkler":[[word,colour],…]} instead.
QByteArray vurgula(const data::Library& library, const platform::AppFolder& folder, data::TopicId topic,
                   const SearchRequest& request, bool json);

/// The summary page of group `group` as it would stand in the page file. A query without words has no
/// summary.
platform::Result<QByteArray> ozet(const data::Library& library, const SearchRequest& request, int group);

/// Takes what is printed, piece by piece.
using Output = std::function<void(const QByteArray&)>;

/// The summary as a document to keep, as HTML (see study_summary.h); `group` below 0: of all authors.
platform::Result<void> ozetBelgesi(const data::Library& library, const SearchRequest& request, int group,
                                   const Output& output);

/// One JSON object a hit, in the order of the hit record: `konu`, `konum` (1-based UTF-16 position in the
/// stored text), `sol`, `isabet`, `sag`; at most `width` UTF-16 characters on each side (see contexts.h).
platform::Result<void> baglam(const data::Library& library, const SearchRequest& request, qsizetype width,
                              const Output& output);

/// One JSON object a book with hits, in library order: `kitap`, `uzunluk` (UTF-16 characters of its texts),
/// `isabetler` ([entry of the run's words and variants, 1-based position within the book]).
platform::Result<void> dagilim(const data::Library& library, const SearchRequest& request,
                               const Output& output);

/// Rebuilds the word-variant table; the number of rows as text.
platform::Result<QByteArray> kelimeler(const data::Library& library);

}  // namespace lirovan::search::companion
