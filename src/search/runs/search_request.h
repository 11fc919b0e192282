// What is asked of a search, as one value: the window's button and its sort menus, the companion and the
// notes make one, and a run keeps the one that it answers.
#pragma once

#include <QString>
#include <optional>

#include "platform/core/main_frame.h"

namespace lirovan::search {

/// The check boxes of the frame "Arama Seçenekleri".
struct SearchOptions {
    bool caseSensitive = false;  ///< chk_BKD
    bool wholeWord = false;      ///< chk_TMK
    bool allWords = false;       ///< chk_HPI
    bool together = false;       ///< chk_FindWith
    bool clearResult = false;    ///< chk_ClearResult
    bool soundChanges = false;   ///< "Ses Değişimlerini de Bul"
};

/// How a run groups its topics: under their books, or right under their author by heading or by ratio (see
/// ratio_order.h; equal ratios in the order of the books).
enum class ListOrder { Kitap, Konu, Oran };

struct SearchRequest {
    QString query;  ///< as typed
    SearchOptions options = {};
    ListOrder order = ListOrder::Kitap;
    platform::BookSelection scope = {};
    /// What the run's root calls it, where that is not the query: a list that is sorted again is named after
    /// what the search box holds by then. What was searched is `query`.
    std::optional<QString> shown = {};
};

}  // namespace lirovan::search
