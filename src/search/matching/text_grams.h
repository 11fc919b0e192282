// Telling at a glance that a word cannot stand in a text, for runs of hundreds of words.
//
// A text's runs of three letters are noted once, folded, in a table of bits; a word any of whose own runs is
// not there need not be looked for. Two runs can share a bit: a word that passes may still be missing.
#pragma once

#include <QStringView>
#include <cstdint>
#include <string_view>
#include <vector>

namespace lirovan::search {

/// The bits that a word needs; none where it is shorter than three letters.
std::vector<uint16_t> wordGrams(QStringView word);

class TextGrams {
  public:
    /// `text` is UTF-8 as stored, proper or not.
    explicit TextGrams(std::string_view text);
    bool mayHold(const std::vector<uint16_t>& wordGrams) const noexcept;

  private:
    std::vector<uint64_t> bits_;
};

}  // namespace lirovan::search
