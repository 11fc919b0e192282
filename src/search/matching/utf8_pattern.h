// Finding a word in text as it is stored, UTF-8, without converting the text.
//
// Finds exactly what text::find() finds in the converted text. Under Turkish folding a letter has at most a
// handful of spellings ('i' and 'İ'; 'k', 'K' and the Kelvin sign), which may differ in length. The scan
// looks for a pair of neighbouring bytes, the last of one letter and the first of the next, of which every
// hit must have one of a few combinations, sixteen places at a time; the rarest pair of the word is taken.
// Only where the pair stands are the letters themselves compared.
#pragma once

#include <QStringView>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "search/matching/byte_pair.h"
#include "text/comparison.h"

namespace lirovan::search {

/// Zero-based byte offsets of a hit; `end` is behind it.
struct ByteRange {
    size_t begin = 0;
    size_t end = 0;
};

class Utf8Pattern {
  public:
    /// A word without characters, or with half a surrogate pair, is found nowhere.
    Utf8Pattern(QStringView word, text::Comparison comparison);

    /// The first hit that begins at or after `from`.
    std::optional<ByteRange> find(std::string_view text, size_t from) const noexcept;

  private:
    using Spellings = std::vector<std::string>;  // of one character

    void chooseAnchor();
    std::optional<ByteRange> hitAround(std::string_view text, size_t anchor, size_t from) const noexcept;

    std::vector<Spellings> characters_;
    size_t anchor_ = 0;  // index of the character that the pair begins in
    BytePair pair_;      // last bytes of its spellings, first bytes of the next character's
};

}  // namespace lirovan::search
