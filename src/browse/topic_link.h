// Addresses that lead to a place in a topic: "konu:12", "konu:12?yer=Bah%C3%A7ede%20sabah". They stand in
// notes and in what is copied with its source.
#pragma once

#include <QString>
#include <QStringView>
#include <optional>

#include "data/ids.h"

namespace lirovan::browse {

struct TopicLink {
    data::TopicId topic;
    QString passage;  ///< what is read at the place; empty: the topic's beginning

    friend bool operator==(const TopicLink&, const TopicLink&) = default;
};

/// A long passage is cut to its first hundred characters: enough to be found again.
QString topicAddress(const TopicLink& link);
/// Nothing for the address of something else.
std::optional<TopicLink> topicLinkOf(const QString& address);

/// The line below a quotation: «Yazar, Kitap, Konu», without those that are empty; line breaks are blanks.
QString sourceLine(const QString& author, const QString& book, const QString& heading);

}  // namespace lirovan::browse
