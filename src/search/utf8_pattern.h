// Finding a word in text as it is stored, UTF-8, without converting the text.
//
// Finds exactly what text::find() finds in the converted text. Under Turkish folding a letter has at most a
// handful of spellings ('i' and 'İ'; 'k', 'K' and the Kelvin sign), which may differ in length. The scan
// looks for a pair of neighbouring bytes, the last of one letter and the first of the next, of which every
// hit must have one of a few combinations, sixteen places at a time; the rarest pair of the word is taken.
// Only where the pair stands are the letters themselves compared.
#pragma once

#include <QStringView>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

    /// Up to four byte values, repeated to fill the places.
    struct ByteSet {
        std::array<unsigned char, 4> values{};
        int count = 0;
        bool add(unsigned char value);
        double frequency() const;
    };

    void chooseAnchor();
    std::optional<ByteRange> hitAround(std::string_view text, size_t anchor, size_t from) const noexcept;
    template <int Values>
    std::optional<ByteRange> scan(std::string_view text, size_t from) const noexcept;

    std::vector<Spellings> characters_;
    size_t anchor_ = 0;  // index of the character whose last byte is looked for
    ByteSet last_;       // last bytes of its spellings
    ByteSet first_;      // first bytes of the next character's spellings; empty: it is the last character
    std::array<unsigned char, 256> kind_{};  // bit 0: in last_, bit 1: in first_
};

}  // namespace lirovan::search
