#include "search/matching/text_grams.h"

#include <QList>
#include <algorithm>
#include <array>
#include <optional>

#include "text/comparison.h"

namespace lirovan::search {
namespace {

constexpr size_t BitCount = 1 << 16;

// The three letters seen last, as one bit number.
class Run {
  public:
    std::optional<uint16_t> add(uint32_t letter) noexcept {
        const uint32_t key = first_ * 0x9E3779B1u ^ second_ * 0x85EBCA6Bu ^ letter * 0xC2B2AE35u;
        first_ = second_;
        second_ = letter;
        if (letters_ < 2) {
            ++letters_;
            return std::nullopt;
        }
        return static_cast<uint16_t>(key >> 16);
    }

  private:
    uint32_t first_ = 0, second_ = 0;
    int letters_ = 0;
};

// What one or two bytes can spell.
constexpr size_t ShortUnits = 0x800;
const std::array<char16_t, ShortUnits>& foldedUnits() {
    static const auto table = [] {
        std::array<char16_t, ShortUnits> units{};
        for (size_t i = 0; i < units.size(); ++i) units[i] = text::fold(static_cast<char16_t>(i));
        return units;
    }();
    return table;
}

}  // namespace

std::vector<uint16_t> wordGrams(QStringView word) {
    std::vector<uint16_t> grams;
    Run run;
    for (const uint letter : word.toUcs4())
        if (const auto gram = run.add(letter < 0x10000 ? text::fold(static_cast<char16_t>(letter)) : letter))
            grams.push_back(*gram);
    return grams;
}

TextGrams::TextGrams(std::string_view text) : bits_(BitCount / 64) {
    const auto& shortUnits = foldedUnits();
    const auto byte = [&](size_t i) { return static_cast<uint32_t>(static_cast<unsigned char>(text[i])); };
    Run run;
    for (size_t i = 0; i < text.size();) {
        const uint32_t lead = byte(i);
        const size_t length = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        uint32_t letter = length == 1 ? lead : lead & (0x7Fu >> length);
        size_t next = i + 1;
        // Nothing but trailing bytes is passed over, so that every proper letter is read as such whatever
        // stands before it.
        for (; next < i + length && next < text.size() && (byte(next) & 0xC0) == 0x80; ++next)
            letter = letter << 6 | (byte(next) & 0x3F);
        i = next;
        if (letter < ShortUnits)
            letter = shortUnits[letter];
        else if (letter < 0x10000)
            letter = text::fold(static_cast<char16_t>(letter));
        if (const auto gram = run.add(letter)) bits_[*gram / 64] |= uint64_t(1) << *gram % 64;
    }
}

bool TextGrams::mayHold(const std::vector<uint16_t>& wordGrams) const noexcept {
    return std::all_of(wordGrams.begin(), wordGrams.end(),
                       [&](uint16_t gram) { return bits_[gram / 64] >> gram % 64 & 1; });
}

}  // namespace lirovan::search
