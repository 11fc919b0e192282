// The page of one topic: script fragment, topic text, shaping of the one book that is a numbered list, frame.
#pragma once

#include <QString>
#include <QStringView>
#include <optional>

#include "data/library.h"
#include "platform/core/paths.h"

namespace lirovan::browse {

/// What the book tree knows of a clicked topic.
struct TopicRequest {
    data::BookId book;
    data::AuthorId author;
    data::TopicId topic;
    QString title;     ///< KonuBaslik as stored
    QString bookName;  ///< text of the book's node
};

/// The script fragment with every "homehomehomehome" replaced by the start page's path; empty where the
/// library has none or cannot be read.
QString scriptFragment(const data::Library& library, const platform::AppFolder& folder);

/// What stands in the content cell: `script`, then the topic's text without "<html>", shaped where the book
/// is the one numbered list.
QString topicContent(QStringView script, const data::TopicText& topic, data::BookId book);

/// The parts of book 5 are one numbered list of which each topic holds a hundred items: paragraphs become
/// list items, the text between the parts moves in front (part 2) or behind (part 7), the tail is cut. Part 1
/// and other books are never shaped; see topicContent().
QString shapedListPart(QString content, double partNumber);

/// The page of `request`, without the final line end. Nothing where the topic has no text row. What cannot be
/// read of a damaged library (text, script, author) leaves its place empty.
std::optional<QString> topicPage(const data::Library& library, const platform::AppFolder& folder,
                                 const TopicRequest& request);

}  // namespace lirovan::browse
