#include "search/utf8_pattern.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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
    static constexpr std::pair<char, int> letters[] = {
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

#if defined(__SSE2__)
template <int Values>
inline __m128i oneOf(__m128i block, const std::array<unsigned char, 4>& values) noexcept {
    __m128i found = _mm_cmpeq_epi8(block, _mm_set1_epi8(static_cast<char>(values[0])));
    for (size_t i = 1; i < Values; ++i)
        found = _mm_or_si128(found, _mm_cmpeq_epi8(block, _mm_set1_epi8(static_cast<char>(values[i]))));
    return found;
}

inline __m128i load(const char* at) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}
#endif

bool standsAt(std::string_view text, size_t at, const std::string& spelling) noexcept {
    return text.size() - at >= spelling.size() &&
           std::memcmp(text.data() + at, spelling.data(), spelling.size()) == 0;
}

}  // namespace

bool Utf8Pattern::ByteSet::add(unsigned char value) {
    const auto end = values.begin() + count;
    if (std::find(values.begin(), end, value) != end) return true;
    if (count == static_cast<int>(values.size())) return false;
    // The places behind the last value repeat it, so that comparing with all four is right, too.
    std::fill(values.begin() + count, values.end(), value);
    ++count;
    return true;
}

double Utf8Pattern::ByteSet::frequency() const {
    double sum = 0;
    for (int i = 0; i < count; ++i) sum += byteFrequency(values[static_cast<size_t>(i)]);
    return sum;
}

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
        ByteSet last, first;
        bool fits = true;
        for (const std::string& s : characters_[i])
            fits = last.add(static_cast<unsigned char>(s.back())) && fits;
        if (i + 1 < characters_.size())
            for (const std::string& s : characters_[i + 1])
                fits = first.add(static_cast<unsigned char>(s.front())) && fits;
        // Folding classes have at most four members.
        if (!fits) continue;
        const double frequency = last.frequency() * (first.count ? first.frequency() : 1000.0);
        if (last_.count != 0 && frequency >= best) continue;
        best = frequency;
        anchor_ = i;
        last_ = last;
        first_ = first;
    }
    for (int i = 0; i < last_.count; ++i) kind_[last_.values[static_cast<size_t>(i)]] |= 1;
    for (int i = 0; i < first_.count; ++i) kind_[first_.values[static_cast<size_t>(i)]] |= 2;
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

template <int Values>
std::optional<ByteRange> Utf8Pattern::scan(std::string_view text, size_t from) const noexcept {
    const char* data = text.data();
    const size_t size = text.size();
    size_t at = from;
#if defined(__SSE2__)
    for (; at + 17 <= size; at += 16) {
        __m128i found = oneOf<Values>(load(data + at), last_.values);
        if (first_.count) found = _mm_and_si128(found, oneOf<Values>(load(data + at + 1), first_.values));
        auto places = static_cast<unsigned>(_mm_movemask_epi8(found));
        for (; places; places &= places - 1)
            if (const auto hit = hitAround(text, at + static_cast<size_t>(std::countr_zero(places)), from))
                return hit;
    }
#endif
    for (; at < size; ++at) {
        if (!(kind_[static_cast<unsigned char>(data[at])] & 1)) continue;
        if (first_.count && (at + 1 >= size || !(kind_[static_cast<unsigned char>(data[at + 1])] & 2)))
            continue;
        if (const auto hit = hitAround(text, at, from)) return hit;
    }
    return std::nullopt;
}

std::optional<ByteRange> Utf8Pattern::find(std::string_view text, size_t from) const noexcept {
    if (characters_.empty() || from >= text.size()) return std::nullopt;
    return last_.count <= 2 && first_.count <= 2 ? scan<2>(text, from) : scan<4>(text, from);
}

}  // namespace lirovan::search
