// Questions about a hit in stored text: does it lie inside a tag, is it a whole word, where is it in UTF-16
// units?
#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <cstddef>
#include <optional>
#include <string_view>

#include "search/matching/utf8_pattern.h"

namespace lirovan::search {

/// Tells hits inside tags from hits in the text, for places asked for in ascending order.
class TagTest {
  public:
    explicit TagTest(std::string_view text) : text_(text) {}
    /// Whether, from `at` on, the next ">" comes before the next "<". Counting from 1 and 0 for "none", the
    /// test is that the "<" has the greater position; so a hit behind the last tag is in the text.
    bool inside(size_t at) noexcept;

  private:
    static constexpr qint64 None = -1, Unknown = -2;
    /// Index of the first `mark` at or after `at`; `known` holds the answer of the call before.
    qint64 next(qint64& known, char mark, size_t at) noexcept;

    std::string_view text_;
    qint64 less_ = Unknown, greater_ = Unknown;
};

/// The text as the rest of the program reads it, where its bytes are no proper UTF-8 and their positions
/// therefore not its own; else null.
QByteArray properUtf8(std::string_view text);

/// KontTumKelime on stored text.
bool isWholeWord(std::string_view text, ByteRange hit) noexcept;

/// Turns ascending byte offsets into UTF-16 positions, or ascending positions into offsets.
class UnitCounter {
  public:
    explicit UnitCounter(std::string_view text) : text_(text) {}
    /// 1-based position of the unit at byte `at`, which must not lie before an earlier one.
    qint64 position(size_t at) noexcept;
    /// The other way: the byte at which the unit at `position` begins; beyond the size where the text is
    /// shorter. Not before an earlier one.
    size_t byteOf(qint64 position) noexcept;

  private:
    std::string_view text_;
    size_t at_ = 0;
    qint64 units_ = 0;
};

/// The hits of one word in one text that count: none inside a tag; only whole words where asked for. After a
/// hit, counted or inside a tag, the search goes on behind it; after a part of a word, one character on.
class HitWalk {
  public:
    HitWalk(std::string_view text, const Utf8Pattern& pattern, bool wholeWord)
        : text_(text), pattern_(pattern), tags_(text), wholeWord_(wholeWord) {}
    std::optional<ByteRange> next() noexcept;

  private:
    std::string_view text_;
    const Utf8Pattern& pattern_;
    TagTest tags_;
    size_t from_ = 0;
    bool wholeWord_;
};

}  // namespace lirovan::search
