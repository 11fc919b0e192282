// The highlighted page of a found topic, and the summary of an author's found topics.
#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "data/library.h"
#include "platform/core/paths.h"
#include "platform/core/result.h"
#include "search/pages/highlighter.h"

namespace lirovan::search {

struct ResultPage {
    QString page;           ///< without the final line end
    QString heading;        ///< of the topic, for the caption; may be empty
    HighlightedText marks;  ///< hits and colours; its text has moved into the page
    /// Number of the button of the hit that was asked for.
    std::optional<qint32> wanted = {};
};

/// The topic page with every hit of the run's words marked, by the run's own options. `headingRow`: which of
/// the topic's headings stands above it, by its row in tbl_KonuBaslik; else the first. `wanted`: a recorded
/// position whose button is to be named; 0 for none. Nothing where the topic has no text row (any more); what
/// else cannot be read leaves its place empty.
std::optional<ResultPage> highlightedPage(const data::Library& library, const platform::AppFolder& folder,
                                          data::TopicId topic, std::optional<qint64> headingRow,
                                          const SearchRun& run, const MarkingProgress& progress = {},
                                          qint64 wanted = 0);

/// Why a summary could not be made: number and description, as the message box shows them.
platform::Error summaryError(int number, const QString& description);

/// The passages of group `group` of a run: author `group`, from 0. `run`: null where no such run was stored.
/// `started` is told the number of hits before the first passage;
/// `passageDone` is called after every passage, and false ends the summary with what there is.
platform::Result<QString> summaryPage(const data::Library& library, const SearchRun* run, int group,
                                      const std::function<void(qsizetype hits)>& started,
                                      const std::function<bool()>& passageDone);

/// The topic that the heading number `passage` (from 0) of that summary stands for; nothing where there is
/// none. The summary is gone through up to there: `passageDone` is called as above.
std::optional<data::TopicId> topicOfPassage(const data::Library& library, const SearchRun& run, int group,
                                            int passage, const std::function<bool()>& passageDone);

}  // namespace lirovan::search
