// Hits in their context: what a reader sees to the left and to the right of each.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "data/library.h"
#include "platform/core/result.h"
#include "search/runs/recorded_hits.h"

namespace lirovan::search {

/// One hit. The texts are UTF-8 without markup: tags are gone, those that end a line leaving a blank; an
/// entity is its character; blanks and line ends that follow each other are one blank. A hit inside an entity
/// is that entity's character.
struct Context {
    qint64 position;  ///< in the stored text, as recorded
    qint32 word;      ///< the entry that it counts for
    std::string_view left, hit, right;
};

struct TopicContexts {
    std::string plain;              ///< the topic without markup; what the contexts point into
    std::vector<Context> contexts;  ///< in the order of the hits
};

/// The contexts of `hits` in a stored text, `width` UTF-16 units at most on each side. Hits that lie behind
/// the text's end, which has changed since, are left out. Linear in the text and in the contexts.
TopicContexts contextsOf(std::string_view text, const std::vector<RecordedHit>& hits, qsizetype width);

/// All hits of a run in the order of its record, topic by topic; only topics with hits are read, and topics
/// that are gone are passed over. `onTopic` may end it with false. Contexts are valid during the call.
using OnTopic = std::function<bool(data::TopicId topic, const std::vector<Context>& contexts)>;
platform::Result<void> contextsOfRun(const data::Library& library, const SearchRun& run, qsizetype width,
                                     const OnTopic& onTopic);

}  // namespace lirovan::search
