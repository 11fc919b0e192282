// Books and topics of the library that are treated in a way of their own.
#pragma once

#include "data/ids.h"

namespace lirovan::data {

/// Left out of the book selector and of every search, present in the book tree.
inline constexpr BookId HiddenBook{35};
/// A list, whose pages are laid out as one.
inline constexpr BookId ListBook{5};
/// Its name stands in a narrow column beside its pages.
inline constexpr BookId NarrowNameBook{32};
/// Two books of very long topics, where a shortcut counts frequent words, and the topics in them whose words
/// are always counted by it.
inline constexpr BookId LargeBooks[] = {{33}, {34}};
inline constexpr TopicId LargeTopics[] = {{1197}, {1198}, {1199}, {1200}, {1201}, {1202}, {1203}, {1205}};

}  // namespace lirovan::data
