#include "search/matching/utf8_pattern.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace lirovan::search {
namespace {

// Units that fold to another unit, by that unit.
const std::vector<std::pair<char16_t, char16_t>>& unitsByFolded() {
    static const auto table = [] {
        std::vector<std::pair<char16_t, char16_t>> pairs;
        for (char32_t c = 0; c < 0x10000; ++c) {
            const auto unit = static_cast<char16_t>(c);
            if (text::fold(unit) != unit) pairs.emplace_back(text::fold(unit), unit);
        }
        std::sort(pairs.begin(), pairs.end());
        return pairs;
    }();
    return table;
}

std::string encoded(QStringView character) {
    return character.toUtf8().toStdString();
}

std::vector<std::string> spellingsOf(char16_t unit, text::Comparison comparison) {
    if (comparison == text::Comparison::Exact) return {encoded(QStringView(&unit, 1))};
    const char16_t folded = text::fold(unit);
    std::vector<std::string> spellings;
    // A unit may fold to one that itself folds on; then only its own class counts.
    if (text::fold(folded) == folded) spellings.push_back(encoded(QStringView(&folded, 1)));
    const auto& table = unitsByFolded();
    for (auto it = std::lower_bound(table.begin(), table.end(), std::pair(folded, char16_t(0)));
         it != table.end() && it->first == folded; ++it)
        spellings.push_back(encoded(QStringView(&it->second, 1)));
    return spellings;
}

// Rough share of each byte in Turkish HTML text in UTF-8, in thousandths: letter frequencies of Turkish
// prose, the lead bytes C3 to C5 and the trailing bytes of ç ğ ı ö ş ü. Good enough to tell rare pairs from
// common ones.
double byteFrequency(unsigned char byte) {
    static constexpr std::pair<unsigned char, int> letters[] = {
        {'a', 94}, {'e', 71}, {'i', 66}, {'n', 59}, {'r', 54}, {'l', 48}, {'k', 37}, {'d', 35},
        {'t', 30}, {'s', 24}, {'m', 30}, {'y', 26}, {'u', 26}, {'o', 20}, {'b', 23}, {'z', 12},
        {'v', 8},  {'g', 10}, {'h', 9},  {'c', 8},  {'p', 7},  {'f', 4},  {' ', 120}};
    for (const auto& [letter, share] : letters) {
        if (byte == letter) return share;
        if (byte == letter - 32 && letter != ' ') return share / 20.0;
    }
    switch (byte) {
        case 0xC4:
            return 55;  // ğ, ı, İ
        case 0xB1:
            return 43;  // ı
        case 0xC3:
            return 30;  // ç, ö, ü, circumflex letters
        case 0xC5:
            return 15;  // ş
        case 0x9F:
            return 22;  // ğ, ş
        case 0xBC:
            return 15;  // ü
        case 0xB6:
            return 7;  // ö
        case 0xA7:
            return 9;  // ç
        default:
            return byte < 0x80 ? 2 : 1;
    }
}

double frequency(const ByteSet& set) {
    double sum = 0;
    for (int i = 0; i < set.count; ++i) sum += byteFrequency(set.values[static_cast<size_t>(i)]);
    return sum;
}

bool standsAt(std::string_view text, size_t at, const std::string& spelling) noexcept {
    return text.size() - at >= spelling.size() &&
           std::memcmp(text.data() + at, spelling.data(), spelling.size()) == 0;
}

}  // namespace

Utf8Pattern::Utf8Pattern(QStringView word, text::Comparison comparison) {
    for (qsizetype i = 0; i < word.size(); ++i) {
        const QChar unit = word[i];
        if (!unit.isSurrogate()) {
            characters_.push_back(spellingsOf(unit.unicode(), comparison));
        } else if (unit.isHighSurrogate() && i + 1 < word.size() && word[i + 1].isLowSurrogate()) {
            characters_.push_back({encoded(word.sliced(i++, 2))});
        } else {
            characters_.clear();
            return;
        }
    }
    chooseAnchor();
}

void Utf8Pattern::chooseAnchor() {
    double best = 0;
    for (size_t i = 0; i < characters_.size(); ++i) {
        BytePair pair;
        // Folding classes have at most four members, so there is room for all.
        for (const std::string& s : characters_[i]) pair.first.add(static_cast<unsigned char>(s.back()));
        if (i + 1 < characters_.size())
            for (const std::string& s : characters_[i + 1])
                pair.second.add(static_cast<unsigned char>(s.front()));
        const double chance = frequency(pair.first) * (pair.second.count ? frequency(pair.second) : 1000.0);
        if (i > 0 && chance >= best) continue;
        best = chance;
        anchor_ = i;
        pair_ = pair;
    }
}

std::optional<ByteRange> Utf8Pattern::hitAround(std::string_view text, size_t anchor,
                                                size_t from) const noexcept {
    // Backwards: each character must end where the one after it begins.
    size_t begin = anchor + 1;
    for (size_t i = anchor_ + 1; i-- > 0;) {
        const Spellings& spellings = characters_[i];
        const auto found = std::find_if(spellings.begin(), spellings.end(), [&](const std::string& s) {
            return begin >= s.size() && begin - s.size() >= from && standsAt(text, begin - s.size(), s);
        });
        if (found == spellings.end()) return std::nullopt;
        begin -= found->size();
    }
    size_t end = anchor + 1;
    for (size_t i = anchor_ + 1; i < characters_.size(); ++i) {
        const Spellings& spellings = characters_[i];
        const auto found = std::find_if(spellings.begin(), spellings.end(),
                                        [&](const std::string& s) { return standsAt(text, end, s); });
        if (found == spellings.end()) return std::nullopt;
        end += found->size();
    }
    return ByteRange{begin, end};
}

std::optional<ByteRange> Utf8Pattern::find(std::string_view text, size_t from) const noexcept {
    if (characters_.empty()) return std::nullopt;
    for (size_t at = findBytePair(text, from, pair_); at < text.size();
         at = findBytePair(text, at + 1, pair_))
        if (const auto hit = hitAround(text, at, from)) return hit;
    return std::nullopt;
}

}  // namespace lirovan::search
