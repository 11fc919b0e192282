// Looking for two neighbouring bytes, each one of a few, in long stretches of text: the inner loop of the
// search.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace lirovan::search {

/// Up to four byte values; the places behind the last one repeat it.
struct ByteSet {
    std::array<unsigned char, 4> values{};
    int count = 0;

    /// False when there is no room for another value.
    bool add(unsigned char value) noexcept;
    bool contains(unsigned char value) const noexcept;
};

struct BytePair {
    ByteSet first;
    ByteSet second;  ///< empty: any byte, or none
};

/// The first place at or after `from` where the pair stands; the text's size where there is none.
size_t findBytePair(std::string_view text, size_t from, const BytePair& pair) noexcept;

}  // namespace lirovan::search
