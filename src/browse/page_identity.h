// What the shared content window shows, by name: enough to show it again.
#pragma once

#include "data/ids.h"

namespace lirovan::browse {

struct PageIdentity {
    enum class Kind { StartPage, Topic, MarkedPage, Summary };

    Kind kind = Kind::StartPage;
    data::TopicId topic = {};  ///< of a topic or a marked page
    data::BookId book = {};    ///< of a topic: whose heading was clicked
    qint64 headingRow = 0;     ///< of a marked page: its heading's row in tbl_KonuBaslik
    int run = 0;               ///< number of the run that a marked page or a summary belongs to
    int group = 0;             ///< of a summary: which author of its run, from 0

    bool isOfTopic() const { return kind == Kind::Topic || kind == Kind::MarkedPage; }
    friend bool operator==(const PageIdentity&, const PageIdentity&) = default;
};

}  // namespace lirovan::browse
