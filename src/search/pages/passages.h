// The summary's passages: the parts of a topic around its hits, each hit marked.
#pragma once

#include <QString>
#include <QStringView>
#include <functional>
#include <optional>
#include <vector>

#include "data/ids.h"
#include "platform/core/result.h"

namespace lirovan::search {

/// One topic of an author's group in a hit record: «12;45;310».
struct RecordedTopic {
    data::TopicId topic;
    std::vector<qint64> positions;  ///< 1-based, in the order of the record
};

/// The topics of group `group` (from 0) of a hit record; nothing where the record has no such group.
/// Group 0 of «$#12;45;310#17;9$» has topics 12 and 17, group 1 is empty.
std::optional<std::vector<RecordedTopic>> recordedTopics(QStringView IsabetKaydi, int group);

/// A topic as stored.
struct SummaryTopic {
    QString text;
    QString bookTitle;
    QString heading;
};

/// Appends the passages of `topic` around its hits to `page`. Every hit is marked from its position to the
/// end of the word, or over `phraseLength` characters where one phrase was searched. A passage reaches from
/// the second paragraph or line begin before its hit to the second end behind it, or to the first one that is
/// more than 200 characters away; a hit inside the passage before continues that one. `passageDone` is called
/// after every passage; false leaves the rest out. Gives the number of passages with a heading of their own.
/// Linear in text, hits and passages.
int appendPassages(QString& page, const SummaryTopic& topic, std::vector<qint64> positions,
                   std::optional<qsizetype> phraseLength, const std::function<bool()>& passageDone);

}  // namespace lirovan::search
