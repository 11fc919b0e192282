#include "search/matching/byte_pair.h"

#include <algorithm>
#include <bit>

// Sixteen places at a time where the processor can, thirty-two where it has the wider registers, which is
// found out at run time: the wider loop is about half as long under way.
#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#define LIROVAN_WIDE_SCAN
#include <immintrin.h>
#endif

namespace lirovan::search {
namespace {

// One place after the other, for the end of the text and for other processors.
size_t scanBytes(std::string_view text, size_t from, const BytePair& pair) noexcept {
    for (size_t at = from; at < text.size(); ++at) {
        if (!pair.first.contains(static_cast<unsigned char>(text[at]))) continue;
        if (pair.second.count == 0) return at;
        if (at + 1 < text.size() && pair.second.contains(static_cast<unsigned char>(text[at + 1]))) return at;
    }
    return text.size();
}

#ifdef LIROVAN_WIDE_SCAN

template <int Values>
__m128i oneOf(__m128i block, const ByteSet& set) noexcept {
    __m128i found = _mm_cmpeq_epi8(block, _mm_set1_epi8(static_cast<char>(set.values[0])));
    for (size_t i = 1; i < Values; ++i)
        found = _mm_or_si128(found, _mm_cmpeq_epi8(block, _mm_set1_epi8(static_cast<char>(set.values[i]))));
    return found;
}

template <int Values>
size_t scan16(std::string_view text, size_t at, const BytePair& pair) noexcept {
    const bool two = pair.second.count != 0;
    for (; at + 17 <= text.size(); at += 16) {
        const auto* block = reinterpret_cast<const __m128i*>(text.data() + at);
        __m128i found = oneOf<Values>(_mm_loadu_si128(block), pair.first);
        if (two) {
            const auto* next = reinterpret_cast<const __m128i*>(text.data() + at + 1);
            found = _mm_and_si128(found, oneOf<Values>(_mm_loadu_si128(next), pair.second));
        }
        const auto places = static_cast<unsigned>(_mm_movemask_epi8(found));
        if (places) return at + static_cast<size_t>(std::countr_zero(places));
    }
    return scanBytes(text, at, pair);
}

template <int Values>
__attribute__((target("avx2"))) inline __m256i oneOfWide(__m256i block, const ByteSet& set) noexcept {
    __m256i found = _mm256_cmpeq_epi8(block, _mm256_set1_epi8(static_cast<char>(set.values[0])));
    for (size_t i = 1; i < Values; ++i)
        found = _mm256_or_si256(found,
                                _mm256_cmpeq_epi8(block, _mm256_set1_epi8(static_cast<char>(set.values[i]))));
    return found;
}

template <int Values>
__attribute__((target("avx2"))) size_t scan32(std::string_view text, size_t at,
                                              const BytePair& pair) noexcept {
    const bool two = pair.second.count != 0;
    for (; at + 33 <= text.size(); at += 32) {
        const auto* block = reinterpret_cast<const __m256i*>(text.data() + at);
        __m256i found = oneOfWide<Values>(_mm256_loadu_si256(block), pair.first);
        if (two) {
            const auto* next = reinterpret_cast<const __m256i*>(text.data() + at + 1);
            found = _mm256_and_si256(found, oneOfWide<Values>(_mm256_loadu_si256(next), pair.second));
        }
        const auto places = static_cast<unsigned>(_mm256_movemask_epi8(found));
        if (places) return at + static_cast<size_t>(std::countr_zero(places));
    }
    return scan16<Values>(text, at, pair);
}

template <int Values>
size_t scanWide(std::string_view text, size_t at, const BytePair& pair) noexcept {
    static const bool wide = __builtin_cpu_supports("avx2");
    return wide ? scan32<Values>(text, at, pair) : scan16<Values>(text, at, pair);
}

#endif

}  // namespace

bool ByteSet::add(unsigned char value) noexcept {
    if (contains(value)) return true;
    if (count == static_cast<int>(values.size())) return false;
    std::fill(values.begin() + count, values.end(), value);
    ++count;
    return true;
}

bool ByteSet::contains(unsigned char value) const noexcept {
    const auto end = values.begin() + count;
    return std::find(values.begin(), end, value) != end;
}

size_t findBytePair(std::string_view text, size_t from, const BytePair& pair) noexcept {
#ifdef LIROVAN_WIDE_SCAN
    // Most letters have two spellings; half the comparisons then do.
    return pair.first.count <= 2 && pair.second.count <= 2 ? scanWide<2>(text, from, pair)
                                                           : scanWide<4>(text, from, pair);
#else
    return scanBytes(text, from, pair);
#endif
}

}  // namespace lirovan::search
