// The search's part of the command-line companion: what it prints, as bytes.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "data/library.h"
#include "platform/core/main_frame.h"
#include "platform/core/paths.h"
#include "platform/core/result.h"
#include "search/search_engine.h"

namespace lirovan::search::companion {

struct Request {
    QString query;
    SearchOptions options = {};
    ListOrder order = ListOrder::Kitap;
    platform::BookSelection scope = {};
};

/// One run as one JSON object in one line: the words, the comparison, the variants, the nodes in the order in
/// which they were made with their final texts, the hit record and the number of topics. The run's number is
/// 1, a single-letter warning counts as accepted.
platform::Result<QByteArray> ara(const data::Library& library, Request request);

/// The highlighted page of a topic as it would stand in the page file; empty where none would be written.
/// With `json` {"isabet":N,"renkler":[[word,colour],…]} instead.
QByteArray vurgula(const data::Library& library, const platform::AppFolder& folder, data::TopicId topic,
                   Request request, bool json);

/// The summary page of group `group` as it would stand in the page file. A query without words has no
/// summary.
platform::Result<QByteArray> ozet(const data::Library& library, Request request, int group);

/// Rebuilds the word-variant table; the number of rows as text.
platform::Result<QByteArray> kelimeler(const data::Library& library);

}  // namespace lirovan::search::companion
