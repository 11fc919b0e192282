#include "search/stored_text.h"

#include "text/alphabet.h"

namespace lirovan::search {
namespace {

bool isTrail(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// How many units begin with a byte: with a lead byte one, with that of four bytes two.
unsigned char unitsAt(char byte) {
    return static_cast<unsigned char>(!isTrail(byte) + (static_cast<unsigned char>(byte) >= 0xF0));
}

size_t characterEnd(std::string_view text, size_t begin) {
    size_t end = begin + 1;
    while (end < text.size() && isTrail(text[end])) ++end;
    return end;
}

// No letter of the alphabet takes more than two bytes, though a partner in the other case may take three.
bool isLetterAt(std::string_view text, size_t begin) {
    const auto lead = static_cast<unsigned char>(text[begin]);
    if (lead < 0x80) return text::isWordLetter(lead);
    const size_t length = characterEnd(text, begin) - begin;
    const auto bits = [&](size_t i) {
        return static_cast<unsigned>(static_cast<unsigned char>(text[begin + i]) & 0x3F);
    };
    if (length == 2) return text::isWordLetter(static_cast<char16_t>((lead & 0x1Fu) << 6 | bits(1)));
    if (length == 3)
        return text::isWordLetter(static_cast<char16_t>((lead & 0x0Fu) << 12 | bits(1) << 6 | bits(2)));
    return false;
}

}  // namespace

qint64 TagTest::next(qint64& known, char mark, size_t at) noexcept {
    if (known != None && known < static_cast<qint64>(at)) {
        const size_t found = text_.find(mark, at);
        known = found == std::string_view::npos ? None : static_cast<qint64>(found);
    }
    return known;
}

bool TagTest::inside(size_t at) noexcept {
    return next(less_, '<', at) > next(greater_, '>', at);
}

bool isWholeWord(std::string_view text, ByteRange hit) noexcept {
    // At the very beginning the hit's own first character stands for the one before it.
    size_t before = hit.begin;
    if (before > 0) --before;
    while (before > 0 && before < hit.begin && isTrail(text[before])) --before;
    return !isLetterAt(text, before) && hit.end < text.size() && !isLetterAt(text, hit.end);
}

qint64 UnitCounter::position(size_t at) noexcept {
    // In blocks whose sum a byte holds, so that the compiler can add many bytes at a time.
    constexpr size_t block = 64;
    for (; at - at_ >= block; at_ += block) {
        unsigned char sum = 0;
        for (size_t i = 0; i < block; ++i) sum = static_cast<unsigned char>(sum + unitsAt(text_[at_ + i]));
        units_ += sum;
    }
    for (; at_ < at; ++at_) units_ += unitsAt(text_[at_]);
    return units_ + 1;
}

std::optional<ByteRange> HitWalk::next() noexcept {
    while (const auto hit = pattern_.find(text_, from_)) {
        if (tags_.inside(hit->begin)) {
            from_ = hit->end;
        } else if (wholeWord_ && !isWholeWord(text_, *hit)) {
            from_ = characterEnd(text_, hit->begin);
        } else {
            from_ = hit->end;
            return hit;
        }
    }
    return std::nullopt;
}

}  // namespace lirovan::search
